#pragma once

#include "RKCalendariumHoliday.h"
#include "rkxml_export.h"

#include <QList>

#include <initializer_list>

/**
 * Marked days in insertion order (never sorted). Every filter returns a new
 * list and leaves the receiver unchanged.
 */
class RKXML_EXPORT RKCalendariumHolidayList : public QList<RKCalendariumHoliday>
{
public:
    RKCalendariumHolidayList() = default;
    RKCalendariumHolidayList(std::initializer_list<RKCalendariumHoliday> holidays);
    virtual ~RKCalendariumHolidayList() = default;

    /// Entries on `date`; empty for an invalid date.
    RKCalendariumHolidayList filter(const QDate& date) const;
    /// Entries whose type value equals `type` exactly (not a flag test).
    RKCalendariumHolidayList filter(const RKCalendariumHolidayType& type) const;
    /// Entries whose type value differs from `type`.
    RKCalendariumHolidayList filterAway(const RKCalendariumHolidayType& type) const;
    /// First occurrence of each entry (equal in type, date and description), in order.
    RKCalendariumHolidayList filterAwayDoubles() const;
    /// Logs "start", every entry, " end" at info level.
    void dump() const;
};
