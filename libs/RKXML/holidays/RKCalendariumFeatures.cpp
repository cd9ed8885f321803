#include "RKCalendariumFeatures.h"

RKCalendariumFeatures::RKCalendariumFeatures(const QString& csv)
    : RKEnumWrapper<RKCalendariumFeaturesEnum>(RKCalendariumFeatureNone)
{
    decodeFrom(csv);
}

void RKCalendariumFeatures::fillTable(RKEnumToStringTable<RKCalendariumFeaturesEnum>* table) const
{
    struct Row {
        const char* word;
        RKCalendariumFeaturesEnum value;
    };
    static const Row rows[] = {
        {"personalEntries", RKCalendariumFeaturePersonalEntries},
        {"holidays", RKCalendariumFeatureHolidays},
        {"holiday_colors", RKCalendariumFeatureHolidayColors},
        {"vacations", RKCalendariumFeatureVacations},
        {"moonphases", RKCalendariumFeatureMoonPhases},
        {"zodiacs", RKCalendariumFeatureZodiacs},
        {"show_week_of_year", RKCalendariumFeatureShowWeekOfYear},
    };
    for (const Row& row : rows)
        table->insert(QLatin1String(row.word), row.value);
    table->setUnknownWord(QString());
    table->setUnknownValue(RKCalendariumFeatureNone);
}
