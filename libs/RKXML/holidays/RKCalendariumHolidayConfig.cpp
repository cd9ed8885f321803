#include "RKCalendariumHolidayConfig.h"

#include "RKCalendarWordsRegistry.h"
#include "RKCalendariumHolidayCalculator.h"
#include "RKXMLBuilder.h"
#include "RKXMLParser.h"

#include <QHash>

namespace {
const QString STR_HOLIDAYS = QStringLiteral("holidays");
const QString STR_LANGUAGE = QStringLiteral("language");
const QString STR_PROVINCE = QStringLiteral("province");
const QString STR_FEATURES = QStringLiteral("features");

/// The older boolean form: each switch sets or clears one flag, in this order.
struct LegacySwitch {
    const char* key;
    bool defaultValue;
    RKCalendariumFeaturesEnum flag;
};
const LegacySwitch LEGACY_SWITCHES[] = {
    {"showHolidays", true, RKCalendariumFeatureHolidays},
    // One switch once governed both the marks and their colouring.
    {"showHolidays", true, RKCalendariumFeatureHolidayColors},
    {"showVacations", false, RKCalendariumFeatureVacations},
    {"showMoonPhases", false, RKCalendariumFeatureMoonPhases},
    {"showEvents", true, RKCalendariumFeaturePersonalEntries},
};
}

RKCalendariumHolidayConfigImpl::RKCalendariumHolidayConfigImpl()
    : language(RKSingleton<RKCalendarWordsRegistry>::instance().defaultLanguage())
{
    const QStringList provinces = RKSingleton<RKCalendariumHolidayCalculator>::instance().availableProvinces(language);
    if (!provinces.isEmpty())
        province = provinces.first();
}

const QSharedDataPointer<RKCalendariumHolidayConfigImpl>& RKCalendariumHolidayConfig::nullImpl()
{
    static const QSharedDataPointer<RKCalendariumHolidayConfigImpl> shared(new RKCalendariumHolidayConfigImpl());
    return shared;
}

RKCalendariumHolidayConfig::RKCalendariumHolidayConfig()
    : d(nullImpl())
{
}

const RKCalendariumHolidayConfigImpl& RKCalendariumHolidayConfig::impl() const
{
    // Only a moved-from value has no state; it reads like a default one.
    return d ? *d.constData() : *nullImpl().constData();
}

RKCalendariumHolidayConfigImpl& RKCalendariumHolidayConfig::writableImpl()
{
    if (!d)
        d = nullImpl();
    return *d; // detaches from the shared state
}

RKCalendariumHolidayConfig RKCalendariumHolidayConfig::withEverythingEnabled(const RKCalendariumHolidayConfig& base)
{
    RKCalendariumHolidayConfig result(base);
    result.setFeatures(RKCalendariumFeatures(RKCalendariumFeaturesEverything));
    return result;
}

QString RKCalendariumHolidayConfig::province() const
{
    return impl().province;
}

void RKCalendariumHolidayConfig::setProvince(const QString& province)
{
    if (province.isEmpty())
        return;
    writableImpl().province = province;
}

RKLocale RKCalendariumHolidayConfig::language() const
{
    return impl().language;
}

void RKCalendariumHolidayConfig::setLanguage(const RKLocale& language)
{
    writableImpl().language = language;
}

RKProvinceSpecification RKCalendariumHolidayConfig::provinceSpecification() const
{
    return RKProvinceSpecification(impl().language, impl().province);
}

RKCalendariumFeatures RKCalendariumHolidayConfig::features() const
{
    return impl().features;
}

void RKCalendariumHolidayConfig::setFeatures(const RKCalendariumFeatures& features)
{
    writableImpl().features = features;
}

bool RKCalendariumHolidayConfig::setFeature(const RKCalendariumFeatures& feature, bool on)
{
    RKCalendariumFeatures& features = writableImpl().features;
    const int before = features.toInt();
    if (on)
        features.expandTo(feature);
    else
        features.exclude(feature);
    return features.toInt() != before;
}

void RKCalendariumHolidayConfig::removeFeatures(const RKCalendariumFeatures& features)
{
    writableImpl().features.exclude(features);
}

bool RKCalendariumHolidayConfig::hasFeatures(const RKCalendariumFeatures& features) const
{
    return (impl().features.toInt() & features.toInt()) == features.toInt();
}

bool RKCalendariumHolidayConfig::operator==(const RKCalendariumHolidayConfig& other) const
{
    const RKCalendariumHolidayConfigImpl& mine = impl();
    const RKCalendariumHolidayConfigImpl& theirs = other.impl();
    if (&mine == &theirs)
        return true;
    return mine.language == theirs.language && mine.province == theirs.province
        && mine.features.toInt() == theirs.features.toInt();
}

uint RKCalendariumHolidayConfig::hashKey() const
{
    const RKCalendariumHolidayConfigImpl& state = impl();
    return qHash(state.language) ^ qHash(state.province, 0) ^ static_cast<uint>(state.features.toInt());
}

void RKCalendariumHolidayConfig::writeToXML(QDomElement& parent) const
{
    QDomElement element = RKXMLBuilder::buildDomElement(parent, STR_HOLIDAYS);
    RKXMLBuilder::addAttribute(element, STR_LANGUAGE, impl().language.name());
    RKXMLBuilder::addAttribute(element, STR_PROVINCE, impl().province);
    RKXMLBuilder::addAttribute(element, STR_FEATURES, impl().features.encodeCSV());
}

void RKCalendariumHolidayConfig::readFromXML(const QDomElement& parent)
{
    const QDomElement element = parent.firstChildElement(STR_HOLIDAYS);
    if (element.isNull())
        return;
    const QString language = RKXMLParser::attribute(element, STR_LANGUAGE, QString(), true);
    if (!language.isEmpty())
        setLanguage(RKLocale::decodeName(language));
    setProvince(RKXMLParser::attribute(element, STR_PROVINCE, QString(), true));
    if (element.hasAttribute(STR_FEATURES)) {
        setFeatures(RKCalendariumFeatures(element.attribute(STR_FEATURES)));
        return;
    }
    for (const LegacySwitch& legacy : LEGACY_SWITCHES) {
        const bool on = RKXMLParser::boolAttribute(element, QLatin1String(legacy.key), legacy.defaultValue);
        setFeature(RKCalendariumFeatures(legacy.flag), on);
    }
}
