#pragma once

#include "RKCalendariumHolidayDayPrototype.h"

#include <QDate>
#include <QString>
#include <QVector>

/**
 * The dates of the days computed by rule (RKCalendariumHolidayDayId 1 to 22) and
 * the date patterns of the days written out in the holiday files. Pure functions
 * of their arguments: safe from any thread.
 */
class RKHolidayRuleDays
{
public:
    /// Ids 19, 1, 6, 12, 13, 14, 15, 16, 17, 18: the days tied to the calendar year.
    static const QVector<RKCalendariumHolidayDayId>& christmasRelated();
    /// Ids 20, 21, 22, 2, 3, 4, 5, 7, 8, 9, 10, 11: the days tied to Easter.
    static const QVector<RKCalendariumHolidayDayId>& easterRelated();

    /// The date of rule day `id` in `year`; `easter` is that year's Easter Sunday
    /// (only read for the Easter-based ids). Invalid for an id outside 1..22.
    static QDate date(RKCalendariumHolidayDayId id, int year, const QDate& easter);

    /// Easter Sunday with the correction grouped as it always was here (one week
    /// late when H is 28 or 29 and G > 10); invalid for years before the Gregorian calendar.
    static QDate easterSunday(int year);
    /// The Wednesday on or before 22 November.
    static QDate wednesdayBefore22November(int year);

    /// A dated day's pattern such as "2026-05-08" or "xxxx-10-03", matched once when read.
    struct DatedRule {
        bool matched = false;
        int year = 0; ///< 0: every year (the pattern's year is no number, or 0)
        int month = 0;
        int day = 0;
    };
    /// Searches (unanchored) for four word characters, a separator, month, separator, day.
    static DatedRule matchDatedPattern(const QString& pattern);
};
