#include <RKColorReplacementInstructions.h>
#include <RKCssSheetCache.h>

#include <QCache>
#include <QDomDocument>
#include <QMutex>
#include <QMutexLocker>

#include <benchmark/benchmark.h>

namespace {

// A calendar-like page: 60 groups of 50 shapes, each with fill, stroke and style,
// about half of them in colours that the table replaces.
QDomDocument generatedSvg()
{
    static const char* const colors[] = { "#ff0000", "#0000FF", "#123456", "red", "#00ff00", "none" };
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("svg"));
    document.appendChild(root);
    int n = 0;
    for (int g = 0; g < 60; ++g) {
        QDomElement group = document.createElement(QStringLiteral("g"));
        group.setAttribute(QStringLiteral("fill"), QLatin1String(colors[g % 6]));
        root.appendChild(group);
        for (int i = 0; i < 50; ++i, ++n) {
            QDomElement shape = document.createElement(i % 2 ? QStringLiteral("rect") : QStringLiteral("text"));
            shape.setAttribute(QStringLiteral("fill"), QLatin1String(colors[n % 6]));
            shape.setAttribute(QStringLiteral("stroke"), QLatin1String(colors[(n + 1) % 6]));
            shape.setAttribute(QStringLiteral("style"),
                QStringLiteral("font-size:12px;fill:%1;stroke-width:0.5").arg(QLatin1String(colors[(n + 2) % 6])));
            group.appendChild(shape);
        }
    }
    return document;
}

// Swaps red and blue, so that every run finds the same amount of work.
RKColorReplacementInstructions swapTable()
{
    RKColorReplacementInstructions table;
    table.insert(QColor("#ff0000"), QColor("#0000ff"));
    table.insert(QColor("#0000ff"), QColor("#ff0000"));
    table.insert(QColor("#00ff00"), QColor("#00ff00"));
    return table;
}

void ColorApply_Ours(benchmark::State& state)
{
    QDomDocument document = generatedSvg();
    const RKColorReplacementInstructions table = swapTable();
    for (auto _ : state)
        table.apply(document);
}
BENCHMARK(ColorApply_Ours)->Unit(benchmark::kMicrosecond);

void readAttributes(const QDomElement& element, int* total)
{
    *total += element.attribute(QStringLiteral("fill")).size() + element.attribute(QStringLiteral("stroke")).size()
        + element.attribute(QStringLiteral("style")).size();
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        readAttributes(child, total);
}

void ColorApply_Baseline(benchmark::State& state)
{
    const QDomDocument document = generatedSvg();
    for (auto _ : state) {
        int total = 0;
        readAttributes(document.documentElement(), &total);
        benchmark::DoNotOptimize(total);
    }
}
BENCHMARK(ColorApply_Baseline)->Unit(benchmark::kMicrosecond);

const QString HIT_ID = QStringLiteral("customColor#1f4e9c.css");

void CssStringHit_Ours(benchmark::State& state)
{
    RKCssSheetCache& cache = RKSingleton<RKCssSheetCache>::instance();
    cache.cssString(HIT_ID);
    for (auto _ : state) {
        QString css = cache.cssString(HIT_ID);
        benchmark::DoNotOptimize(css);
    }
}
BENCHMARK(CssStringHit_Ours);

void CssStringHit_Baseline(benchmark::State& state)
{
    QMutex mutex;
    QCache<QString, QString> cache(100);
    cache.insert(HIT_ID, new QString(QStringLiteral(".vakoCustomFill{fill: #1f4e9c;}")), 1);
    for (auto _ : state) {
        QMutexLocker lock(&mutex);
        QString css = *cache.object(HIT_ID);
        benchmark::DoNotOptimize(css);
    }
}
BENCHMARK(CssStringHit_Baseline);

}

BENCHMARK_MAIN();
