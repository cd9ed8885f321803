#include "RKCalendarDayNames.h"

#include "RKCalendarWordsRegistry.h"

RKCalendarDayNames::RKCalendarDayNames(const RKLocale& locale)
{
    const RKCalendarWordsRegistry& registry = RKSingleton<RKCalendarWordsRegistry>::instance();
    for (int day = 1; day <= 7; ++day) {
        myDayOfWeekShort.insert(day, registry.dayNameShort(locale, day));
        myDayOfWeekLong.insert(day, registry.dayNameLong(locale, day));
    }
    for (int month = 1; month <= 12; ++month) {
        myMonthShort.insert(month, registry.monthNameShort(locale, month));
        myMonthLong.insert(month, registry.monthNameLong(locale, month));
    }
    myCalendarWeekShort = registry.weekShort(locale);
    myCalendarWeekLong = registry.weekLong(locale);
}

bool RKCalendarDayNames::isEmpty() const
{
    return myDayOfWeekLong.isEmpty() && myDayOfWeekShort.isEmpty() && myMonthLong.isEmpty() && myMonthShort.isEmpty()
        && myCalendarWeekShort.isEmpty() && myCalendarWeekLong.isEmpty();
}
