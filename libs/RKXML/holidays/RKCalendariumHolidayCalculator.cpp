#include "RKCalendariumHolidayCalculator.h"

#include "private/RKHolidayRuleDays.h"
#include "private/RKHolidayTables.h"
#include "private/RKMoonPhaseFile.h"
#include "private/RKVacationFileCache.h"

#include "RKCalendarWordsRegistry.h"

#include <RKXMLLoader.h>

#include <QDebug>

#include <algorithm>
#include <mutex>

RKCalendariumHolidayCalculator::RKCalendariumHolidayCalculator()
    : QObject(nullptr)
    , myVacations(new RKVacationFileCache)
    , myMoonPhases(new RKMoonPhaseFile)
{
}

RKCalendariumHolidayCalculator::~RKCalendariumHolidayCalculator() = default;

QSharedPointer<const RKHolidayTables> RKCalendariumHolidayCalculator::tables(const RKLocale& locale) const
{
    quint64 generation;
    {
        std::shared_lock<std::shared_mutex> lock(myTablesLock);
        const auto found = myTables.constFind(locale);
        if (found != myTables.constEnd())
            return found.value();
        generation = myGeneration;
    }
    // Read outside the lock: queries about other languages go on meanwhile. Two threads
    // may read the same file at once; the first to finish is kept.
    QSharedPointer<const RKHolidayTables> fresh;
    if (RKSingleton<RKCalendarWordsRegistry>::instance().availalbleCalendarLanguages().contains(locale)) {
        RKVacationFileCache* vacations = myVacations.get();
        fresh.reset(new RKHolidayTables(RKHolidayTables::read(locale,
            // The vacations of the file just parsed, so the first query need not parse it again.
            [vacations](const RKLocale& read, const RKFileStamp& stamp, const QDomElement& root) {
                vacations->seed(read, stamp, root);
            })));
    } else {
        fresh.reset(new RKHolidayTables);
    }
    std::unique_lock<std::shared_mutex> lock(myTablesLock);
    if (generation != myGeneration)
        return fresh; // read across a reload: good for this query, not kept
    const auto found = myTables.constFind(locale);
    if (found != myTables.constEnd())
        return found.value();
    myTables.insert(locale, fresh);
    return fresh;
}

void RKCalendariumHolidayCalculator::reloadData()
{
    myVacations->clear();
    myMoonPhases->clear();
    QHash<RKLocale, QSharedPointer<const RKHolidayTables>> old;
    {
        std::unique_lock<std::shared_mutex> lock(myTablesLock);
        myTables.swap(old);
        ++myGeneration;
    }
    // `old` is freed here, or each of its tables by the last query still using it.
}

QDomElement RKCalendariumHolidayCalculator::loadCalendarEntries(const RKLocale& locale) const
{
    const QFileInfo info = RKHolidayTables::holidayFile(locale);
    if (!info.exists())
        return QDomElement();
    return RKXMLLoader::loadDocumentElement(info);
}

// ---- Holidays ----

QDate RKCalendariumHolidayCalculator::eastern(int year)
{
    return RKHolidayRuleDays::easterSunday(year);
}

QDate RKCalendariumHolidayCalculator::bussUndBettag(int year)
{
    return RKHolidayRuleDays::wednesdayBefore22November(year);
}

bool RKCalendariumHolidayCalculator::checkForHolidays(const RKCalendariumHolidayCacheKey& key) const
{
    const RKCalendariumHolidayConfig config = key.config();
    return config.hasFeatures(RKCalendariumFeatures(RKCalendariumFeatureHolidays))
        || config.hasFeatures(RKCalendariumFeatures(RKCalendariumFeatureHolidayColors));
}

RKCalendariumHolidayDayPrototype RKCalendariumHolidayCalculator::prototype(
    RKCalendariumHolidayDayId id, const RKCalendariumHolidayConfig& config) const
{
    const QSharedPointer<const RKHolidayTables> snapshot = tables(config.language());
    return RKHolidayTables::prototypeIn(snapshot->regionsOf(config), id);
}

