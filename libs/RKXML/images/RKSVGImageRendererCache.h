#pragma once

#include "RKSVGComposition.h"
#include "RKSVGCompositionOptions.h"
#include "rkxml_export.h"

#include <RKBackgroundJobPriority.h>
#include <RKCacheMonitoringInterface.h>
#include <RKCachingOption.h>
#include <RKSingleton.h>

#include <QHash>
#include <QObject>
#include <QReadWriteLock>
#include <QRectF>

class QMutex;
class QPainter;
class QSvgRenderer;

/**
 * One QSvgRenderer per composition, built on a worker thread through
 * RKBackgroundJobManager while a sand-glass placeholder is drawn, and announced by
 * compositionLoaded().
 *
 * The cache owns its renderers and never deletes them: invalidate(), clearCache() and
 * the destructor only forget the pointers, because a renderer may still be drawing on
 * another thread. It has no size limit.
 *
 * Thread-safe. A recursive read-write lock guards the table and is never held while
 * compiling, creating a renderer or drawing. Each renderer is drawn under a mutex of its
 * own (findMutex()), so no renderer draws on two threads at once; those mutexes are
 * never freed either.
 */
class RKXML_EXPORT RKSVGImageRendererCache : public QObject,
                                             public RKCacheMonitoringInterface,
                                             public RKSingleton<RKSVGImageRendererCache>
{
    Q_OBJECT
    friend class RKSingleton<RKSVGImageRendererCache>;

public:
    ~RKSVGImageRendererCache() override;

    /// retrieveRenderer(), then doRendering() with whatever it gave; nothing when null. An uncached
    /// renderer made at once (priority Immediately) is deleted after drawing.
    void render(const RKSVGComposition& composition, QPainter* painter, const QRectF& target,
        const RKBackgroundJobPriority& priority, const RKCachingOption& caching, const RKSVGCompositionOptions& options);
    /**
     * With caching flag UseCache, the cached renderer when there is one. Else with priority
     * Immediately (4) a new renderer made on the calling thread (registered with UseCache,
     * otherwise the caller's). Else a loading job is scheduled, always with priority
     * Loading (2) and also without UseCache, and the result is the sand-glass; null for a
     * SpotColorOnly composition, which is not drawn while it loads.
     */
    QSvgRenderer* retrieveRenderer(const RKSVGComposition& composition, const RKCachingOption& caching,
        const RKBackgroundJobPriority& priority);
    /// The cached renderer when valid; else a new one, registered even when invalid. Slow on a miss.
    QSvgRenderer* getRenderer(const RKSVGComposition& composition);
    /// The cached renderer or null.
    QSvgRenderer* findRenderer(const RKSVGComposition& composition) const;
    /// RKSVGRendererFactory's; not registered.
    QSvgRenderer* createRenderer(const RKSVGComposition& composition) const;
    /// Inserts or replaces (the replaced renderer is forgotten, not deleted).
    void registerRenderer(const RKSVGComposition& composition, QSvgRenderer* renderer);

    /// Height / width of the compiled document's size, else of the renderer's default size
    /// (unguarded: a renderer without size gives inf or NaN).
    double ratio(const RKSVGComposition& composition);
    /// Whether the composition's SpotColorOnly variant compiles to a valid SVG; the renderer
    /// made for that variant is cached, valid or not.
    bool hasSpotColor(const RKSVGComposition& composition);

    /// Forgets the entry equal to `composition`.
    void invalidate(const RKSVGComposition& composition);
    /// From a loading job (worker thread): a valid renderer is registered and
    /// compositionLoaded() emitted; an invalid one gives the warning
    /// " konnte QSvgRenderer für key <debugName> nicht erzeugen (SVG defekt!)".
    void updateCacheData(const RKSVGComposition& composition, QSvgRenderer* renderer);
    /// The sand-glass icon "symb_sandglass_400.svg", made once; invalid (draws nothing) when
    /// the icon is missing.
    QSvgRenderer* dummySVGRenderer();

    /// The mutex that serialises drawing with `renderer`; made on first use, never freed.
    static QMutex* findMutex(QSvgRenderer* renderer);
    /// Draws `renderer` into `bounds` under its mutex.
    void renderLocked(QPainter* painter, const QRectF& bounds, QSvgRenderer* renderer);
    /**
     * Draws `renderer` at its default size scaled into `target` with the options' aspect
     * mode, centred; mirrored about the drawing's centre lines as the mirror rule says.
     * The mirror translation is truncated to whole units.
     */
    void doRendering(QSvgRenderer* renderer, QPainter* painter, const QRectF& target,
        const RKSVGCompositionOptions& options);

    /// 26051970, a nominal figure: the cache has no limit.
    int maximumCacheSize() const override;
    /// Always 0.
    int currentCacheSize() const override;
    bool isEmpty() const override;
    /// Forgets all renderers.
    void clearCache() override;

signals:
    /// A renderer made in the background is in the cache. Emitted on the worker thread.
    void compositionLoaded(const RKSVGComposition& composition);

private:
    RKSVGImageRendererCache();

    mutable QReadWriteLock myLock;
    QHash<RKSVGComposition, QSvgRenderer*> myRenderers;
    QSvgRenderer* myDummyRenderer = nullptr;
};
