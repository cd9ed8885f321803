#include "RKCalendariumHolidayCalculator.h"

#include "RKCalendarWordsRegistry.h"
#include "RKXMLParser.h"

#include <RKResourceFile.h>
#include <RKXMLLoader.h>

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <qplatformdefs.h>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {
const QString STR_COUNTRY = QStringLiteral("country");
const QString STR_NATIONWIDE = QStringLiteral("nationwide");
const QString STR_PROVINCE = QStringLiteral("province");
const QString STR_DAY = QStringLiteral("day");
const QString STR_NAME = QStringLiteral("name");
const QString STR_HONOR = QStringLiteral("honor");
const QString STR_ID = QStringLiteral("id");
const QString STR_DATE = QStringLiteral("date");
const QString STR_VACATION = QStringLiteral("vacation");
const QString STR_START = QStringLiteral("start");
const QString STR_END = QStringLiteral("end");
const QString STR_COUNT = QStringLiteral("count");

/// How the date of a rule day is found.
enum class RuleKind { Fixed, EasterOffset, WednesdayBefore22November };

struct RuleDay {
    RuleKind kind;
    int month;
    int day;        // of Fixed days
    int easterDays; // of EasterOffset days
};

/// Indexed by RKCalendariumHolidayDayId; entry 0 is unused.
const RuleDay RULE_DAYS[] = {
    {RuleKind::Fixed, 0, 0, 0},
    {RuleKind::Fixed, 1, 6, 0},          // 1
    {RuleKind::EasterOffset, 0, 0, -3},  // 2
    {RuleKind::EasterOffset, 0, 0, -2},  // 3
    {RuleKind::EasterOffset, 0, 0, 0},   // 4
    {RuleKind::EasterOffset, 0, 0, 1},   // 5
    {RuleKind::Fixed, 5, 1, 0},          // 6
    {RuleKind::EasterOffset, 0, 0, 39},  // 7
    {RuleKind::EasterOffset, 0, 0, 49},  // 8
    {RuleKind::EasterOffset, 0, 0, 50},  // 9
    {RuleKind::EasterOffset, 0, 0, 60},  // 10
    {RuleKind::Fixed, 8, 15, 0},         // 11
    {RuleKind::Fixed, 10, 31, 0},        // 12
    {RuleKind::Fixed, 11, 1, 0},         // 13
    {RuleKind::WednesdayBefore22November, 0, 0, 0}, // 14
    {RuleKind::Fixed, 12, 24, 0},        // 15
    {RuleKind::Fixed, 12, 25, 0},        // 16
    {RuleKind::Fixed, 12, 26, 0},        // 17
    {RuleKind::Fixed, 12, 31, 0},        // 18
    {RuleKind::Fixed, 1, 1, 0},          // 19
    {RuleKind::EasterOffset, 0, 0, -48}, // 20
    {RuleKind::EasterOffset, 0, 0, -46}, // 21
    {RuleKind::EasterOffset, 0, 0, -7},  // 22
};

const RKCalendariumHolidayDayId CHRISTMAS_RELATED[] = {19, 1, 6, 12, 13, 14, 15, 16, 17, 18};
const RKCalendariumHolidayDayId EASTER_RELATED[] = {20, 21, 22, 2, 3, 4, 5, 7, 8, 9, 10, 11};

QDate ruleDate(RKCalendariumHolidayDayId id, int year, const QDate& easter)
{
    const RuleDay& rule = RULE_DAYS[id];
    switch (rule.kind) {
    case RuleKind::Fixed:
        return QDate(year, rule.month, rule.day);
    case RuleKind::EasterOffset:
        return easter.addDays(rule.easterDays);
    case RuleKind::WednesdayBefore22November:
        return RKCalendariumHolidayCalculator::bussUndBettag(year);
    }
    return QDate();
}

/**
 * What identifies one state of a file on disk: modification time, size and
 * inode from one stat() call. QFileInfo's times go through local-time
 * conversions that cost tens of microseconds per query; this is asked on every
 * vacation and moon phase query, so it must stay cheap.
 */
struct FileStamp {
    QString path;
    bool exists = false;
    qint64 modifiedSeconds = 0;
    qint64 modifiedNanoseconds = 0;
    qint64 size = -1;
    quint64 inode = 0;

    static FileStamp of(const QFileInfo& info)
    {
        FileStamp stamp;
        stamp.path = info.filePath().isEmpty() ? QString() : info.absoluteFilePath();
        if (stamp.path.isEmpty())
            return stamp;
        QT_STATBUF buffer;
        if (QT_STAT(QFile::encodeName(stamp.path).constData(), &buffer) != 0 || (buffer.st_mode & S_IFMT) != S_IFREG)
            return stamp;
        stamp.exists = true;
        stamp.modifiedSeconds = static_cast<qint64>(buffer.st_mtime);
#if defined(Q_OS_LINUX)
        stamp.modifiedNanoseconds = static_cast<qint64>(buffer.st_mtim.tv_nsec);
#endif
        stamp.size = static_cast<qint64>(buffer.st_size);
        stamp.inode = static_cast<quint64>(buffer.st_ino);
        return stamp;
    }
    bool operator==(const FileStamp& other) const
    {
        return path == other.path && exists == other.exists && modifiedSeconds == other.modifiedSeconds
            && modifiedNanoseconds == other.modifiedNanoseconds && size == other.size && inode == other.inode;
    }
};

QFileInfo holidayFileInfo(const RKLocale& locale)
{
    return RKResourceFile(RKResourceHolidays, locale.name()).fileInfo(false, QString());
}
}

