#pragma once

#include "rkxml_export.h"

#include <RKMirrorRule.h>

#include <Qt>

/// How one render call fits a composition into its rectangle: aspect mode and mirroring.
class RKXML_EXPORT RKSVGCompositionOptions
{
public:
    RKSVGCompositionOptions(Qt::AspectRatioMode aspectMode = Qt::KeepAspectRatio, const RKMirrorRule& mirrorRule = RKMirrorRule());
    RKSVGCompositionOptions(const RKMirrorRule& mirrorRule, Qt::AspectRatioMode aspectMode);
    virtual ~RKSVGCompositionOptions() = default;

    Qt::AspectRatioMode aspectMode() const { return myAspectMode; }
    RKMirrorRule mirrorRule() const { return myMirrorRule; }
    bool operator==(const RKSVGCompositionOptions& other) const;
    bool operator!=(const RKSVGCompositionOptions& other) const { return !(*this == other); }

private:
    Qt::AspectRatioMode myAspectMode;
    RKMirrorRule myMirrorRule;
};
