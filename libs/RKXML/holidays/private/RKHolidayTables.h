#pragma once

#include "RKCalendariumHolidayConfig.h"
#include "RKCalendariumHolidayDayPrototype.h"
#include "RKCalendariumHolidayList.h"
#include "RKProvinceSpecification.h"
#include "private/RKFileStamp.h"
#include "private/RKHolidayRuleDays.h"

#include <RKLocale.h>

#include <QDomElement>
#include <QFileInfo>
#include <QHash>
#include <QList>
#include <QMap>
#include <QStringList>
#include <QVector>

#include <functional>

/**
 * The holiday tables of one calendar language, as read from its holiday data file:
 * per region (the locale with a province, or with none for the whole country) the
 * days computed by rule by id and the days on written dates in file order, and the
 * province names in file order.
 *
 * Never changed once read, so one instance may be read from any number of threads.
 * The calculator reads a language's tables the first time it is asked about that
 * language and drops them all when it reloads; readers keep the instance they
 * started with.
 */
class RKHolidayTables
{
public:
    struct Region {
        QMap<RKCalendariumHolidayDayId, RKCalendariumHolidayDayPrototype> byId;
        QList<RKCalendariumHolidayDayPrototype> dated;
        QVector<RKHolidayRuleDays::DatedRule> rules; ///< parallel to `dated`
    };
    /// A configuration's province and country; either may be null. Valid while the tables live.
    struct Regions {
        const Region* province = nullptr;
        const Region* nation = nullptr;
    };
    /// Called for each holiday file read, with the file's stamp taken before it was read (so a
    /// change during the read shows as a newer stamp later) and its document element.
    using FileVisitor = std::function<void(const RKLocale&, const RKFileStamp&, const QDomElement&)>;

    /// The holiday file of the locale ("holidays/<locale name>.xml" among the resources).
    static QFileInfo holidayFile(const RKLocale& locale);
    /// Reads the file of `locale`; a missing file gives empty tables. Costs one parse of the file.
    static RKHolidayTables read(const RKLocale& locale, const FileVisitor& visit);

    Regions regionsOf(const RKCalendariumHolidayConfig& config) const;
    /// The province's prototype of `id`, else the country's, else a default prototype.
    static RKCalendariumHolidayDayPrototype prototypeIn(const Regions& regions, RKCalendariumHolidayDayId id);
    /// Appends the rule days `ids` of `year`; with `skipUnmarked`, those of type 0 are left out.
    static void appendRuleDays(const Regions& regions, int year, bool skipUnmarked,
        const QVector<RKCalendariumHolidayDayId>& ids, RKCalendariumHolidayList& out);
    /// Appends the region's dated days that fall in `year` (all when the pattern names no year).
    static void appendDatedDays(const Region* region, int year, RKCalendariumHolidayList& out);

    /// In file order.
    QStringList provinces() const { return myProvinces; }

private:
    void readCountry(const QDomElement& country, const RKLocale& locale);
    void readHonorings(const QDomElement& parent, const RKProvinceSpecification& region);
    static QString regionKey(const RKProvinceSpecification& region);

    QHash<QString, Region> myRegions;
    QStringList myProvinces;
};
