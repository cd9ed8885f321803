#include "RKCalendariumHolidayCacheKey.h"

RKCalendariumHolidayCacheKey::RKCalendariumHolidayCacheKey() = default;

RKCalendariumHolidayCacheKey::RKCalendariumHolidayCacheKey(int year, const RKCalendariumHolidayConfig& config)
    : myYear(year)
    , myConfig(config)
{
}

bool RKCalendariumHolidayCacheKey::operator==(const RKCalendariumHolidayCacheKey& other) const
{
    return myYear == other.myYear && myConfig == other.myConfig;
}

uint RKCalendariumHolidayCacheKey::hashKey() const
{
    return myConfig.hashKey() + static_cast<uint>(myYear);
}
