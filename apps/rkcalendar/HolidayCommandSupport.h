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
 * year arguments (each failure prints what is valid; the caller returns ExitUsage), and
 * collecting the marked days of a year merged per date.
 */
namespace HolidayCommandSupport {

/// All marks of one date: the OR of the entries' types and their non-empty names in order.
struct MarkedDay {
    QDate date;
    RKCalendariumHolidayType type;
    QStringList names;
};

/// The features the tool draws, and the default of the page-making commands.
/// (Plain characters: commands register themselves during static initialisation.)
constexpr char ALL_FEATURES[] = "holidays,vacations,moonphases";

/// --locale, --province and --features (whose default is named in the help).
QList<QCommandLineOption> holidayOptions(const QString& defaultFeatures);
/// --province and --features alone, for commands whose --locale means more than holidays.
QList<QCommandLineOption> regionOptions(const QString& defaultFeatures);

/**
 * Parses `text` ("de_DE") as a locale that has a holiday data file. On failure writes
 * a message with the valid locales and returns false.
 */
bool parseHolidayLocale(const QString& text, RKLocale& locale, CommandContext& context);

/// An empty `text` means the whole country. Otherwise it must be one of the locale's provinces.
bool checkProvince(const RKLocale& locale, const QString& text, CommandContext& context);

/**
 * Comma-separated feature words, each one the tool acts on: "holidays", "vacations",
 * "moonphases" (any case). Words of the library's table that the tool ignores are refused.
 */
bool checkFeatures(const QString& text, CommandContext& context);

/// A whole year from 1583 (the first full Gregorian year) to 9999.
bool parseYear(const QString& option, const QString& text, int& year, CommandContext& context);

/// "YYYY-MM" from 1583-01 as the first day of that month.
bool parseMonth(const QString& text, QDate& first, CommandContext& context);

/// Language, province (empty: the nationwide days only) and features.
RKCalendariumHolidayConfig makeConfig(const RKLocale& locale, const QString& province, const QString& features);

/**
 * Reads --locale, --province and --features (default `defaultFeatures`) into `locale` and
 * `config`; on bad input prints what is valid and returns false.
 */
bool configFromOptions(CommandContext& context, const QString& defaultFeatures, RKLocale& locale,
    RKCalendariumHolidayConfig& config);

/**
 * Holidays (with school vacations when switched on) and moon phases of `year`, merged
 * per date and sorted by date. Entries of type 0 never appear.
 */
QList<MarkedDay> markedDaysOfYear(int year, const RKCalendariumHolidayConfig& config);

/// The type's keywords as the keyword table writes them ("free", "free, show", "full_moon").
QString typeKeywords(const RKCalendariumHolidayType& type);

/**
 * Warnings, one sentence each, for the years from `from` to `to` where the data does not
 * cover what `config` asks for: days written out for a span of years only (read from the
 * locale's file), moon phases, school vacations of the province, regional days a country
 * chooses year by year, and years whose Easter-based days follow the data's own Easter rule
 * instead of the Gregorian Easter. Empty when everything is covered.
 */
QStringList coverageWarnings(const RKLocale& locale, const RKCalendariumHolidayConfig& config, int from, int to);

/// Province name to the "title" attribute of its element in the locale's holiday file.
QHash<QString, QString> provinceTitles(const RKLocale& locale);

} // namespace HolidayCommandSupport