QString RKCalendariumHolidayCalculator::description(RKCalendariumHolidayDayId id, const RKCalendariumHolidayConfig& config) const
{
    return prototype(id, config).description();
}

RKCalendariumHolidayType RKCalendariumHolidayCalculator::honoring(RKCalendariumHolidayDayId id, const RKCalendariumHolidayConfig& config) const
{
    return prototype(id, config).type();
}

RKCalendariumHoliday RKCalendariumHolidayCalculator::createHoliday(
    const RKCalendariumHolidayConfig& config, const QDate& date, RKCalendariumHolidayDayId id) const
{
    const RKCalendariumHolidayDayPrototype found = prototype(id, config);
    return RKCalendariumHoliday(date, found.description(), found.type());
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::christmassRelatedDays(const RKCalendariumHolidayCacheKey& key) const
{
    RKCalendariumHolidayList days;
    if (!checkForHolidays(key))
        return days;
    const QSharedPointer<const RKHolidayTables> snapshot = tables(key.config().language());
    RKHolidayTables::appendRuleDays(
        snapshot->regionsOf(key.config()), key.year(), false, RKHolidayRuleDays::christmasRelated(), days);
    return days;
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::easternRelatedDays(const RKCalendariumHolidayCacheKey& key) const
{
    RKCalendariumHolidayList days;
    if (!checkForHolidays(key))
        return days;
    const QSharedPointer<const RKHolidayTables> snapshot = tables(key.config().language());
    RKHolidayTables::appendRuleDays(
        snapshot->regionsOf(key.config()), key.year(), false, RKHolidayRuleDays::easterRelated(), days);
    return days;
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::nationalRelatedDays(const RKCalendariumHolidayCacheKey& key) const
{
    RKCalendariumHolidayList days;
    if (!checkForHolidays(key))
        return days;
    const QSharedPointer<const RKHolidayTables> snapshot = tables(key.config().language());
    const RKHolidayTables::Regions regions = snapshot->regionsOf(key.config());
    RKHolidayTables::appendDatedDays(regions.province, key.year(), days);
    RKHolidayTables::appendDatedDays(regions.nation, key.year(), days);
    return days;
}

QList<RKCalendariumHolidayDayPrototype> RKCalendariumHolidayCalculator::allNationalDays(const RKCalendariumHolidayConfig& config) const
{
    const QSharedPointer<const RKHolidayTables> snapshot = tables(config.language());
    const RKHolidayTables::Regions regions = snapshot->regionsOf(config);
    QList<RKCalendariumHolidayDayPrototype> all;
    if (regions.province)
        all += regions.province->dated;
    if (regions.nation)
        all += regions.nation->dated;
    return all;
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::holidaysOfYear(const RKCalendariumHolidayCacheKey& key) const
{
    // The same days as schoolVacations + christmassRelatedDays + easternRelatedDays +
    // nationalRelatedDays with type 0 removed, built in one pass from one snapshot.
    RKCalendariumHolidayList days = schoolVacations(key);
    if (checkForHolidays(key)) {
        const QSharedPointer<const RKHolidayTables> snapshot = tables(key.config().language());
        const RKHolidayTables::Regions regions = snapshot->regionsOf(key.config());
        const int year = key.year();
        RKHolidayTables::appendRuleDays(regions, year, true, RKHolidayRuleDays::christmasRelated(), days);
        RKHolidayTables::appendRuleDays(regions, year, true, RKHolidayRuleDays::easterRelated(), days);
        RKHolidayTables::appendDatedDays(regions.province, year, days);
        RKHolidayTables::appendDatedDays(regions.nation, year, days);
    }
    return days.filterAway(RKCalendariumHolidayType()).filterAwayDoubles();
}

QList<RKLocale> RKCalendariumHolidayCalculator::availableLanguages() const
{
    QList<RKLocale> languages = RKSingleton<RKCalendarWordsRegistry>::instance().availalbleCalendarLanguages();
    std::sort(languages.begin(), languages.end());
    return languages;
}

QStringList RKCalendariumHolidayCalculator::availableProvinces(const RKLocale& locale) const
{
    QStringList provinces = tables(locale)->provinces();
    std::sort(provinces.begin(), provinces.end(),
        [](const QString& a, const QString& b) { return QString::localeAwareCompare(a, b) < 0; });
    return provinces;
}

// ---- School vacations ----

void RKCalendariumHolidayCalculator::appendVacationDays(const RKVacationEntry& entry, int year, RKCalendariumHolidayList& out,
    bool named)
{
    if (entry.start.isValid() && entry.end.isValid() && entry.start <= entry.end) {
        const qint64 days = entry.start.daysTo(entry.end);
        if (days >= LONG_VACATION_DAYS && !named)
            qWarning() << entry.name << " is " << days << "days long.";
        // Only the days of `year`: a vacation across New Year counts in both years.
        const QDate from = std::max(entry.start, QDate(year, 1, 1));
        const QDate to = std::min(entry.end, QDate(year, 12, 31));
        for (QDate day = from; day.isValid() && day <= to; day = day.addDays(1))
            out.append(RKCalendariumHoliday(day, named ? entry.name : QString(),
                RKCalendariumHolidayType(RKCalendariumHolidayTypeSchool)));
        return;
    }
    if (named)
        return;
    // Entries of the data template that were never filled in.
    if (entry.startText == QLatin1String("2010-") || entry.startText == QLatin1String("2011-"))
        return;
    qWarning() << "Something is wrong with " << entry.name << "; from " << entry.startText << " to " << entry.endText;
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::readSchoolVacations(const QDomElement& parent, int year) const
{
    RKCalendariumHolidayList days;
    for (const RKVacationEntry& entry : RKVacationEntry::readAll(parent))
        appendVacationDays(entry, year, days, false);
    return days;
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::schoolVacations(const RKCalendariumHolidayCacheKey& key) const
{
    return vacationDays(key, false);
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::namedSchoolVacations(const RKCalendariumHolidayCacheKey& key) const
{
    return vacationDays(key, true);
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::vacationDays(const RKCalendariumHolidayCacheKey& key, bool named) const
{
    RKCalendariumHolidayList days;
    const RKCalendariumHolidayConfig config = key.config();
    if (!config.hasFeatures(RKCalendariumFeatures(RKCalendariumFeatureVacations)))
        return days;
    // Reading the language's tables seeds the vacation cache, so the file is parsed once for both.
    tables(config.language());
    const QSharedPointer<const RKVacationFileCache::File> file = myVacations->file(config.language());
    const QString province = config.province();
    const int year = key.year();
    for (const RKVacationFileCache::Country& country : file->countries) {
        for (const RKVacationEntry& entry : country.nationwide)
            appendVacationDays(entry, year, days, named);
        for (const RKVacationFileCache::Province& region : country.provinces) {
            if (region.name != province)
                continue;
            for (const RKVacationEntry& entry : region.vacations)
                appendVacationDays(entry, year, days, named);
        }
    }
    return days;
}

// ---- Moon phases ----

RKCalendariumHolidayList RKCalendariumHolidayCalculator::moonPhases(const RKCalendariumHolidayCacheKey& key) const
{
    if (!key.config().hasFeatures(RKCalendariumFeatures(RKCalendariumFeatureMoonPhases)))
        return RKCalendariumHolidayList();
    return myMoonPhases->phasesOfYear(key.year());
}

int RKCalendariumHolidayCalculator::moonPhase(const QDate& date) const
{
    return RKMoonPhaseFile::moonAge(date);
}
