#include "RKSVGImageCacheLoadingJob.h"

#include "RKSVGImageRendererCache.h"
#include "RKSVGRendererFactory.h"

#include <QDebug>
#include <QSvgRenderer>

RKSVGImageCacheLoadingJob::RKSVGImageCacheLoadingJob(const RKSVGComposition& composition)
    : myComposition(composition)
{
}

RKSVGImageCacheLoadingJob::~RKSVGImageCacheLoadingJob() = default;

RKBackgroundJob* RKSVGImageCacheLoadingJob::clone() const
{
    return new RKSVGImageCacheLoadingJob(myComposition);
}

bool RKSVGImageCacheLoadingJob::doStuff() const
{
    QSvgRenderer* renderer = RKSVGRendererFactory::createRenderer(myComposition);
    if (renderer->isValid()) {
        RKSVGImageRendererCache::instance().updateCacheData(myComposition, renderer);
        return true;
    }
    // Abandoned, not deleted: renderers, failed ones included, are never freed.
    qWarning().noquote() << QStringLiteral("result is not valid. myCacheKey=") + myComposition.debugName();
    return false;
}

bool RKSVGImageCacheLoadingJob::operator==(const RKBackgroundJob& other) const
{
    const auto* job = dynamic_cast<const RKSVGImageCacheLoadingJob*>(&other);
    return job && job->myComposition == myComposition;
}

uint RKSVGImageCacheLoadingJob::hash() const
{
    return myComposition.hashValue();
}
