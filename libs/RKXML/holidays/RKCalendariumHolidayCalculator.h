#pragma once

#include "RKCalendariumHolidayCacheKey.h"
#include "RKCalendariumHolidayConfig.h"
#include "RKCalendariumHolidayDayPrototype.h"
#include "RKCalendariumHolidayList.h"
#include "RKProvinceSpecification.h"
#include "rkxml_export.h"

#include <RKLocale.h>
#include <RKSingleton.h>

#include <QDate>
#include <QDomElement>
#include <QHash>
#include <QList>
#include <QMap>
#include <QMutex>
#include <QObject>
#include <QSharedPointer>
#include <QStringList>
#include <QVector>

/**
 * Public holidays, named days, school vacations and moon phases per year and
 * holiday configuration, from the holiday data files ("holidays/<locale>.xml",
 * one per calendar language) and the moon phase file.
 *
 * The holiday tables are read in the constructor and by reloadData(), and are
 * read without locks otherwise: reloadData() must not run while another thread
 * computes. The vacation and moon phase files are read again when they change
 * on disk; their parsed form is kept per file under a mutex, so those queries
 * may run from any thread.
 *
 * Days computed by rule are named by RKCalendariumHolidayDayId:
 * 1 = 6 Jan, 2 = Easter-3, 3 = Easter-2, 4 = Easter, 5 = Easter+1, 6 = 1 May,
 * 7 = Easter+39, 8 = Easter+49, 9 = Easter+50, 10 = Easter+60, 11 = 15 Aug,
 * 12 = 31 Oct, 13 = 1 Nov, 14 = the Wednesday on or before 22 Nov, 15 = 24 Dec,
 * 16 = 25 Dec, 17 = 26 Dec, 18 = 31 Dec, 19 = 1 Jan, 20 = Easter-48,
 * 21 = Easter-46, 22 = Easter-7.
 */
class RKXML_EXPORT RKCalendariumHolidayCalculator : public QObject, public RKSingleton<RKCalendariumHolidayCalculator>
{
    Q_OBJECT
    friend class RKSingleton<RKCalendariumHolidayCalculator>;

public:
    ~RKCalendariumHolidayCalculator() override;

    /// School vacations, then the rule days, then the dated days; type 0 and repeated entries removed.
    RKCalendariumHolidayList holidaysOfYear(const RKCalendariumHolidayCacheKey& key) const;
    /// Days of the school vacations of the year (type school, empty description); needs the vacations feature.
    RKCalendariumHolidayList schoolVacations(const RKCalendariumHolidayCacheKey& key) const;
    /// The days of schoolVacations(key), each described by its vacation's "name"; logs nothing.
    RKCalendariumHolidayList namedSchoolVacations(const RKCalendariumHolidayCacheKey& key) const;
    /// The days of the year of every "vacation" child of `parent`; bad entries are logged and skipped.
    RKCalendariumHolidayList readSchoolVacations(const QDomElement& parent, int year) const;
    /// The days of the four principal moon phases of the year; needs the moonphases feature.
    RKCalendariumHolidayList moonPhases(const RKCalendariumHolidayCacheKey& key) const;
    /// The moon's age in days (0..29) from a mean new-moon series; no file involved.
    int moonPhase(const QDate& date) const;

    /// Locales that have a province table, sorted.
    QList<RKLocale> availableLanguages() const;
    /// The locale's provinces sorted locale-aware; empty for an unknown locale.
    QStringList availableProvinces(const RKLocale& locale) const;
    /// Empties the tables and reads every holiday file again.
    void reloadData();

    /// Easter Sunday as this library computes it (one week late in some years, e.g. 1954 and 2049).
    static QDate eastern(int year);
    /// The Wednesday on or before 22 November.
    static QDate bussUndBettag(int year);