struct RKCalendariumHolidayCalculator::VacationEntry {
    QString startText;
    QString endText;
    QString name;
    QDate start;
    QDate end;
};

struct RKCalendariumHolidayCalculator::VacationFile {
    struct Province {
        QString name;
        QVector<VacationEntry> vacations;
    };
    struct Country {
        QVector<VacationEntry> nationwide;
        QVector<Province> provinces;
    };
    FileStamp stamp;
    QVector<Country> countries;
};

struct RKCalendariumHolidayCalculator::MoonFile {
    struct Day {
        bool matched = false;
        int month = 0;
        int day = 0;
    };
    struct Year {
        int start = 0;
        QVector<Day> days;
    };
    FileStamp stamp;
    /// Year elements by their "count", in file order.
    QHash<int, QVector<Year>> years;
};

RKCalendariumHolidayCalculator::RKCalendariumHolidayCalculator()
    : QObject(nullptr)
{
    readProvincesAndCountries();
}

RKCalendariumHolidayCalculator::~RKCalendariumHolidayCalculator() = default;

// ---- Reading the holiday files ----

QDomElement RKCalendariumHolidayCalculator::loadCalendarEntries(const RKLocale& locale) const
{
    const QFileInfo info = holidayFileInfo(locale);
    if (!info.exists())
        return QDomElement();
    return RKXMLLoader::loadDocumentElement(info);
}

void RKCalendariumHolidayCalculator::readProvincesAndCountries()
{
    const QList<RKLocale> languages = RKSingleton<RKCalendarWordsRegistry>::instance().availalbleCalendarLanguages();
    for (const RKLocale& locale : languages) {
        const QFileInfo info = holidayFileInfo(locale);
        const QDomElement root = info.exists() ? RKXMLLoader::loadDocumentElement(info) : QDomElement();
        QStringList provinces;
        for (QDomElement country = root.firstChildElement(STR_COUNTRY); !country.isNull();
             country = country.nextSiblingElement(STR_COUNTRY)) {
            readHonorings(country.firstChildElement(STR_NATIONWIDE), RKProvinceSpecification(locale, QString()));
            for (QDomElement province = country.firstChildElement(STR_PROVINCE); !province.isNull();
                 province = province.nextSiblingElement(STR_PROVINCE)) {
                const QString name = province.attribute(STR_NAME);
                // Without a name the element would stand for the whole country and replace its days.
                if (name.isEmpty())
                    continue;
                if (!provinces.contains(name))
                    provinces.append(name);
                readHonorings(province, RKProvinceSpecification(locale, name));
            }
        }
        myProvinces.insert(locale, provinces);
        // The vacations of the file just parsed, so the first query need not parse it again.
        if (!root.isNull()) {
            auto parsed = parseVacationFile(root);
            const_cast<VacationFile*>(parsed.data())->stamp = FileStamp::of(info);
            QMutexLocker lock(&myFileMutex);
            myVacationFiles.insert(locale.name(), parsed);
        }
    }
    rebuildIndex();
}

