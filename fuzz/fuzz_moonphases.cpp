// The moon phase file made from the input, read for a few years.
#include "FuzzSupport.h"

#include <RKCalendariumHolidayCalculator.h>
#include <RKCalendariumHolidayCacheKey.h>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("RKXML_RESOURCE_PATH", "");
    qputenv("RKXML_DATA_DIR", fuzz::workDir().toUtf8());
    fuzz::initialize(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    // A new file each time: the calculator re-reads the file when it changes on disk.
    fuzz::writeFile(QStringLiteral("moonphases/moonphases.xml"), fuzz::bytes(data, size));
    RKCalendariumHolidayCalculator& calculator = RKCalendariumHolidayCalculator::instance();
    calculator.reloadData();
    RKCalendariumHolidayConfig config;
    config.setLanguage(RKLocale(QStringLiteral("de"), QStringLiteral("DE")));
    config = RKCalendariumHolidayConfig::withEverythingEnabled(config);
    for (int year : {1899, 1900, 2026, 2100, 2101})
        calculator.moonPhases(RKCalendariumHolidayCacheKey(year, config));
    return 0;
}
