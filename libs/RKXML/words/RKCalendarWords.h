#pragma once

#include "rkxml_export.h"

#include <RKLocale.h>

#include <QDomElement>
#include <QList>
#include <QString>

/**
 * One calendar word in a short and a long form. The default value reads
 * "nn" / "unknown": what every out-of-range look-up shows on a page.
 */
class RKXML_EXPORT RKCalendarLocalizedNamedAtomic
{
public:
    RKCalendarLocalizedNamedAtomic();
    /// Attribute "name" of the first "shortname" and "longname" children; missing gives "".
    explicit RKCalendarLocalizedNamedAtomic(const QDomElement& element);
    virtual ~RKCalendarLocalizedNamedAtomic() = default;

    QString shortName() const { return myShortName; }
    QString longName() const { return myLongName; }

private:
    QString myShortName;
    QString myLongName;
};

/// Weekday names in file order, number 1 first (Monday in the shipped data); valid with 7 entries.
class RKXML_EXPORT RKCalendarDaysOfWeek
{
public:
    RKCalendarDaysOfWeek() = default;
    /// One entry per child element "day".
    explicit RKCalendarDaysOfWeek(const QDomElement& daysOfWeek);
    virtual ~RKCalendarDaysOfWeek() = default;

    /// Counting from 1; out of range gives the default ("nn"/"unknown").
    RKCalendarLocalizedNamedAtomic dayOfWeek(int n) const;
    QString longDay(int n) const { return dayOfWeek(n).longName(); }
    QString shortDay(int n) const { return dayOfWeek(n).shortName(); }
    int count() const { return myDays.size(); }
    bool isValid() const { return myDays.size() == 7; }

private:
    QList<RKCalendarLocalizedNamedAtomic> myDays;
};

/// Month names in file order, January first; valid with 12 entries.
class RKXML_EXPORT RKCalendarMonthNames
{
public:
    RKCalendarMonthNames() = default;
    /// One entry per child element "month".
    explicit RKCalendarMonthNames(const QDomElement& monthNames);
    virtual ~RKCalendarMonthNames() = default;

    RKCalendarLocalizedNamedAtomic monthName(int n) const;
    QString shortMonth(int n) const { return monthName(n).shortName(); }
    QString longMonth(int n) const { return monthName(n).longName(); }
    int count() const { return myMonths.size(); }
    bool isValid() const { return myMonths.size() == 12; }

private:
    QList<RKCalendarLocalizedNamedAtomic> myMonths;
};

/// One locale's calendar words, read from a "Language" element of the words file.
class RKXML_EXPORT RKCalendarWords
{
public:
    RKCalendarWords() = default;
    explicit RKCalendarWords(const QDomElement& language);
    RKCalendarWords(const RKCalendarWords&) = default;
    RKCalendarWords(RKCalendarWords&&) = default;
    RKCalendarWords& operator=(const RKCalendarWords&) = default;
    RKCalendarWords& operator=(RKCalendarWords&&) = default;
    virtual ~RKCalendarWords() = default;

    RKLocale language() const { return myLanguage; }
    /// 12 months and 7 days; the week word is not checked.
    bool isValid() const { return myMonthNames.isValid() && myDaysOfWeek.isValid(); }

    QString longDayOfWeek(int day) const { return myDaysOfWeek.longDay(day); }
    QString shortDayOfWeek(int day) const { return myDaysOfWeek.shortDay(day); }
    QString longMonth(int month) const { return myMonthNames.longMonth(month); }
    QString shortMonth(int month) const { return myMonthNames.shortMonth(month); }
    QString shortWeek() const { return myWeekName.shortName(); }
    QString longWeek() const { return myWeekName.longName(); }
    const RKCalendarMonthNames& monthNames() const { return myMonthNames; }
    const RKCalendarDaysOfWeek& daysOfWeek() const { return myDaysOfWeek; }

private:
    RKCalendarMonthNames myMonthNames;
    RKCalendarDaysOfWeek myDaysOfWeek;
    RKCalendarLocalizedNamedAtomic myWeekName;
    RKLocale myLanguage;
};
