#include "RKCalendariumHoliday.h"

#include <QDebug>
#include <QLocale>

RKCalendariumHoliday::RKCalendariumHoliday(const QDate& date, const QString& description, const RKCalendariumHolidayType& type)
    : myType(type)
    , myDate(date)
    , myDescription(description)
{
}

RKCalendariumHoliday::RKCalendariumHoliday(const QDate& date, const RKCalendariumHolidayType& type)
    : myType(type)
    , myDate(date)
{
}

bool RKCalendariumHoliday::operator==(const RKCalendariumHoliday& other) const
{
    return myType.toInt() == other.myType.toInt() && myDate == other.myDate && myDescription == other.myDescription;
}

QString RKCalendariumHoliday::longDescription() const
{
    // The default locale's short date format (what Qt::LocaleDate stands for).
    return QStringLiteral("%1: \"%2\"")
        .arg(QLocale().toString(myDate, QLocale::ShortFormat), 0, QLatin1Char(' '))
        .arg(myDescription, 0, QLatin1Char(' '));
}

void RKCalendariumHoliday::dump() const
{
    qInfo() << "Tag: " << myDate.toString(Qt::ISODate) << ": " << myDescription << " : " << myType.encode();
}
