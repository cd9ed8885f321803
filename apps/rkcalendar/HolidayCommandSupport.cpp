#include "HolidayCommandSupport.h"

#include <RKCalendariumHolidayCacheKey.h>
#include <RKCalendariumFeatures.h>
#include <RKCalendariumHolidayCalculator.h>
#include <RKResourceFile.h>
#include <RKXMLLoader.h>

#include <QMap>
#include <QRegularExpression>

#include <algorithm>

namespace HolidayCommandSupport {

namespace {

// No holiday file names a province so: the calculator then falls back to the
// nationwide days for every look-up, and no province vacation matches.
const QString NATIONWIDE_ONLY = QStringLiteral("-");

QString joinLocales(const QList<RKLocale>& locales)
{
    QStringList names;
    for (const RKLocale& locale : locales)
        names << locale.name();
    return names.join(QStringLiteral(", "));
}

// The calculator lists every calendar language; only those with a holiday file have days.
QList<RKLocale> holidayLocales()
{
    QList<RKLocale> locales;
    for (const RKLocale& locale : RKCalendariumHolidayCalculator::instance().availableLanguages()) {
        if (RKResourceFile(RKResourceHolidays, locale.name()).fileInfo(false, QString()).exists())
            locales << locale;
    }
    return locales;
}

// The feature words the tool acts on.
const RKCalendariumFeaturesEnum TOOL_FEATURES[] = {RKCalendariumFeatureHolidays, RKCalendariumFeatureVacations,
    RKCalendariumFeatureMoonPhases};

// Countries whose files hold some regional days only for a span of years.
struct PartialCoverage {
    const char* country;
    int first;
    int last;
    const char* what;
};
const PartialCoverage PARTIAL_COVERAGE[] = {
    {"ES", 2020, 2026, "the regional days each community chooses year by year"},
};

// Easter Sunday of the Gregorian calendar (the anonymous algorithm of 1876).
QDate gregorianEaster(int year)
{
    const int a = year % 19, b = year / 100, c = year % 100, d = b / 4, e = b % 4;
    const int f = (b + 8) / 25, g = (b - f + 1) / 3, h = (19 * a + b - d - g + 15) % 30;
    const int i = c / 4, k = c % 4, l = (32 + 2 * e + 2 * i - h - k) % 7, m = (a + 11 * h + 22 * l) / 451;
    const int month = (h + l - 7 * m + 114) / 31;
    const int day = (h + l - 7 * m + 114) % 31 + 1;
    return QDate(year, month, day);
}

// The generator writes the days that are neither fixed nor Easter-based (nth weekdays,
// substitute and one-off days) out as dated days for these years only.
const int DATED_DAYS_FIRST_YEAR = 2000;
const int DATED_DAYS_LAST_YEAR = 2100;

QString yearList(const QList<int>& years)
{
    QStringList texts;
    for (int year : years)
        texts << QString::number(year);
    return texts.join(QStringLiteral(", "));
}

} // namespace

QStringList coverageWarnings(const RKLocale& locale, const RKCalendariumHolidayConfig& config, int from, int to)
{
    QStringList warnings;
    const RKCalendariumFeatures features = config.features();
    const RKCalendariumHolidayCalculator& calculator = RKCalendariumHolidayCalculator::instance();
    QList<int> noDated, noMoon, noVacations, partial, easterRule;
    const PartialCoverage* regional = nullptr;
    for (const PartialCoverage& coverage : PARTIAL_COVERAGE) {
        if (locale.country() == QLatin1String(coverage.country))
            regional = &coverage;
    }
    for (int year = from; year <= to; ++year) {
        const RKCalendariumHolidayCacheKey key(year, config);
        if (features.toInt() & RKCalendariumFeatureHolidays) {
            if (year < DATED_DAYS_FIRST_YEAR || year > DATED_DAYS_LAST_YEAR)
                noDated << year;
            if (regional && (year < regional->first || year > regional->last))
                partial << year;
            if (RKCalendariumHolidayCalculator::eastern(year) != gregorianEaster(year))
                easterRule << year;
        }
        if ((features.toInt() & RKCalendariumFeatureMoonPhases) && calculator.moonPhases(key).isEmpty())
            noMoon << year;
        if ((features.toInt() & RKCalendariumFeatureVacations) && calculator.schoolVacations(key).isEmpty())
            noVacations << year;
    }
    if (!noDated.isEmpty())
        warnings << QStringLiteral("days that are neither fixed nor Easter-based (such as nth weekdays and "
                                   "substitute days) are known only for %1-%2; they are missing in %3")
                        .arg(DATED_DAYS_FIRST_YEAR).arg(DATED_DAYS_LAST_YEAR).arg(yearList(noDated));
    if (!partial.isEmpty())
        warnings << QStringLiteral("the %1 data holds %2 only for %3-%4; they are missing in %5")
                        .arg(locale.name(), QLatin1String(regional->what)).arg(regional->first).arg(regional->last)
                        .arg(yearList(partial));
    if (!easterRule.isEmpty())
        warnings << QStringLiteral("Easter-based days in %1 follow the data's Easter rule, not the Gregorian Easter")
                        .arg(yearList(easterRule));
    if (!noMoon.isEmpty())
        warnings << QStringLiteral("no moon phases known for %1").arg(yearList(noMoon));
    if (!noVacations.isEmpty())
        warnings << QStringLiteral("no school vacations known for %1 in %2").arg(locale.name()).arg(yearList(noVacations));
    return warnings;
}

QList<QCommandLineOption> holidayOptions(const QString& defaultFeatures)
{
    return QList<QCommandLineOption>{valueOption(QStringLiteral("locale"),
               QStringLiteral("holiday locale, e.g. de_DE (required)"), QStringLiteral("locale"))}
        + regionOptions(defaultFeatures);
}

QList<QCommandLineOption> regionOptions(const QString& defaultFeatures)
{
    return {valueOption(QStringLiteral("province"),
            QStringLiteral("province code, e.g. BY (default: the nationwide days only)"), QStringLiteral("code")),
        valueOption(QStringLiteral("features"),
            QStringLiteral("comma-separated: holidays, vacations, moonphases (default: %1)").arg(defaultFeatures),
            QStringLiteral("list"))};
}

bool parseHolidayLocale(const QString& text, RKLocale& locale, CommandContext& context)
{
    const QList<RKLocale> known = holidayLocales();
    const RKLocale parsed = RKLocale::decodeName(text);
    if (parsed.isValid() && known.contains(parsed)) {
        locale = parsed;
        return true;
    }
    const QString what = text.isEmpty() ? QStringLiteral("--locale is required")
                                         : QStringLiteral("unknown locale \"%1\"").arg(text);
    context.warn(QStringLiteral("%1 (valid: %2)").arg(what, joinLocales(known)));
    return false;
}

bool checkProvince(const RKLocale& locale, const QString& text, CommandContext& context)
{
    if (text.isEmpty())
        return true;
    const QStringList provinces = RKCalendariumHolidayCalculator::instance().availableProvinces(locale);
    if (provinces.contains(text))
        return true;
    context.warn(QStringLiteral("unknown province \"%1\" for %2 (valid: %3)")
                     .arg(text, locale.name(),
                         provinces.isEmpty() ? QStringLiteral("none, the locale has nationwide days only")
                                             : provinces.join(QStringLiteral(", "))));
    return false;
}

bool checkFeatures(const QString& text, CommandContext& context)
{
    QStringList valid;
    for (RKCalendariumFeaturesEnum feature : TOOL_FEATURES)
        valid << RKCalendariumFeatures(feature).encodeCSV();
    const QStringList pieces = text.split(QLatin1Char(','));
    for (const QString& part : pieces) {
        if (valid.contains(part.trimmed(), Qt::CaseInsensitive))
            continue;
        context.warn(QStringLiteral("unknown feature \"%1\" (valid, comma-separated: %2)")
                         .arg(part.trimmed(), valid.join(QStringLiteral(", "))));
        return false;
    }
    return true;
}

bool parseYear(const QString& option, const QString& text, int& year, CommandContext& context)
{
    bool ok = false;
    const int value = text.trimmed().toInt(&ok, 10);
    if (ok && value >= 1583 && value <= 9999) {
        year = value;
        return true;
    }
    context.warn(QStringLiteral("--%1 \"%2\" is not a year (valid: 1583 to 9999)").arg(option, text));
    return false;
}

bool parseMonth(const QString& text, QDate& first, CommandContext& context)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{4})-(\\d{1,2})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (match.hasMatch()) {
        const int year = match.captured(1).toInt();
        const int month = match.captured(2).toInt();
        if (year >= 1583 && month >= 1 && month <= 12) {
            first = QDate(year, month, 1);
            return true;
        }
    }
    context.warn(QStringLiteral("\"%1\" is not a month (valid: YYYY-MM from 1583-01, e.g. 2026-12)").arg(text));
    return false;
}

