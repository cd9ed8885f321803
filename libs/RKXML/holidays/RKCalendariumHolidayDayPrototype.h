#pragma once

#include "RKCalendariumHolidayType.h"
#include "rkxml_export.h"

#include <QString>

/// Names one of the days that the holiday calculator computes by rule; -1 means none.
typedef qint32 RKCalendariumHolidayDayId;
/// No rule day: the id of the days written out on a date.
constexpr RKCalendariumHolidayDayId RKCalendariumHolidayDayIdNone = -1;
/// The rule days are numbered from 1 to 22 (the "id" of a holiday file's "day").
constexpr RKCalendariumHolidayDayId RKCalendariumHolidayDayIdFirst = 1;
constexpr RKCalendariumHolidayDayId RKCalendariumHolidayDayIdLast = 22;

/**
 * How one named day of one region is marked, as read from a holiday data file:
 * either a day computed by rule (id() != -1, abstractDate() empty) or a day on
 * a written date pattern such as "xxxx-10-03" (id() == -1).
 */
class RKXML_EXPORT RKCalendariumHolidayDayPrototype
{
public:
    RKCalendariumHolidayDayPrototype() = default;
    RKCalendariumHolidayDayPrototype(const QString& description, const RKCalendariumHolidayType& type, const QString& abstractDate);
    RKCalendariumHolidayDayPrototype(const QString& description, const RKCalendariumHolidayType& type, const RKCalendariumHolidayDayId& id);
    virtual ~RKCalendariumHolidayDayPrototype() = default;

    QString description() const { return myDescription; }
    RKCalendariumHolidayType type() const { return myType; }
    QString abstractDate() const { return myAbstractDate; }
    RKCalendariumHolidayDayId id() const { return myId; }

private:
    QString myDescription;
    RKCalendariumHolidayType myType;
    QString myAbstractDate;
    RKCalendariumHolidayDayId myId = RKCalendariumHolidayDayIdNone;
};
