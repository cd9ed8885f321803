#pragma once

#include "RKCalendariumHolidayConfig.h"
#include "rkxml_export.h"

/// One year under one holiday configuration: the argument of every year computation.
class RKXML_EXPORT RKCalendariumHolidayCacheKey
{
public:
    /// Year 1900 with a default configuration.
    RKCalendariumHolidayCacheKey();
    RKCalendariumHolidayCacheKey(int year, const RKCalendariumHolidayConfig& config);
    virtual ~RKCalendariumHolidayCacheKey() = default;

    int year() const { return myYear; }
    RKCalendariumHolidayConfig config() const { return myConfig; }

    bool operator==(const RKCalendariumHolidayCacheKey& other) const;
    bool operator!=(const RKCalendariumHolidayCacheKey& other) const { return !(*this == other); }
    /// config().hashKey() plus the year, wrapping in 32 bits.
    uint hashKey() const;

private:
    int myYear = 1900;
    RKCalendariumHolidayConfig myConfig;
};

inline uint qHash(const RKCalendariumHolidayCacheKey& key, uint seed = 0)
{
    return key.hashKey() ^ seed;
}
