#pragma once

#include "RKCalendariumHolidayConfig.h"
#include "rkxml_export.h"

#include <RKDateRange.h>

#include <QDate>
#include <QString>

/**
 * One date of a calendarium (which also fixes the month a page shows) with the
 * holiday configuration that selects language, province and features.
 * A default-constructed value holds the null date and is not valid.
 */
class RKXML_EXPORT RKCalendariumContentConfig
{
public:
    RKCalendariumContentConfig() = default;
    RKCalendariumContentConfig(QDate date, RKCalendariumHolidayConfig config);
    virtual ~RKCalendariumContentConfig() = default;

    bool operator==(const RKCalendariumContentConfig& other) const;
    bool operator!=(const RKCalendariumContentConfig& other) const { return !(*this == other); }
    /// qHash of the date XOR the holiday configuration's hashKey().
    uint hashKey() const;
    /// The date in Qt's text format.
    QString describe() const;
    bool isValid() const { return myDate.isValid(); }

    QDate date() const { return myDate; }
    RKCalendariumHolidayConfig holidayConfig() const { return myHolidayConfig; }
    int day() const { return myDate.day(); }
    int month() const { return myDate.month(); }
    int year() const { return myDate.year(); }
    /// 1 = Monday ... 7 = Sunday.
    int dayOfWeek() const { return myDate.dayOfWeek(); }
    int dayInMonthCount() const { return myDate.daysInMonth(); }
    /// ISO 8601 week number.
    int weekNumber() const { return myDate.weekNumber(); }
    /// All days of the date's month.
    RKDateRange dayRange() const { return RKDateRange::month(myDate); }
    /// Same year and month, the given day; invalid for an impossible day.
    QDate dayInThisMonth(int day) const;

    RKCalendariumContentConfig addDays(int days) const;
    /// Qt's month arithmetic: the day is clamped to the target month's length.
    RKCalendariumContentConfig addMonths(int months) const;
    RKCalendariumContentConfig moveToDay(QDate date) const;
    RKCalendariumContentConfig moveToDayInMonth(int day) const;

    RKLocale language() const { return myHolidayConfig.language(); }
    QString province() const { return myHolidayConfig.province(); }

    void setFeatures(const RKCalendariumFeatures& features) { myHolidayConfig.setFeatures(features); }
    bool setFeature(const RKCalendariumFeatures& feature, bool on) { return myHolidayConfig.setFeature(feature, on); }
    void removeFeatures(const RKCalendariumFeatures& features) { myHolidayConfig.removeFeatures(features); }
    RKCalendariumFeatures features() const { return myHolidayConfig.features(); }
    bool hasFeatures(const RKCalendariumFeatures& features) const { return myHolidayConfig.hasFeatures(features); }

private:
    QDate myDate;
    RKCalendariumHolidayConfig myHolidayConfig;
};
