// Holidays of a year: our calculator against KDE's KHolidays (the same public-holiday
// question for Bavaria), and our calculator with every marked-day kind over all German
// regions against the same baseline.

#include <RKCalendariumFeatures.h>
#include <RKCalendariumHolidayCacheKey.h>
#include <RKCalendariumHolidayCalculator.h>
#include <RKCalendariumHolidayConfig.h>

#include <KHolidays/HolidayRegion>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

const int FIRST_YEAR = 2000;
const int LAST_YEAR = 2100;
const QString BASELINE_REGION = QStringLiteral("de-by_de");

RKCalendariumHolidayConfig germanConfig(const QString& province, const QString& features)
{
    RKCalendariumHolidayConfig config;
    config.setLanguage(RKLocale(QStringLiteral("de"), QStringLiteral("DE")));
    // An empty province is ignored; a name no file uses selects the nationwide days.
    config.setProvince(province.isEmpty() ? QStringLiteral("-") : province);
    config.setFeatures(RKCalendariumFeatures(features));
    return config;
}

void HolidaysOfYear_Ours(benchmark::State& state)
{
    const RKCalendariumHolidayCalculator& calculator = RKCalendariumHolidayCalculator::instance();
    const RKCalendariumHolidayConfig config = germanConfig(QStringLiteral("BY"), QStringLiteral("holidays"));
    int year = FIRST_YEAR;
    for (auto _ : state) {
        benchmark::DoNotOptimize(calculator.holidaysOfYear(RKCalendariumHolidayCacheKey(year, config)));
        year = year == LAST_YEAR ? FIRST_YEAR : year + 1;
    }
}

void baseline(benchmark::State& state)
{
    if (!KHolidays::HolidayRegion::regionCodes().contains(BASELINE_REGION)) {
        state.SkipWithError("KHolidays has no region de-by_de");
        return;
    }
    const KHolidays::HolidayRegion region(BASELINE_REGION);
    int year = FIRST_YEAR;
    for (auto _ : state) {
        benchmark::DoNotOptimize(region.rawHolidays(QDate(year, 1, 1), QDate(year, 12, 31)));
        year = year == LAST_YEAR ? FIRST_YEAR : year + 1;
    }
}

void HolidaysOfYear_Baseline(benchmark::State& state)
{
    baseline(state);
}

// One region-year per iteration: holidays, school vacations and moon phases.
void AllFeaturesAllRegions_Ours(benchmark::State& state)
{
    const RKCalendariumHolidayCalculator& calculator = RKCalendariumHolidayCalculator::instance();
    QList<RKCalendariumHolidayConfig> configs;
    QStringList regions = calculator.availableProvinces(RKLocale(QStringLiteral("de"), QStringLiteral("DE")));
    regions.prepend(QString());
    for (const QString& region : qAsConst(regions))
        configs << germanConfig(region, QStringLiteral("holidays,vacations,moonphases"));
    if (configs.size() != 17) {
        state.SkipWithError("expected 17 German regions");
        return;
    }
    int year = FIRST_YEAR;
    int index = 0;
    for (auto _ : state) {
        const RKCalendariumHolidayCacheKey key(year, configs.at(index));
        benchmark::DoNotOptimize(calculator.holidaysOfYear(key));
        benchmark::DoNotOptimize(calculator.moonPhases(key));
        if (++index == configs.size()) {
            index = 0;
            year = year == LAST_YEAR ? FIRST_YEAR : year + 1;
        }
    }
}

void AllFeaturesAllRegions_Baseline(benchmark::State& state)
{
    baseline(state);
}

BENCHMARK(HolidaysOfYear_Ours);
BENCHMARK(HolidaysOfYear_Baseline);
BENCHMARK(AllFeaturesAllRegions_Ours);
BENCHMARK(AllFeaturesAllRegions_Baseline);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir writable;
    qputenv("RKXML_WRITABLE_DIR", writable.path().toLocal8Bit());
    if (qEnvironmentVariableIsEmpty("RKXML_DATA_DIR"))
        qputenv("RKXML_DATA_DIR", QByteArray(RKXML_SHIPPED_DATA_DIR));
    // The calculator's note on long summer vacations is not what is measured.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
