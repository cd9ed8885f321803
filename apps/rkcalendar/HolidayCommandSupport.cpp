#include "HolidayCommandSupport.h"

#include <RKCalendariumHolidayCacheKey.h>
#include <RKCalendariumFeatures.h>
#include <RKCalendariumHolidayCalculator.h>
#include <RKResourceFile.h>
#include <RKXMLLoader.h>

#include <QMap>

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

} // namespace

bool parseHolidayLocale(const QString& text, RKLocale& locale, QTextStream& err)
{
    const QList<RKLocale> known = holidayLocales();
    const RKLocale parsed = RKLocale::decodeName(text);
    if (parsed.isValid() && known.contains(parsed)) {
        locale = parsed;
        return true;
    }
    if (text.isEmpty())
        err << "rkcalendar: --locale is required";
    else
        err << "rkcalendar: unknown locale \"" << text << "\"";
    err << " (valid: " << joinLocales(known) << ")\n";
    return false;
}

bool checkProvince(const RKLocale& locale, const QString& text, QTextStream& err)
{
    if (text.isEmpty())
        return true;
    const QStringList provinces = RKCalendariumHolidayCalculator::instance().availableProvinces(locale);
    if (provinces.contains(text))
        return true;
    err << "rkcalendar: unknown province \"" << text << "\" for " << locale.name() << " (valid: "
        << (provinces.isEmpty() ? QStringLiteral("none, the locale has nationwide days only")
                                : provinces.join(QStringLiteral(", ")))
        << ")\n";
    return false;
}

bool checkFeatures(const QString& text, QTextStream& err)
{
    const QStringList pieces = text.split(QLatin1Char(','));
    for (const QString& part : pieces) {
        if (RKCalendariumFeatures(part).isValid())
            continue;
        const QStringList words = RKCalendariumFeatures(QString()).enumToStringTable().words();
        err << "rkcalendar: unknown feature \"" << part.trimmed() << "\" (valid, comma-separated: "
            << words.join(QStringLiteral(", ")) << ")\n";
        return false;
    }
    return true;
}

bool parseYear(const QString& option, const QString& text, int& year, QTextStream& err)
{
    bool ok = false;
    const int value = text.trimmed().toInt(&ok, 10);
    if (ok && value >= 1583 && value <= 9999) {
        year = value;
        return true;
    }
    err << "rkcalendar: --" << option << " \"" << text << "\" is not a year (valid: 1583 to 9999)\n";
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

bool configFromOptions(const CommandOptions& options, const QString& defaultFeatures, QTextStream& err,
    RKLocale& locale, RKCalendariumHolidayConfig& config)
{
    if (!parseHolidayLocale(options.value(QStringLiteral("locale")), locale, err))
        return false;
    const QString province = options.value(QStringLiteral("province"));
    if (!checkProvince(locale, province, err))
        return false;
    const QString features = options.value(QStringLiteral("features"), defaultFeatures);
    if (!checkFeatures(features, err))
        return false;
    config = makeConfig(locale, province, features);
    return true;
}

} // namespace HolidayCommandSupport
