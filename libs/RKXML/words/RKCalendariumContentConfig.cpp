#include "RKCalendariumContentConfig.h"

#include <QHash>

RKCalendariumContentConfig::RKCalendariumContentConfig(QDate date, RKCalendariumHolidayConfig config)
    : myDate(date)
    , myHolidayConfig(std::move(config))
{
}

bool RKCalendariumContentConfig::operator==(const RKCalendariumContentConfig& other) const
{
    return myDate == other.myDate && myHolidayConfig == other.myHolidayConfig;
}

uint RKCalendariumContentConfig::hashKey() const
{
    return qHash(myDate, 0) ^ myHolidayConfig.hashKey();
}

QString RKCalendariumContentConfig::describe() const
{
    return myDate.toString(Qt::TextDate);
}

QDate RKCalendariumContentConfig::dayInThisMonth(int day) const
{
    return QDate(myDate.year(), myDate.month(), day);
}

RKCalendariumContentConfig RKCalendariumContentConfig::addDays(int days) const
{
    return RKCalendariumContentConfig(myDate.addDays(days), myHolidayConfig);
}

RKCalendariumContentConfig RKCalendariumContentConfig::addMonths(int months) const
{
    return RKCalendariumContentConfig(myDate.addMonths(months), myHolidayConfig);
}

RKCalendariumContentConfig RKCalendariumContentConfig::moveToDay(QDate date) const
{
    return RKCalendariumContentConfig(date, myHolidayConfig);
}

RKCalendariumContentConfig RKCalendariumContentConfig::moveToDayInMonth(int day) const
{
    return RKCalendariumContentConfig(dayInThisMonth(day), myHolidayConfig);
}