void RKCalendariumHolidayCalculator::readHonorings(const QDomElement& parent, const RKProvinceSpecification& region)
{
    QMap<RKCalendariumHolidayDayId, RKCalendariumHolidayDayPrototype> byId;
    QList<RKCalendariumHolidayDayPrototype> dated;
    for (QDomElement day = parent.firstChildElement(STR_DAY); !day.isNull(); day = day.nextSiblingElement(STR_DAY)) {
        const QString name = RKXMLParser::attribute(day, STR_NAME, QString(), true);
        if (name.isEmpty())
            continue;
        const RKCalendariumHolidayType type(day.attribute(STR_HONOR));
        const RKCalendariumHolidayDayId id = RKXMLParser::intAttribute(day, STR_ID, -1);
        if (id != -1)
            byId.insert(id, RKCalendariumHolidayDayPrototype(name, type, id));
        else
            dated.append(RKCalendariumHolidayDayPrototype(name, type, day.attribute(STR_DATE)));
    }
    myPrototypesById.insert(region, byId);
    myDatedPrototypes.insert(region, dated);
}

QString RKCalendariumHolidayCalculator::regionKey(const RKProvinceSpecification& region)
{
    // The fields that operator== compares, exactly; '\n' occurs in none of them.
    const RKLocale locale = region.locale();
    return locale.language() + QLatin1Char('\n') + locale.country() + QLatin1Char('\n') + region.province();
}

RKCalendariumHolidayCalculator::DatedRule RKCalendariumHolidayCalculator::matchDatedPattern(const QString& pattern)
{
    static const QRegularExpression expression(QStringLiteral("([\\w\\d]{4})\\D(\\d{1,2})\\D(\\d{1,2})"));
    DatedRule rule;
    const QRegularExpressionMatch match = expression.match(pattern);
    if (!match.hasMatch())
        return rule;
    rule.matched = true;
    rule.year = match.captured(1).toInt(nullptr, 10);
    rule.month = match.captured(2).toInt(nullptr, 10);
    rule.day = match.captured(3).toInt(nullptr, 10);
    return rule;
}

void RKCalendariumHolidayCalculator::rebuildIndex()
{
    myRegionIndex.clear();
    for (auto it = myPrototypesById.constBegin(); it != myPrototypesById.constEnd(); ++it)
        myRegionIndex[regionKey(it.key())].byId = it.value();
    for (auto it = myDatedPrototypes.constBegin(); it != myDatedPrototypes.constEnd(); ++it) {
        RegionIndex& index = myRegionIndex[regionKey(it.key())];
        index.dated = it.value();
        index.rules.clear();
        index.rules.reserve(it.value().size());
        for (const RKCalendariumHolidayDayPrototype& prototype : it.value())
            index.rules.append(matchDatedPattern(prototype.abstractDate()));
    }
}

void RKCalendariumHolidayCalculator::reloadData()
{
    myPrototypesById.clear();
    myDatedPrototypes.clear();
    myProvinces.clear();
    {
        QMutexLocker lock(&myFileMutex);
        myVacationFiles.clear();
        myMoonFile.reset();
    }
    readProvincesAndCountries();
}

// ---- Holidays ----

QDate RKCalendariumHolidayCalculator::eastern(int year)
{
    // The correction in step I is grouped as it always was here: one week late
    // when H is 28 or 29 and G > 10 (1954, 2049, 2106, 2201, ...). 64-bit
    // intermediates only keep absurd years from overflowing.
    const qint64 y = year;
    const qint64 g = y % 19;
    const qint64 c = y / 100;
    const qint64 h = (c - y / 400 - (8 * c + 13) / 25 + 19 * g + 15) % 30;
    if (h + 1 == 0)
        return QDate(); // only for years before the Gregorian calendar
    const qint64 i = h - ((21 - g) / 11) * (h / 28) * (1 - 29 / (h + 1));
    const qint64 j = (y + y / 4 + i + 2 - c + y / 400) % 7;
    const qint64 l = i - j;
    if (l < 4)
        return QDate(year, 3, static_cast<int>(28 + l));
    return QDate(year, 4, static_cast<int>(l - 3));
}

QDate RKCalendariumHolidayCalculator::bussUndBettag(int year)
{
    QDate date(year, 11, 22);
    while (date.isValid() && date.dayOfWeek() != 3)
        date = date.addDays(-1);
    return date;
}

bool RKCalendariumHolidayCalculator::checkForHolidays(const RKCalendariumHolidayCacheKey& key) const
{
    const RKCalendariumHolidayConfig config = key.config();
    return config.hasFeatures(RKCalendariumFeatures(RKCalendariumFeatureHolidays))
        || config.hasFeatures(RKCalendariumFeatures(RKCalendariumFeatureHolidayColors));
}

