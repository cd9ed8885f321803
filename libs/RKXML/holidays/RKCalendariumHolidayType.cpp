#include "RKCalendariumHolidayType.h"

RKCalendariumHolidayType::RKCalendariumHolidayType(const QString& keywords)
    : RKEnumWrapper<RKCalendariumHolidayTypeEnum>(RKCalendariumHolidayTypeNoHoliday)
{
    decodeFrom(keywords);
}

void RKCalendariumHolidayType::fillTable(RKEnumToStringTable<RKCalendariumHolidayTypeEnum>* table) const
{
    struct Row {
        const char* word;
        RKCalendariumHolidayTypeEnum value;
    };
    static const Row rows[] = {
        {"new_moon", RKCalendariumHolidayTypeNewMoon},
        {"growing_crescent", RKCalendariumHolidayTypeGrowingCrescent},
        {"full_moon", RKCalendariumHolidayTypeFullMoon},
        {"waning_crescent", RKCalendariumHolidayTypeWaningCrescent},
        {"school", RKCalendariumHolidayTypeSchool},
        {"free", RKCalendariumHolidayTypeFree},
        {"show", RKCalendariumHolidayTypeShow},
    };
    for (const Row& row : rows)
        table->insert(QLatin1String(row.word), row.value);
    table->setUnknownWord(QStringLiteral("NO_HOLIDAY"));
    table->setUnknownValue(RKCalendariumHolidayTypeNoHoliday);
}
