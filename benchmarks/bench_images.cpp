#include <RKBackgroundJobManager.h>
#include <RKCalendariumHolidayConfig.h>
#include <RKCssSheetCache.h>
#include <RKDocumentCache.h>
#include <RKSVGComposition.h>
#include <RKSVGImage.h>
#include <RKSVGImageRendererCache.h>
#include <RKSVGRendererFactory.h>

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

const QRectF smallTarget(0, 0, 140, 110);

// The month template of the tests; long-lived, as the caches key on its address.
RKSVGImage& monthTemplate()
{
    static const QFileInfo file(QDir(QStringLiteral(RKXML_TEST_DATA_DIR)).filePath(QStringLiteral("images/month.svg")));
    static RKSVGImage image(file, RKCssSheetCache::instance().styleSheetsIn(file), {}, false, false);
    return image;
}

RKSVGComposition monthPage(int month)
{
    RKCalendariumHolidayConfig config;
    config.setLanguage(RKLocale(QStringLiteral("en"), QStringLiteral("GB")));
    RKSVGComposition page(&monthTemplate(),
        QDir(QStringLiteral(RKXML_TEST_DATA_DIR)).filePath(QStringLiteral("images/month.css")));
    page.setContent(RKCalendariumContentKey(RKCalendariumContentConfig(QDate(2027, month, 1), config), RKProjectIdentifier()));
    return page;
}

// Twelve pages with their instruction sets and the parsed template already cached, so
// both loading cases do the same work: compile each page and parse the result.
QList<RKSVGComposition> twelvePages()
{
    QList<RKSVGComposition> pages;
    for (int month = 1; month <= 12; ++month) {
        pages << monthPage(month);
        pages.last().compilerInstructions();
    }
    return pages;
}

void CacheHit_Ours(benchmark::State& state)
{
    const RKSVGComposition page = monthPage(9);
    QImage image(smallTarget.size().toSize(), QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    page.render(&painter, smallTarget, RKBackgroundJobPriority(RKBackgroundJobPriority::Immediately),
        RKCachingOption(RKCachingOption::UseCache), RKSVGCompositionOptions());
    for (auto _ : state)
        page.render(&painter, smallTarget, RKBackgroundJobPriority(), RKCachingOption(RKCachingOption::UseCache),
            RKSVGCompositionOptions());
}
BENCHMARK(CacheHit_Ours);

void CacheHit_Baseline(benchmark::State& state)
{
    const RKSVGComposition page = monthPage(9);
    QSvgRenderer renderer(page.compileAsByteArray());
    QImage image(smallTarget.size().toSize(), QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    const QSizeF size = QSizeF(renderer.defaultSize()).scaled(smallTarget.size(), Qt::KeepAspectRatio);
    const QRectF bounds(QPointF((smallTarget.width() - size.width()) / 2, (smallTarget.height() - size.height()) / 2), size);
    for (auto _ : state)
        renderer.render(&painter, bounds);
}
BENCHMARK(CacheHit_Baseline);

void TwelveMonthsLoaded_Ours(benchmark::State& state)
{
    const QList<RKSVGComposition> pages = twelvePages();
    QImage image(smallTarget.size().toSize(), QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    for (auto _ : state) {
        RKSVGImageRendererCache::instance().clearCache(); // the renderers are leaked, as the cache does
        for (const RKSVGComposition& page : pages)
            page.render(&painter, smallTarget, RKBackgroundJobPriority(), RKCachingOption(RKCachingOption::UseCache),
                RKSVGCompositionOptions());
        RKBackgroundJobManager::instance().waitForIdle();
    }
}
BENCHMARK(TwelveMonthsLoaded_Ours)->UseRealTime()->Unit(benchmark::kMillisecond);

void TwelveMonthsLoaded_Baseline(benchmark::State& state)
{
    const QList<RKSVGComposition> pages = twelvePages();
    for (auto _ : state) {
        for (const RKSVGComposition& page : pages) {
            std::unique_ptr<QSvgRenderer> renderer(RKSVGRendererFactory::createRenderer(page));
            benchmark::DoNotOptimize(renderer->isValid());
        }
    }
}
BENCHMARK(TwelveMonthsLoaded_Baseline)->UseRealTime()->Unit(benchmark::kMillisecond);

}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv); // text in SVG needs the font database
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
