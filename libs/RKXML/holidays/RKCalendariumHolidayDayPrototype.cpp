#include "RKCalendariumHolidayDayPrototype.h"

RKCalendariumHolidayDayPrototype::RKCalendariumHolidayDayPrototype(
    const QString& description, const RKCalendariumHolidayType& type, const QString& abstractDate)
    : myDescription(description)
    , myType(type)
    , myAbstractDate(abstractDate)
    , myId(RKCalendariumHolidayDayIdNone)
{
}

RKCalendariumHolidayDayPrototype::RKCalendariumHolidayDayPrototype(
    const QString& description, const RKCalendariumHolidayType& type, const RKCalendariumHolidayDayId& id)
    : myDescription(description)
    , myType(type)
    , myId(id)
{
}
