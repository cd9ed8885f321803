#include <RKCalculatedHolidayCache.h>
#include <RKSVGCompilerInstructionsFactory.h>

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QMultiHash>
#include <QTemporaryDir>
#include <QVector>

#include <benchmark/benchmark.h>

namespace {

// One month page of a Bavarian calendar with every feature on: holidays, vacations, moon phases.
RKCalendariumContentKey bavarianPage()
{
    RKCalendariumHolidayConfig config;
    config.setLanguage(RKLocale(QStringLiteral("de"), QStringLiteral("DE")));
    config.setProvince(QStringLiteral("BY"));
    return RKCalendariumContentKey(
        RKCalendariumContentConfig(QDate(2024, 12, 1), RKCalendariumHolidayConfig::withEverythingEnabled(config)),
        RKProjectIdentifier(QStringLiteral("bench"), false));
}

RKCalculatedHolidayCache& holidayCache()
{
    static RKCalculatedHolidayCache* cache = [] {
        auto* created = new RKCalculatedHolidayCache; // lives as long as the factory uses it
        RKSingleton<RKSVGCompilerInstructionsFactory>::instance().addHolidayCache(created);
        return created;
    }();
    return *cache;
}

// The factory's whole set for one page; the holiday cache has computed its years already,
// as it has in an application that shows more than one page.
void BuildPageInstructions_Ours(benchmark::State& state)
{
    holidayCache();
    const RKSVGCompilerInstructionsFactory& factory = RKSingleton<RKSVGCompilerInstructionsFactory>::instance();
    const RKCalendariumContentKey key = bavarianPage();
    int instructions = factory.createInstructions(key).size();
    for (auto _ : state)
        benchmark::DoNotOptimize(instructions = factory.createInstructions(key).size());
    state.counters["instructions"] = instructions;
}
BENCHMARK(BuildPageInstructions_Ours)->Unit(benchmark::kMillisecond);

// The same number of ready-made (key, instruction) pairs inserted into a QMultiHash.
void BuildPageInstructions_Baseline(benchmark::State& state)
{
    holidayCache();
    const RKSVGCompilerInstructions made =
        RKSingleton<RKSVGCompilerInstructionsFactory>::instance().createInstructions(bavarianPage());
    QVector<QPair<QString, RKSVGCompilerInstruction>> pairs;
    const QMultiHash<QString, RKSVGCompilerInstruction> all = made.allReplacements();
    for (auto it = all.constBegin(); it != all.constEnd(); ++it)
        pairs.append(qMakePair(it.key(), it.value()));
    for (auto _ : state) {
        QMultiHash<QString, RKSVGCompilerInstruction> hash;
        for (const auto& pair : pairs)
            hash.insert(pair.first, pair.second);
        benchmark::DoNotOptimize(hash.size());
    }
    state.counters["instructions"] = pairs.size();
}
BENCHMARK(BuildPageInstructions_Baseline)->Unit(benchmark::kMillisecond);

// For information: the first page of a year, holidays, vacations and moon phases computed as well.
void BuildPageInstructionsColdHolidays(benchmark::State& state)
{
    const RKSVGCompilerInstructionsFactory& factory = RKSingleton<RKSVGCompilerInstructionsFactory>::instance();
    const RKCalendariumContentKey key = bavarianPage();
    for (auto _ : state) {
        holidayCache().clear();
        benchmark::DoNotOptimize(factory.createInstructions(key).size());
    }
}
BENCHMARK(BuildPageInstructionsColdHolidays)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir writable;
    qputenv("RKXML_WRITABLE_DIR", writable.path().toLocal8Bit());
    if (qEnvironmentVariableIsEmpty("RKXML_DATA_DIR"))
        qputenv("RKXML_DATA_DIR", QByteArray(RKXML_SHIPPED_DATA_DIR));
    // The trace of holiday pictures and the notes on long vacations are not what is measured.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
