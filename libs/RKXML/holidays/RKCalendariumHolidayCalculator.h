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
#include <QObject>
#include <QSharedPointer>
#include <QStringList>

#include <memory>
#include <shared_mutex>

class RKHolidayTables;
struct RKVacationEntry;
class RKMoonPhaseFile;
class RKVacationFileCache;

/**
 * Public holidays, named days, school vacations and moon phases per year and
 * holiday configuration, from the holiday data files ("holidays/<locale>.xml",
 * one per calendar language) and the moon phase file.
 *
 * Thread safety: every query may run on any thread, also while another thread
 * runs reloadData(). A language's holiday file is read the first time a query
 * names that language (so a process that asks about one language parses one
 * file); its tables are a never-changed snapshot that a query takes at its start
 * and keeps to its end. reloadData() drops every snapshot, so a query sees the
 * old or the new data, never a mixture or freed tables. The vacation and moon
 * phase files are read again when they change on disk; their parsed forms are
 * kept under mutexes.
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

    /// The calendar languages (each has a province table, empty without a holiday file), sorted.
    QList<RKLocale> availableLanguages() const;
    /// The locale's provinces sorted locale-aware; empty for an unknown locale.
    QStringList availableProvinces(const RKLocale& locale) const;
    /// Empties the tables; each language's holiday file is read again when next asked for.
    void reloadData();

    /// A vacation this many days long (end minus start) or longer is logged as " is N days long.";
    /// summer vacations of eight weeks and more are real, so it is still used.
    static constexpr int LONG_VACATION_DAYS = 51;
    /// Longer than this (end minus start) no vacation in the shipped data is; data checks reject it.
    static constexpr int LONGEST_PLAUSIBLE_VACATION_DAYS = 120;

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

    /// The holiday tables of `locale`, read on first use (empty for a locale that is not a
    /// calendar language); the caller's copy stays valid across a reload.
    QSharedPointer<const RKHolidayTables> tables(const RKLocale& locale) const;
    /// With `named` the days carry the vacation's name and nothing is logged.
    static void appendVacationDays(const RKVacationEntry& entry, int year, RKCalendariumHolidayList& out, bool named = false);
    RKCalendariumHolidayList vacationDays(const RKCalendariumHolidayCacheKey& key, bool named) const;

    mutable std::shared_mutex myTablesLock;
    mutable QHash<RKLocale, QSharedPointer<const RKHolidayTables>> myTables;
    /// Counts reloads, so tables read before a reload are not kept after it.
    mutable quint64 myGeneration = 0;
    std::unique_ptr<RKVacationFileCache> myVacations;
    std::unique_ptr<RKMoonPhaseFile> myMoonPhases;
};
