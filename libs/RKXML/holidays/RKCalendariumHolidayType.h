#pragma once

#include "rkxml_export.h"

#include <RKEnumWrapper.h>

#include <QString>

/// How a day is marked; the values are flags and may be OR-ed.
enum RKCalendariumHolidayTypeEnum : int {
    RKCalendariumHolidayTypeNoHoliday = 0,
    RKCalendariumHolidayTypeNewMoon = 1,
    RKCalendariumHolidayTypeGrowingCrescent = 2,
    RKCalendariumHolidayTypeFullMoon = 4,
    RKCalendariumHolidayTypeWaningCrescent = 8,
    RKCalendariumHolidayTypeSchool = 16,
    RKCalendariumHolidayTypeFree = 32,
    RKCalendariumHolidayTypeShow = 64,
};

/**
 * A set of RKCalendariumHolidayTypeEnum flags with the keywords "new_moon",
 * "growing_crescent", "full_moon", "waning_crescent", "school", "free" and
 * "show"; 0 and values without a keyword are written "NO_HOLIDAY".
 */
class RKXML_EXPORT RKCalendariumHolidayType : public RKEnumWrapper<RKCalendariumHolidayTypeEnum>
{
public:
    RKCalendariumHolidayType(RKCalendariumHolidayTypeEnum value = RKCalendariumHolidayTypeNoHoliday)
        : RKEnumWrapper<RKCalendariumHolidayTypeEnum>(value)
    {
    }
    /// OR of the comma-separated keywords (trimmed, any case); unknown or empty pieces add 0.
    explicit RKCalendariumHolidayType(const QString& keywords);
    ~RKCalendariumHolidayType() override = default;

    void fillTable(RKEnumToStringTable<RKCalendariumHolidayTypeEnum>* table) const override;
};
