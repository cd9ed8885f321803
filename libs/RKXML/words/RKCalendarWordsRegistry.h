#pragma once

#include "RKCalendarWords.h"
#include "rkxml_export.h"

#include <RKLocale.h>
#include <RKSingleton.h>

#include <QHash>
#include <QList>
#include <QMap>
#include <QSet>

/**
 * Process-wide source of calendar words, read once from
 * "international/CalendarLanguages.xml" and "international/CalendarWeekNames.xml".
 * A locale without a complete set of its own falls back to another country of
 * the same language (the first complete one in the languages file's order);
 * there is no other fall-back. Read-only after construction,
 * so look-ups may run concurrently from any thread.
 *
 * Every look-up copies a whole RKCalendarWords; take an RKCalendarDayNames
 * snapshot when many words of one locale are needed.
 */
class RKXML_EXPORT RKCalendarWordsRegistry : public RKSingleton<RKCalendarWordsRegistry>
{
    friend class RKSingleton<RKCalendarWordsRegistry>;

public:
    ~RKCalendarWordsRegistry() override = default;

    /// The locale's own complete words, else another country's of its language, else its own
    /// (possibly empty) entry, whose look-ups give "nn"/"unknown".
    RKCalendarWords words(const RKLocale& locale) const;
    QString dayNameShort(const RKLocale& locale, int day) const { return words(locale).shortDayOfWeek(day); }
    QString dayNameLong(const RKLocale& locale, int day) const { return words(locale).longDayOfWeek(day); }
    QString dayName(const RKLocale& locale, int day, bool shortForm) const;
    QString monthNameShort(const RKLocale& locale, int month) const { return words(locale).shortMonth(month); }
    QString monthNameLong(const RKLocale& locale, int month) const { return words(locale).longMonth(month); }
    /// Long names of the months in ascending order, joined with ", ".
    QString monthNamesLong(const RKLocale& locale, const QSet<int>& months) const;
    QString weekShort(const RKLocale& locale) const { return words(locale).shortWeek(); }
    QString weekLong(const RKLocale& locale) const { return words(locale).longWeek(); }

    /// Language and country of the application's locale.
    RKLocale defaultLanguage() const;
    /// 1..12 to the long month names of defaultLanguage().
    QMap<int, QString> createMonthMap() const;
    /// The languages file's locales, in file order (duplicates kept).
    QList<RKLocale> availalbleCalendarLanguages() const { return myLanguages; }

private:
    RKCalendarWordsRegistry();
    void initLanguages();
    void initWords();

    QHash<RKLocale, RKCalendarWords> myWords;
    QList<RKLocale> myLanguages;
};
