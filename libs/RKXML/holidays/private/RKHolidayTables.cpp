#include "private/RKHolidayTables.h"

#include "RKXMLParser.h"

#include <RKResourceFile.h>
#include <RKXMLLoader.h>

namespace {
const QString STR_COUNTRY = QStringLiteral("country");
const QString STR_NATIONWIDE = QStringLiteral("nationwide");
const QString STR_PROVINCE = QStringLiteral("province");
const QString STR_DAY = QStringLiteral("day");
const QString STR_NAME = QStringLiteral("name");
const QString STR_HONOR = QStringLiteral("honor");
const QString STR_ID = QStringLiteral("id");
const QString STR_DATE = QStringLiteral("date");
}

QFileInfo RKHolidayTables::holidayFile(const RKLocale& locale)
{
    return RKResourceFile(RKResourceHolidays, locale.name()).fileInfo(false, QString());
}

RKHolidayTables RKHolidayTables::read(const RKLocale& locale, const FileVisitor& visit)
{
    RKHolidayTables tables;
    const RKFileStamp stamp = RKFileStamp::of(holidayFile(locale));
    // A missing file is normal (a language without holidays): no loader warning for it.
    const QDomElement root = stamp.exists ? RKXMLLoader::loadDocumentElement(stamp.path) : QDomElement();
    for (QDomElement country = root.firstChildElement(STR_COUNTRY); !country.isNull();
         country = country.nextSiblingElement(STR_COUNTRY))
        tables.readCountry(country, locale);
    if (visit && !root.isNull())
        visit(locale, stamp, root);
    return tables;
}

void RKHolidayTables::readCountry(const QDomElement& country, const RKLocale& locale)
{
    readHonorings(country.firstChildElement(STR_NATIONWIDE), RKProvinceSpecification(locale, QString()));
    for (QDomElement province = country.firstChildElement(STR_PROVINCE); !province.isNull();
         province = province.nextSiblingElement(STR_PROVINCE)) {
        const QString name = province.attribute(STR_NAME);
        // Without a name the element would stand for the whole country and replace its days.
        if (name.isEmpty())
            continue;
        if (!myProvinces.contains(name))
            myProvinces.append(name);
        readHonorings(province, RKProvinceSpecification(locale, name));
    }
}

void RKHolidayTables::readHonorings(const QDomElement& parent, const RKProvinceSpecification& region)
{
    Region read;
    for (QDomElement day = parent.firstChildElement(STR_DAY); !day.isNull(); day = day.nextSiblingElement(STR_DAY)) {
        const QString name = RKXMLParser::attribute(day, STR_NAME, QString(), true);
        if (name.isEmpty())
            continue;
        const RKCalendariumHolidayType type(day.attribute(STR_HONOR));
        const RKCalendariumHolidayDayId id = RKXMLParser::intAttribute(day, STR_ID, RKCalendariumHolidayDayIdNone);
        if (id != RKCalendariumHolidayDayIdNone) {
            read.byId.insert(id, RKCalendariumHolidayDayPrototype(name, type, id));
            continue;
        }
        const QString pattern = day.attribute(STR_DATE);
        read.dated.append(RKCalendariumHolidayDayPrototype(name, type, pattern));
        read.rules.append(RKHolidayRuleDays::matchDatedPattern(pattern));
    }
    // A later "country" element's list replaces an earlier one of the same region.
    myRegions.insert(regionKey(region), read);
}

QString RKHolidayTables::regionKey(const RKProvinceSpecification& region)
{
    // The fields that operator== compares, exactly; '\n' occurs in none of them.
    // (RKProvinceSpecification's own hash is constant, too slow for every query.)
    const RKLocale locale = region.locale();
    return locale.language() + QLatin1Char('\n') + locale.country() + QLatin1Char('\n') + region.province();
}

RKHolidayTables::Regions RKHolidayTables::regionsOf(const RKCalendariumHolidayConfig& config) const
{
    Regions regions;
    const auto province = myRegions.constFind(regionKey(config.provinceSpecification()));
    if (province != myRegions.constEnd())
        regions.province = &province.value();
    const auto nation = myRegions.constFind(regionKey(RKProvinceSpecification(config.language(), QString())));
    if (nation != myRegions.constEnd())
        regions.nation = &nation.value();
    return regions;
}

RKCalendariumHolidayDayPrototype RKHolidayTables::prototypeIn(const Regions& regions, RKCalendariumHolidayDayId id)
{
    for (const Region* region : {regions.province, regions.nation}) {
        if (!region)
            continue;
        const auto found = region->byId.constFind(id);
        if (found != region->byId.constEnd())
            return found.value();
    }
    return RKCalendariumHolidayDayPrototype();
}

void RKHolidayTables::appendRuleDays(const Regions& regions, int year, bool skipUnmarked,
    const QVector<RKCalendariumHolidayDayId>& ids, RKCalendariumHolidayList& out)
{
    const QDate easter = RKHolidayRuleDays::easterSunday(year);
    for (RKCalendariumHolidayDayId id : ids) {
        const RKCalendariumHolidayDayPrototype found = prototypeIn(regions, id);
        if (skipUnmarked && found.type().toInt() == RKCalendariumHolidayTypeNoHoliday)
            continue;
        out.append(RKCalendariumHoliday(RKHolidayRuleDays::date(id, year, easter), found.description(), found.type()));
    }
}

void RKHolidayTables::appendDatedDays(const Region* region, int year, RKCalendariumHolidayList& out)
{
    if (!region)
        return;
    for (int n = 0; n < region->rules.size(); ++n) {
        const RKHolidayRuleDays::DatedRule& rule = region->rules.at(n);
        if (!rule.matched || (rule.year != 0 && rule.year != year))
            continue;
        const RKCalendariumHolidayDayPrototype& prototype = region->dated.at(n);
        out.append(RKCalendariumHoliday(QDate(year, rule.month, rule.day), prototype.description(), prototype.type()));
    }
}
