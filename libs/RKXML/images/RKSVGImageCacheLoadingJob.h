#pragma once

#include "RKSVGComposition.h"
#include "rkxml_export.h"

#include <RKBackgroundJob.h>

/// Builds the renderer of one composition on a worker thread and hands it to
/// RKSVGImageRendererCache::updateCacheData(). Holds its own copy of the composition.
class RKXML_EXPORT RKSVGImageCacheLoadingJob : public RKBackgroundJob
{
public:
    explicit RKSVGImageCacheLoadingJob(const RKSVGComposition& composition);
    ~RKSVGImageCacheLoadingJob() override;

    RKBackgroundJob* clone() const override;
    /// Compiles and parses; a broken result gives the warning
    /// "result is not valid. myCacheKey=<debugName>" and is not cached. The renderer's validity.
    bool doStuff() const override;
    /// Another loading job for an equal composition.
    bool operator==(const RKBackgroundJob& other) const override;
    /// The composition's hashValue().
    uint hash() const override;

    RKSVGComposition composition() const { return myComposition; }

private:
    RKSVGComposition myComposition;
};