RKCalendariumHolidayConfig makeConfig(const RKLocale& locale, const QString& province, const QString& features)
{
    RKCalendariumHolidayConfig config;
    config.setLanguage(locale);
    config.setProvince(province.isEmpty() ? NATIONWIDE_ONLY : province);
    config.setFeatures(RKCalendariumFeatures(features));
    return config;
}

QList<MarkedDay> markedDaysOfYear(int year, const RKCalendariumHolidayConfig& config)
{
    const RKCalendariumHolidayCalculator& calculator = RKCalendariumHolidayCalculator::instance();
    const RKCalendariumHolidayCacheKey key(year, config);
    RKCalendariumHolidayList all = calculator.holidaysOfYear(key);
    all.append(calculator.moonPhases(key));

    QMap<QDate, MarkedDay> byDate;
    for (const RKCalendariumHoliday& holiday : qAsConst(all)) {
        if (!holiday.isValid() || !holiday.date().isValid())
            continue;
        MarkedDay& day = byDate[holiday.date()];
        day.date = holiday.date();
        day.type |= holiday.type();
        if (!holiday.description().isEmpty() && !day.names.contains(holiday.description()))
            day.names << holiday.description();
    }
    return byDate.values();
}

QString typeKeywords(const RKCalendariumHolidayType& type)
{
    return type.encodeCSV();
}

