#include "RKSVGImageRendererCache.h"

#include "RKSVGImageCacheLoadingJob.h"
#include "RKSVGRendererFactory.h"
#include "RKXMLParser.h"

#include <RKBackgroundJobManager.h>
#include <RKDirectoryConfig.h>

#include <QDebug>
#include <QMutex>
#include <QPainter>
#include <QSvgRenderer>

namespace {
const QString STR_SANDGLASS_ICON = QStringLiteral("symb_sandglass_400.svg");
constexpr int NominalMaximumSize = 26051970;
}

RKSVGImageRendererCache::RKSVGImageRendererCache()
    : myLock(QReadWriteLock::Recursive)
{
}

RKSVGImageRendererCache::~RKSVGImageRendererCache() = default;

void RKSVGImageRendererCache::render(const RKSVGComposition& composition, QPainter* painter, const QRectF& target,
    const RKBackgroundJobPriority& priority, const RKCachingOption& caching, const RKSVGCompositionOptions& options)
{
    QSvgRenderer* renderer = retrieveRenderer(composition, caching, priority);
    if (!renderer)
        return;
    doRendering(renderer, painter, target, options);
    // An uncached renderer made at once belongs to the caller, which here is this function.
    if (!caching.useCache() && priority.value() == RKBackgroundJobPriority::Immediately)
        delete renderer;
}

QSvgRenderer* RKSVGImageRendererCache::retrieveRenderer(const RKSVGComposition& composition,
    const RKCachingOption& caching, const RKBackgroundJobPriority& priority)
{
    if (caching.useCache()) {
        if (QSvgRenderer* cached = findRenderer(composition))
            return cached;
    }
    if (priority.value() == RKBackgroundJobPriority::Immediately) {
        QSvgRenderer* renderer = createRenderer(composition);
        if (caching.useCache())
            registerRenderer(composition, renderer);
        return renderer;
    }
    RKBackgroundJobManager::instance().schedule(new RKSVGImageCacheLoadingJob(composition),
        RKBackgroundJobPriority(RKBackgroundJobPriority::Loading));
    if (composition.variant() == RKSVGComposition::SpotColorOnly)
        return nullptr;
    return dummySVGRenderer();
}

QSvgRenderer* RKSVGImageRendererCache::getRenderer(const RKSVGComposition& composition)
{
    QSvgRenderer* renderer = findRenderer(composition);
    if (renderer && renderer->isValid())
        return renderer;
    renderer = createRenderer(composition);
    registerRenderer(composition, renderer);
    return renderer;
}

QSvgRenderer* RKSVGImageRendererCache::findRenderer(const RKSVGComposition& composition) const
{
    QReadLocker lock(&myLock);
    return myRenderers.value(composition, nullptr);
}

QSvgRenderer* RKSVGImageRendererCache::createRenderer(const RKSVGComposition& composition) const
{
    return RKSVGRendererFactory::createRenderer(composition);
}

void RKSVGImageRendererCache::registerRenderer(const RKSVGComposition& composition, QSvgRenderer* renderer)
{
    QWriteLocker lock(&myLock);
    myRenderers.insert(composition, renderer);
}

double RKSVGImageRendererCache::ratio(const RKSVGComposition& composition)
{
    const QDomDocument compiled = composition.compileAsDomDocument();
    const QSizeF size = RKXMLParser::readSizeF(compiled.documentElement());
    if (size.width() > 0.0 && size.height() > 0.0)
        return size.height() / size.width();
    const QSize defaultSize = getRenderer(composition)->defaultSize();
    return static_cast<double>(defaultSize.height()) / defaultSize.width();
}

bool RKSVGImageRendererCache::hasSpotColor(const RKSVGComposition& composition)
{
    RKSVGComposition spotColorOnly(composition);
    spotColorOnly.setVariant(RKSVGComposition::SpotColorOnly);
    QSvgRenderer* renderer = findRenderer(spotColorOnly);
    if (!renderer || !renderer->isValid()) {
        renderer = createRenderer(spotColorOnly);
        registerRenderer(spotColorOnly, renderer);
    }
    return renderer && renderer->isValid();
}

