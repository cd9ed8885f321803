// A holiday file made from the input is read by the calculator (provinces, rule days, dated
// days, school vacations), then every province's year is computed.
#include "FuzzSupport.h"

#include <RKCalendariumHolidayCalculator.h>
#include <RKCalendariumHolidayCacheKey.h>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    // Only the input's file and the shipped language list are found.
    qputenv("RKXML_RESOURCE_PATH", "");
    qputenv("RKXML_DATA_DIR", fuzz::workDir().toUtf8());
    QFile languages(QStringLiteral(RKXML_SHIPPED_DATA_DIR "/international/CalendarLanguages.xml"));
    if (!languages.open(QIODevice::ReadOnly))
        abort();
    fuzz::writeFile(QStringLiteral("international/CalendarLanguages.xml"), languages.readAll());
    fuzz::initialize(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::writeFile(QStringLiteral("holidays/de_DE.xml"), fuzz::bytes(data, size));
    RKCalendariumHolidayCalculator& calculator = RKCalendariumHolidayCalculator::instance();
    calculator.reloadData();
    const RKLocale locale(QStringLiteral("de"), QStringLiteral("DE"));
    QStringList provinces = calculator.availableProvinces(locale);
    provinces.prepend(QString());
    for (const QString& province : qAsConst(provinces).mid(0, 4)) {
        RKCalendariumHolidayConfig config;
        config.setLanguage(locale);
        config.setProvince(province);
        config = RKCalendariumHolidayConfig::withEverythingEnabled(config);
        for (int year : {2000, 2026, 2100}) {
            const RKCalendariumHolidayCacheKey key(year, config);
            calculator.holidaysOfYear(key);
            calculator.schoolVacations(key);
        }
    }
    return 0;
}