QHash<QString, QString> provinceTitles(const RKLocale& locale)
{
    QHash<QString, QString> titles;
    const QFileInfo file = RKResourceFile(RKResourceHolidays, locale.name()).fileInfo(false, QString());
    if (!file.exists())
        return titles;
    const QDomElement root = RKXMLLoader::loadDocumentElement(file);
    for (QDomElement country = root.firstChildElement(QStringLiteral("country")); !country.isNull();
         country = country.nextSiblingElement(QStringLiteral("country"))) {
        for (QDomElement province = country.firstChildElement(QStringLiteral("province")); !province.isNull();
             province = province.nextSiblingElement(QStringLiteral("province"))) {
            const QString name = province.attribute(QStringLiteral("name"));
            if (!titles.contains(name))
                titles.insert(name, province.attribute(QStringLiteral("title")));
        }
    }
    return titles;
}

bool configFromOptions(CommandContext& context, const QString& defaultFeatures, RKLocale& locale,
    RKCalendariumHolidayConfig& config)
{
    if (!parseHolidayLocale(context.value(QStringLiteral("locale")), locale, context))
        return false;
    const QString province = context.value(QStringLiteral("province"));
    if (!checkProvince(locale, province, context))
        return false;
    const QString features = context.value(QStringLiteral("features"), defaultFeatures);
    if (!checkFeatures(features, context))
        return false;
    config = makeConfig(locale, province, features);
    return true;
}

} // namespace HolidayCommandSupport