void RKSVGImageRendererCache::invalidate(const RKSVGComposition& composition)
{
    QWriteLocker lock(&myLock);
    myRenderers.remove(composition);
}

void RKSVGImageRendererCache::updateCacheData(const RKSVGComposition& composition, QSvgRenderer* renderer)
{
    if (!renderer || !renderer->isValid()) {
        qWarning().noquote() << QStringLiteral(" konnte QSvgRenderer für key ") + composition.debugName()
                + QStringLiteral(" nicht erzeugen (SVG defekt!)");
        return;
    }
    registerRenderer(composition, renderer);
    emit compositionLoaded(composition);
}

QSvgRenderer* RKSVGImageRendererCache::dummySVGRenderer()
{
    {
        QReadLocker lock(&myLock);
        if (myDummyRenderer)
            return myDummyRenderer;
    }
    // Made outside the lock; of two threads racing here, the first to store wins.
    QSvgRenderer* created = RKSVGRendererFactory::createRenderer(
        RKDirectoryConfig::instance().guiwidgetsIconsFile(STR_SANDGLASS_ICON));
    QWriteLocker lock(&myLock);
    if (myDummyRenderer)
        delete created;
    else
        myDummyRenderer = created;
    return myDummyRenderer;
}

QMutex* RKSVGImageRendererCache::findMutex(QSvgRenderer* renderer)
{
    static QMutex superMutex;
    static QHash<QSvgRenderer*, QMutex*> ourMutexes;
    QMutexLocker lock(&superMutex);
    QMutex*& mutex = ourMutexes[renderer];
    if (!mutex)
        mutex = new QMutex;
    return mutex;
}

void RKSVGImageRendererCache::renderLocked(QPainter* painter, const QRectF& bounds, QSvgRenderer* renderer)
{
    QMutexLocker lock(findMutex(renderer));
    renderer->render(painter, bounds);
}

void RKSVGImageRendererCache::doRendering(QSvgRenderer* renderer, QPainter* painter, const QRectF& target,
    const RKSVGCompositionOptions& options)
{
    const QSizeF scaled = QSizeF(renderer->defaultSize()).scaled(target.size(), options.aspectMode());
    const QRectF bounds(target.topLeft() + QPointF(target.width() / 2.0 - scaled.width() / 2.0,
                                               target.height() / 2.0 - scaled.height() / 2.0),
        scaled);
    const RKMirrorRule mirror = options.mirrorRule();
    if (mirror.value() == 0) {
        renderLocked(painter, bounds, renderer);
        return;
    }
    // Truncated to whole units: existing layouts depend on where mirrored drawings land.
    const int tx = mirror.mirrorsHorizontally() ? static_cast<int>(2.0 * bounds.left() + scaled.width()) : 0;
    const int ty = mirror.mirrorsVertically() ? static_cast<int>(2.0 * bounds.top() + scaled.height()) : 0;
    painter->save();
    painter->translate(tx, ty);
    painter->scale(mirror.mirrorsHorizontally() ? -1.0 : 1.0, mirror.mirrorsVertically() ? -1.0 : 1.0);
    renderLocked(painter, bounds, renderer);
    painter->restore();
}

int RKSVGImageRendererCache::maximumCacheSize() const
{
    return NominalMaximumSize;
}

int RKSVGImageRendererCache::currentCacheSize() const
{
    return 0;
}

bool RKSVGImageRendererCache::isEmpty() const
{
    QReadLocker lock(&myLock);
    return myRenderers.isEmpty();
}

void RKSVGImageRendererCache::clearCache()
{
    QWriteLocker lock(&myLock);
    myRenderers.clear();
}
