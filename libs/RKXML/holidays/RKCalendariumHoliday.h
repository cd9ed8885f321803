#pragma once

#include "RKCalendariumHolidayType.h"
#include "rkxml_export.h"

#include <QDate>
#include <QString>

/// One marked day of a calendar: a date, the text shown for it and how it is marked.
class RKXML_EXPORT RKCalendariumHoliday
{
public:
    RKCalendariumHoliday() = default;
    RKCalendariumHoliday(const QDate& date, const QString& description, const RKCalendariumHolidayType& type);
    RKCalendariumHoliday(const QDate& date, const RKCalendariumHolidayType& type);
    virtual ~RKCalendariumHoliday() = default;

    QDate date() const { return myDate; }
    QString description() const { return myDescription; }
    RKCalendariumHolidayType type() const { return myType; }

    /// True when the type is not 0; the date plays no part.
    bool isValid() const { return myType.toInt() != 0; }
    /// Type values, dates and descriptions equal.
    bool operator==(const RKCalendariumHoliday& other) const;
    bool operator!=(const RKCalendariumHoliday& other) const { return !(*this == other); }

    /// "<short locale date>: \"<description>\"".
    QString longDescription() const;
    /// Logs one info line with the ISO date, the description and the type keyword.
    void dump() const;

private:
    RKCalendariumHolidayType myType;
    QDate myDate;
    QString myDescription;
};