RKCalendariumHolidayCalculator::Regions RKCalendariumHolidayCalculator::regionsOf(const RKCalendariumHolidayConfig& config) const
{
    Regions regions;
    const auto province = myRegionIndex.constFind(regionKey(config.provinceSpecification()));
    if (province != myRegionIndex.constEnd())
        regions.province = &province.value();
    const auto nation = myRegionIndex.constFind(regionKey(RKProvinceSpecification(config.language(), QString())));
    if (nation != myRegionIndex.constEnd())
        regions.nation = &nation.value();
    return regions;
}

RKCalendariumHolidayDayPrototype RKCalendariumHolidayCalculator::prototypeIn(const Regions& regions, RKCalendariumHolidayDayId id)
{
    for (const RegionIndex* region : {regions.province, regions.nation}) {
        if (!region)
            continue;
        const auto found = region->byId.constFind(id);
        if (found != region->byId.constEnd())
            return found.value();
    }
    return RKCalendariumHolidayDayPrototype();
}

RKCalendariumHolidayDayPrototype RKCalendariumHolidayCalculator::prototype(
    RKCalendariumHolidayDayId id, const RKCalendariumHolidayConfig& config) const
{
    return prototypeIn(regionsOf(config), id);
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

void RKCalendariumHolidayCalculator::appendRuleDays(const Regions& regions, int year, bool skipUnmarked,
    RKCalendariumHolidayList& out, const RKCalendariumHolidayDayId* ids, int count, const QDate& easter)
{
    for (int n = 0; n < count; ++n) {
        const RKCalendariumHolidayDayPrototype found = prototypeIn(regions, ids[n]);
        if (skipUnmarked && found.type().toInt() == 0)
            continue;
        out.append(RKCalendariumHoliday(ruleDate(ids[n], year, easter), found.description(), found.type()));
    }
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::christmassRelatedDays(const RKCalendariumHolidayCacheKey& key) const
{
    RKCalendariumHolidayList days;
    if (!checkForHolidays(key))
        return days;
    appendRuleDays(regionsOf(key.config()), key.year(), false, days, CHRISTMAS_RELATED,
        int(sizeof(CHRISTMAS_RELATED) / sizeof(CHRISTMAS_RELATED[0])), QDate());
    return days;
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::easternRelatedDays(const RKCalendariumHolidayCacheKey& key) const
{
    RKCalendariumHolidayList days;
    if (!checkForHolidays(key))
        return days;
    appendRuleDays(regionsOf(key.config()), key.year(), false, days, EASTER_RELATED,
        int(sizeof(EASTER_RELATED) / sizeof(EASTER_RELATED[0])), eastern(key.year()));
    return days;
}

void RKCalendariumHolidayCalculator::appendDatedDays(const RegionIndex* region, int year, RKCalendariumHolidayList& out)
{
    if (!region)
        return;
    for (int n = 0; n < region->rules.size(); ++n) {
        const DatedRule& rule = region->rules.at(n);
        if (!rule.matched || (rule.year != 0 && rule.year != year))
            continue;
        const RKCalendariumHolidayDayPrototype& prototype = region->dated.at(n);
        out.append(RKCalendariumHoliday(QDate(year, rule.month, rule.day), prototype.description(), prototype.type()));
    }
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::nationalRelatedDays(const RKCalendariumHolidayCacheKey& key) const
{
    RKCalendariumHolidayList days;
    if (!checkForHolidays(key))
        return days;
    const Regions regions = regionsOf(key.config());
    appendDatedDays(regions.province, key.year(), days);
    appendDatedDays(regions.nation, key.year(), days);
    return days;
}

QList<RKCalendariumHolidayDayPrototype> RKCalendariumHolidayCalculator::allNationalDays(const RKCalendariumHolidayConfig& config) const
{
    const Regions regions = regionsOf(config);
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
    // nationalRelatedDays with type 0 removed, built in one pass without the
    // intermediate lists.
    RKCalendariumHolidayList days = schoolVacations(key);
    if (checkForHolidays(key)) {
        const Regions regions = regionsOf(key.config());
        const int year = key.year();
        appendRuleDays(regions, year, true, days, CHRISTMAS_RELATED,
            int(sizeof(CHRISTMAS_RELATED) / sizeof(CHRISTMAS_RELATED[0])), QDate());
        appendRuleDays(regions, year, true, days, EASTER_RELATED,
            int(sizeof(EASTER_RELATED) / sizeof(EASTER_RELATED[0])), eastern(year));
        appendDatedDays(regions.province, year, days);
        appendDatedDays(regions.nation, year, days);
    }
    return days.filterAway(RKCalendariumHolidayType()).filterAwayDoubles();
}

QList<RKLocale> RKCalendariumHolidayCalculator::availableLanguages() const
{
    QList<RKLocale> languages = myProvinces.keys();
    std::sort(languages.begin(), languages.end());
    return languages;
}

QStringList RKCalendariumHolidayCalculator::availableProvinces(const RKLocale& locale) const
{
    QStringList provinces = myProvinces.value(locale);
    std::sort(provinces.begin(), provinces.end(),
        [](const QString& a, const QString& b) { return QString::localeAwareCompare(a, b) < 0; });
    return provinces;
}

// ---- School vacations ----

void RKCalendariumHolidayCalculator::appendVacationDays(const VacationEntry& entry, int year, RKCalendariumHolidayList& out,
    bool named)
{
    if (entry.start.isValid() && entry.end.isValid() && entry.start <= entry.end) {
        const qint64 days = entry.start.daysTo(entry.end);
        if (days >= 51 && !named)
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

namespace {
template <class Entry>
QVector<Entry> readVacationEntries(const QDomElement& parent)
{
    QVector<Entry> entries;
    for (QDomElement vacation = parent.firstChildElement(STR_VACATION); !vacation.isNull();
         vacation = vacation.nextSiblingElement(STR_VACATION)) {
        Entry entry;
        entry.startText = vacation.attribute(STR_START);
        entry.endText = vacation.attribute(STR_END);
        entry.name = vacation.attribute(STR_NAME);
        entry.start = QDate::fromString(entry.startText, Qt::ISODate);
        entry.end = QDate::fromString(entry.endText, Qt::ISODate);
        entries.append(entry);
    }
    return entries;
}
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::readSchoolVacations(const QDomElement& parent, int year) const
{
    RKCalendariumHolidayList days;
    for (const VacationEntry& entry : readVacationEntries<VacationEntry>(parent))
        appendVacationDays(entry, year, days);
    return days;
}

QSharedPointer<const RKCalendariumHolidayCalculator::VacationFile> RKCalendariumHolidayCalculator::parseVacationFile(const QDomElement& root)
{
    QSharedPointer<VacationFile> file(new VacationFile);
    for (QDomElement country = root.firstChildElement(STR_COUNTRY); !country.isNull();
         country = country.nextSiblingElement(STR_COUNTRY)) {
        VacationFile::Country parsed;
        parsed.nationwide = readVacationEntries<VacationEntry>(country.firstChildElement(STR_NATIONWIDE));
        for (QDomElement province = country.firstChildElement(STR_PROVINCE); !province.isNull();
             province = province.nextSiblingElement(STR_PROVINCE)) {
            // As for the days: a province without a name is no province.
            if (!province.attribute(STR_NAME).isEmpty())
                parsed.provinces.append({province.attribute(STR_NAME), readVacationEntries<VacationEntry>(province)});
        }
        file->countries.append(parsed);
    }
    return file;
}

QSharedPointer<const RKCalendariumHolidayCalculator::VacationFile> RKCalendariumHolidayCalculator::vacationFile(const RKLocale& locale) const
{
    const FileStamp stamp = FileStamp::of(holidayFileInfo(locale));
    QMutexLocker lock(&myFileMutex);
    const auto cached = myVacationFiles.constFind(locale.name());
    if (cached != myVacationFiles.constEnd() && cached.value()->stamp == stamp)
        return cached.value();
    const QDomElement root = stamp.exists ? RKXMLLoader::loadDocumentElement(stamp.path) : QDomElement();
    QSharedPointer<const VacationFile> parsed = parseVacationFile(root);
    const_cast<VacationFile*>(parsed.data())->stamp = stamp;
    myVacationFiles.insert(locale.name(), parsed);
    return parsed;
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
    const QSharedPointer<const VacationFile> file = vacationFile(config.language());
    const QString province = config.province();
    const int year = key.year();
    for (const VacationFile::Country& country : file->countries) {
        for (const VacationEntry& entry : country.nationwide)
            appendVacationDays(entry, year, days, named);
        for (const VacationFile::Province& region : country.provinces) {
            if (region.name != province)
                continue;
            for (const VacationEntry& entry : region.vacations)
                appendVacationDays(entry, year, days, named);
        }
    }
    return days;
}

// ---- Moon phases ----

QSharedPointer<const RKCalendariumHolidayCalculator::MoonFile> RKCalendariumHolidayCalculator::moonFile() const
{
    const FileStamp stamp = FileStamp::of(RKResourceFile(RKResourceMoonPhases).fileInfo(false, QString()));
    QMutexLocker lock(&myFileMutex);
    if (myMoonFile && myMoonFile->stamp == stamp)
        return myMoonFile;
    QSharedPointer<MoonFile> file(new MoonFile);
    file->stamp = stamp;
    const QDomElement root = stamp.exists ? RKXMLLoader::loadDocumentElement(stamp.path) : QDomElement();
    static const QRegularExpression monthAndDay(QStringLiteral("(\\d+)\\D+(\\d+)"));
    for (QDomElement yearElement = root.firstChildElement(); !yearElement.isNull();
         yearElement = yearElement.nextSiblingElement()) {
        MoonFile::Year year;
        year.start = yearElement.attribute(STR_START).toInt(nullptr, 10);
        for (QDomElement dayElement = yearElement.firstChildElement(); !dayElement.isNull();
             dayElement = dayElement.nextSiblingElement()) {
            MoonFile::Day day;
            const QRegularExpressionMatch match = monthAndDay.match(dayElement.text());
            if (match.hasMatch()) {
                day.matched = true;
                day.month = match.captured(1).toInt(nullptr, 10);
                day.day = match.captured(2).toInt(nullptr, 10);
            }
            year.days.append(day);
        }
        file->years[yearElement.attribute(STR_COUNT).toInt(nullptr, 10)].append(year);
    }
    myMoonFile = file;
    return myMoonFile;
}

RKCalendariumHolidayList RKCalendariumHolidayCalculator::moonPhases(const RKCalendariumHolidayCacheKey& key) const
{
    RKCalendariumHolidayList days;
    if (!key.config().hasFeatures(RKCalendariumFeatures(RKCalendariumFeatureMoonPhases)))
        return days;
    static const RKCalendariumHolidayTypeEnum RING[] = {
        RKCalendariumHolidayTypeNewMoon,
        RKCalendariumHolidayTypeGrowingCrescent,
        RKCalendariumHolidayTypeFullMoon,
        RKCalendariumHolidayTypeWaningCrescent,
    };
    const QSharedPointer<const MoonFile> file = moonFile();
    const int year = key.year();
    const auto found = file->years.constFind(year);
    if (found == file->years.constEnd())
        return days;
    for (const MoonFile::Year& yearEntry : found.value()) {
        // Rotating the four-phase ring start - 1 times leaves it at (start - 1) mod 4.
        unsigned int position = yearEntry.start < 2 ? 0u : static_cast<unsigned int>(yearEntry.start - 1) % 4u;
        for (const MoonFile::Day& day : yearEntry.days) {
            const RKCalendariumHolidayTypeEnum phase = RING[position];
            position = (position + 1u) % 4u;
            if (day.matched)
                days.append(RKCalendariumHoliday(QDate(year, day.month, day.day), RKCalendariumHolidayType(phase)));
        }
    }
    return days;
}

int RKCalendariumHolidayCalculator::moonPhase(const QDate& date) const
{
    // Mean new moon near the start of the date's month with two periodic terms;
    // the shortened degree-to-radian factor is part of the results users know.
    if (!date.isValid())
        return 0;
    const double radians = 0.0174532925;
    const double y = date.year() - 1900;
    const qint64 k = static_cast<qint64>(std::floor(12.37 * (y + (date.month() - 0.5) / 12.0)));
    const double t = static_cast<double>(k) / 1236.85;
    const double t2 = t * t;
    const double as = 359.2242 + 29.105356 * static_cast<double>(k);
    const double am = 306.0253 + 385.816918 * static_cast<double>(k) + 0.01073 * t2;
    const double x = 0.75933 + 1.53058868 * static_cast<double>(k) + (0.0001178 - 0.000000155 * t) * t2
        + (0.1734 - 0.000393 * t) * std::sin(as * radians) - 0.4068 * std::sin(am * radians);
    const qint64 i = static_cast<qint64>(x > 0 ? std::floor(x) : std::ceil(x - 1));
    const qint64 j = 2415020 + 28 * k + i;
    return static_cast<int>((date.toJulianDay() - j + 30) % 30);
}