    /// True when the configuration shows holidays or holiday colours.
    bool checkForHolidays(const RKCalendariumHolidayCacheKey& key) const;
    /// The province's prototype of `id`, else the nationwide one, else a default prototype.
    RKCalendariumHolidayDayPrototype prototype(RKCalendariumHolidayDayId id, const RKCalendariumHolidayConfig& config) const;
    QString description(RKCalendariumHolidayDayId id, const RKCalendariumHolidayConfig& config) const;
    RKCalendariumHolidayType honoring(RKCalendariumHolidayDayId id, const RKCalendariumHolidayConfig& config) const;
    RKCalendariumHoliday createHoliday(const RKCalendariumHolidayConfig& config, const QDate& date, RKCalendariumHolidayDayId id) const;

    /// Ids 19, 1, 6, 12, 13, 14, 15, 16, 17, 18 (type 0 entries included).
    RKCalendariumHolidayList christmassRelatedDays(const RKCalendariumHolidayCacheKey& key) const;
    /// Ids 20, 21, 22, 2, 3, 4, 5, 7, 8, 9, 10, 11 (type 0 entries included).
    RKCalendariumHolidayList easternRelatedDays(const RKCalendariumHolidayCacheKey& key) const;
    /// The dated days of the province and of the whole country that fall in the key's year.
    RKCalendariumHolidayList nationalRelatedDays(const RKCalendariumHolidayCacheKey& key) const;
    /// The dated prototypes of the province followed by those of the whole country.
    QList<RKCalendariumHolidayDayPrototype> allNationalDays(const RKCalendariumHolidayConfig& config) const;

    /// The document element of the locale's holiday file; null (without a message) when there is none.
    QDomElement loadCalendarEntries(const RKLocale& locale) const;

private:
    RKCalendariumHolidayCalculator();

    /// A dated day's pattern, matched once when the file is read.
    struct DatedRule {
        bool matched = false;
        int year = 0;
        int month = 0;
        int day = 0;
    };
    /// Derived look-up form of one region's two tables.
    struct RegionIndex {
        QMap<RKCalendariumHolidayDayId, RKCalendariumHolidayDayPrototype> byId;
        QList<RKCalendariumHolidayDayPrototype> dated;
        QVector<DatedRule> rules;
    };
    struct Regions {
        const RegionIndex* province = nullptr;
        const RegionIndex* nation = nullptr;
    };
    struct VacationEntry;
    struct VacationFile;
    struct MoonFile;

    void readProvincesAndCountries();
    void readHonorings(const QDomElement& parent, const RKProvinceSpecification& region);
    void rebuildIndex();
    static QString regionKey(const RKProvinceSpecification& region);
    Regions regionsOf(const RKCalendariumHolidayConfig& config) const;
    static RKCalendariumHolidayDayPrototype prototypeIn(const Regions& regions, RKCalendariumHolidayDayId id);
    static void appendRuleDays(const Regions& regions, int year, bool skipUnmarked, RKCalendariumHolidayList& out,
        const RKCalendariumHolidayDayId* ids, int count, const QDate& easter);
    static void appendDatedDays(const RegionIndex* region, int year, RKCalendariumHolidayList& out);
    static DatedRule matchDatedPattern(const QString& pattern);
    /// With `named` the days carry the vacation's name and nothing is logged.
    static void appendVacationDays(const VacationEntry& entry, int year, RKCalendariumHolidayList& out, bool named = false);
    RKCalendariumHolidayList vacationDays(const RKCalendariumHolidayCacheKey& key, bool named) const;
    QSharedPointer<const VacationFile> vacationFile(const RKLocale& locale) const;
    static QSharedPointer<const VacationFile> parseVacationFile(const QDomElement& root);
    QSharedPointer<const MoonFile> moonFile() const;

    QHash<RKProvinceSpecification, QMap<RKCalendariumHolidayDayId, RKCalendariumHolidayDayPrototype>> myPrototypesById;
    QHash<RKProvinceSpecification, QList<RKCalendariumHolidayDayPrototype>> myDatedPrototypes;
    QHash<RKLocale, QStringList> myProvinces;
    QHash<QString, RegionIndex> myRegionIndex;

    mutable QMutex myFileMutex;
    mutable QHash<QString, QSharedPointer<const VacationFile>> myVacationFiles;
    mutable QSharedPointer<const MoonFile> myMoonFile;
};
