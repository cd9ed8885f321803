#pragma once

#include "rkxml_export.h"

#include <RKLocale.h>

#include <QHash>
#include <QString>

/**
 * A snapshot of one locale's weekday (1..7), month (1..12) and calendar-week
 * words, taken once from the calendar words registry so that filling a page
 * needs no further look-ups. Unknown numbers give a null string.
 */
class RKXML_EXPORT RKCalendarDayNames
{
public:
    RKCalendarDayNames() = default;
    /// Takes every word of `locale` from RKCalendarWordsRegistry (with its language fall-back).
    explicit RKCalendarDayNames(const RKLocale& locale);
    RKCalendarDayNames(const RKCalendarDayNames&) = default;
    RKCalendarDayNames(RKCalendarDayNames&&) = default;
    RKCalendarDayNames& operator=(const RKCalendarDayNames&) = default;
    RKCalendarDayNames& operator=(RKCalendarDayNames&&) = default;
    virtual ~RKCalendarDayNames() = default;

    QString dayOfWeekShort(int day) const { return myDayOfWeekShort.value(day); }
    QString dayOfWeekLong(int day) const { return myDayOfWeekLong.value(day); }
    QString monthShort(int month) const { return myMonthShort.value(month); }
    QString monthLong(int month) const { return myMonthLong.value(month); }
    QString calendarWeekShort() const { return myCalendarWeekShort; }
    QString calendarWeekLong() const { return myCalendarWeekLong; }
    bool isEmpty() const;

private:
    QHash<int, QString> myDayOfWeekLong;
    QHash<int, QString> myDayOfWeekShort;
    QHash<int, QString> myMonthLong;
    QHash<int, QString> myMonthShort;
    QString myCalendarWeekShort;
    QString myCalendarWeekLong;
};
