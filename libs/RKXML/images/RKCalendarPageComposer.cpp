#include "RKCalendarPageComposer.h"

#include "RKCssSheetCache.h"
#include "RKSVGImageRendererCache.h"

#include <RKBackgroundJobManager.h>

#include <QPainter>
#include <QSvgRenderer>

#include <cmath>

RKCalendarPageComposer::RKCalendarPageComposer(const QFileInfo& templateFile, const QString& colorCssSheet)
{
    const RKCssSheetTitleIdMap sheets = RKCssSheetCache::instance().styleSheetsIn(templateFile);
    myImage = std::make_unique<RKSVGImage>(templateFile, sheets, QMap<QString, QString>(), false, false);
    myColorCssSheet = colorCssSheet.isEmpty() ? sheets.findDefaultCssSheet() : colorCssSheet;
}

RKCalendarPageComposer::~RKCalendarPageComposer() = default;

bool RKCalendarPageComposer::isValid() const
{
    return myImage->isValid();
}

RKSVGComposition RKCalendarPageComposer::page(const RKCalendariumContentKey& content) const
{
    RKSVGComposition composition(myImage.get(), myColorCssSheet);
    composition.setContent(content);
    return composition;
}

QSize RKCalendarPageComposer::sizeForWidth(const RKSVGComposition& composition, int width)
{
    const double ratio = composition.ratio();
    if (!std::isfinite(ratio) || ratio <= 0.0)
        return QSize(width, width);
    return QSize(width, qMax(1, static_cast<int>(std::lround(width * ratio))));
}

bool RKCalendarPageComposer::loadInBackground(const QList<RKSVGComposition>& pages, int msecs)
{
    RKSVGImageRendererCache& cache = RKSVGImageRendererCache::instance();
    for (const RKSVGComposition& page : pages)
        cache.retrieveRenderer(page, RKCachingOption(RKCachingOption::UseCache), RKBackgroundJobPriority());
    if (!RKBackgroundJobManager::instance().waitForIdle(msecs))
        return false;
    for (const RKSVGComposition& page : pages) {
        if (!cache.findRenderer(page))
            return false;
    }
    return true;
}

QImage RKCalendarPageComposer::renderImage(const RKSVGComposition& composition, const QSize& size, bool background, int msecs)
{
    RKSVGImageRendererCache& cache = RKSVGImageRendererCache::instance();
    QSvgRenderer* renderer = nullptr;
    if (background) {
        if (loadInBackground({composition}, msecs))
            renderer = cache.findRenderer(composition);
    } else {
        renderer = cache.retrieveRenderer(composition, RKCachingOption(RKCachingOption::UseCache),
            RKBackgroundJobPriority(RKBackgroundJobPriority::Immediately));
    }
    if (!renderer || !renderer->isValid() || size.isEmpty())
        return QImage();
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    cache.doRendering(renderer, &painter, QRectF(QPointF(0, 0), QSizeF(size)), RKSVGCompositionOptions());
    return image;
}
