#pragma once

#include "Command.h"

#include <RKCalendariumHoliday.h>
#include <RKCalendariumHolidayType.h>
#include <RKCalendariumHolidayConfig.h>
#include <RKLocale.h>

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTextStream>

/**
 * What the holiday commands share: checking the locale, province, feature and
 * year arguments (each failure prints what is valid and yields ExitUsage), and
 * collecting the marked days of a year merged per date.
 */
namespace HolidayCommandSupport {

/// All marks of one date: the OR of the entries' types and their non-empty names in order.
struct MarkedDay {
    QDate date;
    RKCalendariumHolidayType type;
    QStringList names;
};

/**
 * Parses `text` ("de_DE") as a locale that has a holiday data file. On failure writes
 * a message with the valid locales to `err` and returns false.
 */
bool parseHolidayLocale(const QString& text, RKLocale& locale, QTextStream& err);

/// An empty `text` means the whole country. Otherwise it must be one of the locale's provinces.
bool checkProvince(const RKLocale& locale, const QString& text, QTextStream& err);

/// Comma-separated feature words; every part must be a word of the feature table.
bool checkFeatures(const QString& text, QTextStream& err);

/// A whole year from 1583 (the first full Gregorian year) to 9999.
bool parseYear(const QString& option, const QString& text, int& year, QTextStream& err);

/// Language, province (empty: the nationwide days only) and features.
RKCalendariumHolidayConfig makeConfig(const RKLocale& locale, const QString& province, const QString& features);

/**
 * Reads --locale, --province and --features (default `defaultFeatures`) into `locale` and
 * `config`; on bad input prints what is valid and returns false.
 */
bool configFromOptions(const CommandOptions& options, const QString& defaultFeatures, QTextStream& err,
    RKLocale& locale, RKCalendariumHolidayConfig& config);

/**
 * Holidays (with school vacations when switched on) and moon phases of `year`, merged
 * per date and sorted by date. Entries of type 0 never appear.
 */
QList<MarkedDay> markedDaysOfYear(int year, const RKCalendariumHolidayConfig& config);

/// The type's keywords as the keyword table writes them ("free", "free, show", "full_moon").
QString typeKeywords(const RKCalendariumHolidayType& type);

/// Province name to the "title" attribute of its element in the locale's holiday file.
QHash<QString, QString> provinceTitles(const RKLocale& locale);

} // namespace HolidayCommandSupport
