#include "RKAbstractHolidayCache.h"

RKAbstractHolidayCache::RKAbstractHolidayCache()
    : QObject(nullptr)
{
}

RKAbstractHolidayCache::~RKAbstractHolidayCache() = default;
