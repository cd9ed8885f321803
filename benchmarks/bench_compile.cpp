// Compiling the shipped wall-month template with a ready instruction set against the
// floor of any such work: parsing and serialising the same template with QDom.
// Ours, per iteration: a deep copy of the parsed template, every compiler pass
// (instructions, images, empty cells, style sheet, day-cell markers) and the page
// serialised. The holiday answers and the style sheet's text are cached before timing.

#include <RKCalculatedHolidayCache.h>
#include <RKCalendariumContentKey.h>
#include <RKCalendariumHolidayConfig.h>
#include <RKCssSheetCache.h>
#include <RKSVGCompiler.h>
#include <RKSVGCompilerInstructionsCache.h>
#include <RKSVGCompilerInstructionsFactory.h>

#include <QDomDocument>
#include <QFile>
#include <QGuiApplication>

#include <benchmark/benchmark.h>

namespace {

const QString TEMPLATE = QStringLiteral(RKXML_SHIPPED_DATA_DIR "/templates/wall-month.svg");
const QString CSS = QStringLiteral("css/default.css");

QByteArray templateBytes()
{
    QFile file(TEMPLATE);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

RKSVGCompilerInstructions marchInstructions()
{
    static RKCalculatedHolidayCache holidays;
    RKCalendariumHolidayConfig config;
    config.setLanguage(RKLocale::decodeName(QStringLiteral("de_DE")));
    config.setProvince(QStringLiteral("BY"));
    config.setFeatures(RKCalendariumFeatures(QStringLiteral("holidays,vacations,moonphases")));
    RKSingleton<RKSVGCompilerInstructionsFactory>::instance().addHolidayCache(&holidays);
    return RKSingleton<RKSVGCompilerInstructionsCache>::instance().instructions(
        RKCalendariumContentKey(RKCalendariumContentConfig(QDate(2024, 3, 1), config), RKProjectIdentifier()));
}

void CompileWallMonth_Ours(benchmark::State& state)
{
    QDomDocument parsed;
    parsed.setContent(templateBytes(), false);
    const RKSVGCompilerInstructions instructions = marchInstructions();
    RKSingleton<RKCssSheetCache>::instance().cssString(CSS);
    qint64 bytes = 0;
    for (auto _ : state) {
        RKSVGCompiler compiler;
        compiler.setDomDocument(parsed, true);
        compiler.setInstructions(instructions);
        compiler.setCss(CSS);
        compiler.update();
        const QByteArray page = compiler.resultByteArray();
        bytes += page.size();
        benchmark::DoNotOptimize(page.constData());
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(CompileWallMonth_Ours)->Unit(benchmark::kMicrosecond);

void CompileWallMonth_Baseline(benchmark::State& state)
{
    const QByteArray source = templateBytes();
    qint64 bytes = 0;
    for (auto _ : state) {
        QDomDocument document;
        document.setContent(source, false);
        const QByteArray page = document.toByteArray(1);
        bytes += page.size();
        benchmark::DoNotOptimize(page.constData());
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(CompileWallMonth_Baseline)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("RKXML_DATA_DIR", RKXML_SHIPPED_DATA_DIR);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv); // the holiday cache reads the moon pictures' sizes
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
