#include "RKSVGCompilerInstructionsFactory.h"

#include <QDate>
#include <QStringBuilder>
#include <QVector>

const QString RKSVGCompilerInstructionsFactory::STR_KEY_ATTRIBUTE = QStringLiteral("vako:cal");

namespace {
const QString STR_CLASS = QStringLiteral("class");
const QString STR_ID = QStringLiteral("id");
const QString STR_XLINK_HREF = QStringLiteral("xlink:href");
const QString STR_IMAGEWIDTH = QStringLiteral("vako:imagewidth");
const QString STR_IMAGEHEIGHT = QStringLiteral("vako:imageheight");
const QString STR_SUNDAY = QStringLiteral("sunday");
const QString STR_SATURDAY = QStringLiteral("saturday");
const QString STR_WEEKDAY = QStringLiteral("weekday");
const QString STR_OTHER_EVENT = QStringLiteral("other_event");
const QString STR_NO_EVENT = QStringLiteral("no_event");
const QString STR_EMPTY = QStringLiteral("_empty");
const QString STR_CAL = QStringLiteral("_cal_");
const QString STR_CAL_WEEK = QStringLiteral("_cal_week");
const QString STR_CAL_WEEK_EMPTY = QStringLiteral("_cal_week_empty");
const QString STR_DAY_ID_PREFIX = QStringLiteral("Day_");
const QString STR_STYLE_SUFFIX = QStringLiteral("_style");

const int MAX_HOLIDAY_NAMES = 10;
const int BLOCK_ROWS = 7;
const int BLOCK_WEEK_STYLES = 6;
const int WEEK_NUMBERS = 7;
const int LIST_SLOTS = 31;
/// Roughly the instructions of one page (about 31700 with every feature on).
const int PAGE_INSTRUCTIONS = 32768;

/// The prefixes of one page and the month offset of each, in the order they are built.
struct PrefixRow {
    QString prefix;
    int months;
};

const QVector<PrefixRow>& pagePrefixes()
{
    static const QVector<PrefixRow> rows = [] {
        QVector<PrefixRow> out;
        out.append({QStringLiteral("lcm"), 0});
        out.append({QStringLiteral("lpm"), -1});
        for (int i = 0; i < 12; ++i)
            out.append({QStringLiteral("lm") + RKSVGCompilerInstructionsFactory::as2D(i), i});
        out.append({QStringLiteral("cm"), 0});
        out.append({QStringLiteral("pm"), -1});
        out.append({QStringLiteral("nm"), 1});
        for (int i = 0; i < 12; ++i)
            out.append({QStringLiteral("m%1").arg(i, 2, 10, QLatin1Char('0')), i});
        return out;
    }();
    return rows;
}

/// "0".."99" come from a table: small numbers are asked for thousands of times per page.
QString number(int n)
{
    static const QVector<QString> numbers = [] {
        QVector<QString> out;
        for (int i = 0; i < 100; ++i)
            out.append(QString::number(i));
        return out;
    }();
    return n >= 0 && n < numbers.size() ? numbers.at(n) : QString::number(n);
}

QString twoDigits(int n)
{
    static const QVector<QString> digits = [] {
        QVector<QString> out;
        for (int i = 0; i < 100; ++i)
            out.append(RKSVGCompilerInstructionsFactory::as2D(i));
        return out;
    }();
    return digits.at(n);
}

bool anyHoliday(const QList<RKAbstractHolidayCache*>& caches, const RKCalendariumContentKey& day,
    const RKCalendariumHolidayType& type)
{
    for (const RKAbstractHolidayCache* cache : caches) {
        if (cache->hasHolidayOfType(day, type))
            return true;
    }
    return false;
}

QStringList allHolidayNames(const QList<RKAbstractHolidayCache*>& caches, const RKCalendariumContentKey& day)
{
    QStringList names;
    for (const RKAbstractHolidayCache* cache : caches)
        names += cache->holidaysAt(day);
    return names;
}

/// "week<i>_style" for the six rows of a month: "<prefix>_cal_week<i>" for rows in use, else "<prefix>_cal_week_empty".
void addWeekStyles(RKSVGCompilerInstructions& set, const QString& prefix, int rows)
{
    for (int i = 0; i < BLOCK_WEEK_STYLES; ++i) {
        const QString value = i < rows ? QString(prefix % STR_CAL_WEEK % number(i)) : QString(prefix % STR_CAL_WEEK_EMPTY);
        set.addInstruction(prefix % QLatin1String("_week") % number(i) % STR_STYLE_SUFFIX, STR_CLASS, value);
    }
}

RKHolidayImage noImage()
{
    return RKHolidayImage(QString(), QSize(-1, -1));
}

RKHolidayImage firstImage(const QList<RKAbstractHolidayCache*>& caches, const RKCalendariumContentKey& day)
{
    for (const RKAbstractHolidayCache* cache : caches) {
        const RKHolidayImage image = cache->holidayImageAt(day);
        if (!image.first.isEmpty())
            return image;
    }
    return noImage();
}
}

/**
 * What one build needs again and again: the words of the configuration, the
 * caches registered when it started, and each day's holiday answers, asked
 * once per day although a month shows up under several prefixes.
 */
class RKSVGCompilerInstructionsFactory::Build
{
public:
    struct Day {
        bool holiday = false;
        QStringList names;
        RKHolidayImage image = noImage();
    };

    Build(const RKSVGCompilerInstructionsFactory& factory, const RKCalendariumContentKey& key)
        : names(factory.calendarDayNames(key.config().holidayConfig()))
        , myCaches(factory.holidayCaches())
        , myKey(key)
    {
    }

    /// The answers for `date`; none for an invalid date.
    Day day(const QDate& date)
    {
        if (!date.isValid() || myCaches.isEmpty())
            return Day();
        const qint64 julianDay = date.toJulianDay();
        auto found = myDays.find(julianDay);
        if (found != myDays.end())
            return found.value();
        const RKCalendariumContentKey dayKey = myKey.moveToDay(date);
        Day answers;
        answers.holiday = anyHoliday(myCaches, dayKey, RKCalendariumHolidayType());
        answers.names = allHolidayNames(myCaches, dayKey);
        answers.image = firstImage(myCaches, dayKey);
        return myDays.insert(julianDay, answers).value();
    }

    const RKCalendarDayNames names;

private:
    const QList<RKAbstractHolidayCache*> myCaches;
    const RKCalendariumContentKey myKey;
    QHash<qint64, Day> myDays;
};

RKSVGCompilerInstructionsFactory::RKSVGCompilerInstructionsFactory() = default;
RKSVGCompilerInstructionsFactory::~RKSVGCompilerInstructionsFactory() = default;

// ---- keys and numbers ----

QString RKSVGCompilerInstructionsFactory::key(const QString& name, const QString& prefix)
{
    return prefix % QLatin1Char('_') % name;
}

QString RKSVGCompilerInstructionsFactory::key(const QString& format, const QString& prefix, int value)
{
    return prefix % QLatin1Char('_') % format.arg(value);
}

QString RKSVGCompilerInstructionsFactory::key(const QString& format, const QString& prefix, const QString& value)
{
    return prefix % QLatin1Char('_') % format.arg(value);
}

QString RKSVGCompilerInstructionsFactory::as2D(int n)
{
    return n <= 9 ? QLatin1Char('0') + QString::number(n) : QString::number(n);
}

QString RKSVGCompilerInstructionsFactory::as2D(const QString& s)
{
    return s.size() == 1 ? QLatin1Char('0') + s : s;
}

QString RKSVGCompilerInstructionsFactory::weekDayType(int column)
{
    if (column == 7)
        return STR_SUNDAY;
    if (column == 6)
        return STR_SATURDAY;
    return STR_WEEKDAY;
}

// ---- holiday caches ----

void RKSVGCompilerInstructionsFactory::addHolidayCache(RKAbstractHolidayCache* cache)
{
    if (!cache)
        return;
    {
        std::lock_guard<std::mutex> lock(myCachesMutex);
        if (myCaches.contains(cache))
            return;
        myCaches.append(cache);
    }
    // By the pointer as registered: the object is half destroyed when the signal comes.
    connect(cache, &QObject::destroyed, this, [this, cache]() { removeHolidayCache(cache); }, Qt::DirectConnection);
}

void RKSVGCompilerInstructionsFactory::removeHolidayCache(RKAbstractHolidayCache* cache)
{
    std::lock_guard<std::mutex> lock(myCachesMutex);
    myCaches.removeAll(cache);
}

QList<RKAbstractHolidayCache*> RKSVGCompilerInstructionsFactory::holidayCaches() const
{
    std::lock_guard<std::mutex> lock(myCachesMutex);
    return myCaches;
}

bool RKSVGCompilerInstructionsFactory::hasHolidayOfType(const RKCalendariumContentKey& key,
    const RKCalendariumHolidayType& type) const
{
    return anyHoliday(holidayCaches(), key, type);
}

QStringList RKSVGCompilerInstructionsFactory::holidaysAt(const RKCalendariumContentKey& key) const
{
    return allHolidayNames(holidayCaches(), key);
}

RKHolidayImage RKSVGCompilerInstructionsFactory::holidayImageAt(const RKCalendariumContentKey& key) const
{
    return firstImage(holidayCaches(), key);
}

// ---- words ----

RKCalendarDayNames RKSVGCompilerInstructionsFactory::calendarDayNames(const RKCalendariumHolidayConfig& config) const
{
    const RKLocale locale = config.language();
    std::lock_guard<std::mutex> lock(myDayNamesMutex);
    auto found = myDayNames.constFind(locale);
    if (found != myDayNames.constEnd())
        return found.value();
    return myDayNames.insert(locale, RKCalendarDayNames(locale)).value();
}

void RKSVGCompilerInstructionsFactory::clearCalendarDayNames()
{
    std::lock_guard<std::mutex> lock(myDayNamesMutex);
    myDayNames.clear();
}

QString RKSVGCompilerInstructionsFactory::monthShort(const RKCalendariumHolidayConfig& config, int month) const
{
    return calendarDayNames(config).monthShort(month);
}

QString RKSVGCompilerInstructionsFactory::monthLong(const RKCalendariumHolidayConfig& config, int month) const
{
    return calendarDayNames(config).monthLong(month);
}

QString RKSVGCompilerInstructionsFactory::calendarWeekShort(const RKCalendariumHolidayConfig& config) const
{
    return calendarDayNames(config).calendarWeekShort();
}

QString RKSVGCompilerInstructionsFactory::calendarWeekLong(const RKCalendariumHolidayConfig& config) const
{
    return calendarDayNames(config).calendarWeekLong();
}

// ---- the whole set ----

RKSVGCompilerInstructions RKSVGCompilerInstructionsFactory::instructions(const RKCalendariumContentKey& key)
{
    return createInstructions(key);
}

QString RKSVGCompilerInstructionsFactory::createInstructionsDescription(const RKCalendariumContentKey& key) const
{
    return key.describe();
}

RKSVGCompilerInstructions RKSVGCompilerInstructionsFactory::createInstructions(const RKCalendariumContentKey& key) const
{
    RKSVGCompilerInstructions set(STR_KEY_ATTRIBUTE);
    set.setDescription(createInstructionsDescription(key));
    if (!key.isValid())
        return set;
    set.reserve(PAGE_INSTRUCTIONS);
    Build build(*this, key);
    for (const PrefixRow& row : pagePrefixes())
        addInstructions(set, row.prefix, row.months == 0 ? key : key.addMonths(row.months), build);
    return set;
}

void RKSVGCompilerInstructionsFactory::addInstructions(RKSVGCompilerInstructions& set, const QString& prefix,
    const RKCalendariumContentKey& key, Build& build) const
{
    monthInstructions(set, prefix, key, build);
    yearInstructions(set, prefix, key);
    weekInstructions(set, prefix, key, build);
    holidayInstructions(set, prefix, key, build);
    if (prefix.startsWith(QLatin1Char('l')))
        listCalendarInstructions(set, prefix, key, build);
    else
        blockCalendarInstructions(set, prefix, key, build);
}

// The public builders each make a build of their own; createInstructions shares one.

void RKSVGCompilerInstructionsFactory::addInstructions(RKSVGCompilerInstructions* set, const QString& prefix,
    const RKCalendariumContentKey& key) const
{
    if (!set)
        return;
    Build build(*this, key);
    addInstructions(*set, prefix, key, build);
}

void RKSVGCompilerInstructionsFactory::createMonthInstructions(RKSVGCompilerInstructions* set, const QString& prefix,
    const RKCalendariumContentKey& key) const
{
    if (!set)
        return;
    Build build(*this, key);
    monthInstructions(*set, prefix, key, build);
}

void RKSVGCompilerInstructionsFactory::createYearInstructions(RKSVGCompilerInstructions* set, const QString& prefix,
    const RKCalendariumContentKey& key) const
{
    if (set)
        yearInstructions(*set, prefix, key);
}

void RKSVGCompilerInstructionsFactory::createWeekInstructions(RKSVGCompilerInstructions* set, const QString& prefix,
    const RKCalendariumContentKey& key) const
{
    if (!set)
        return;
    Build build(*this, key);
    weekInstructions(*set, prefix, key, build);
}

void RKSVGCompilerInstructionsFactory::createHolidayInstructions(RKSVGCompilerInstructions* set, const QString& prefix,
    const RKCalendariumContentKey& key) const
{
    if (!set)
        return;
    Build build(*this, key);
    holidayInstructions(*set, prefix, key, build);
}

void RKSVGCompilerInstructionsFactory::createBlockCalendarInstructions(RKSVGCompilerInstructions* set,
    const QString& prefix, const RKCalendariumContentKey& key) const
{
    if (!set)
        return;
    Build build(*this, key);
    blockCalendarInstructions(*set, prefix, key, build);
}

void RKSVGCompilerInstructionsFactory::createListCalendarInstructions(RKSVGCompilerInstructions* set,
    const QString& prefix, const RKCalendariumContentKey& key) const
{
    if (!set)
        return;
    Build build(*this, key);
    listCalendarInstructions(*set, prefix, key, build);
}

// ---- the builders ----

void RKSVGCompilerInstructionsFactory::monthInstructions(RKSVGCompilerInstructions& set, const QString& prefix,
    const RKCalendariumContentKey& content, Build& build) const
{
    const int month = content.config().month();
    const QString longName = build.names.monthLong(month);
    const QString shortName = build.names.monthShort(month);
    const struct {
        const char* name;
        QString text;
    } rows[] = {
        {"month_full_uc", longName.toUpper()},
        {"month_full", longName},
        {"month_short_uc", shortName.toUpper()},
        {"month_short", shortName},
        {"month_number2d", as2D(month)},
        {"month_number", QString::number(month)},
        {"year", QString::number(content.config().year())},
    };
    for (const auto& row : rows)
        set.addInstruction(RKSVGCompilerInstructionsFactory::key(QLatin1String(row.name), prefix), row.text);
}

void RKSVGCompilerInstructionsFactory::yearInstructions(RKSVGCompilerInstructions& set, const QString& prefix,
    const RKCalendariumContentKey& content) const
{
    const int year = content.config().year();
    const bool january = content.config().month() == 1;
    set.addInstruction(RKSVGCompilerInstructionsFactory::key(QStringLiteral("year_short"), prefix), QString::number(year % 100));
    set.addInstruction(RKSVGCompilerInstructionsFactory::key(QStringLiteral("year"), prefix), QString::number(year));
    set.addInstruction(RKSVGCompilerInstructionsFactory::key(QStringLiteral("cov_start_year"), prefix), QString::number(year));
    set.addInstruction(RKSVGCompilerInstructionsFactory::key(QStringLiteral("cov_end_year"), prefix), QString::number(january ? year : year + 1));
    set.addInstruction(RKSVGCompilerInstructionsFactory::key(QStringLiteral("cov_twoyears_style"), prefix), STR_CLASS,
        january ? QStringLiteral("cov_twoyears_empty") : QStringLiteral("cov_twoyears"));
    set.addInstruction(RKSVGCompilerInstructionsFactory::key(QStringLiteral("cov_oneyear_style"), prefix), STR_CLASS,
        january ? QStringLiteral("cov_oneyear") : QStringLiteral("cov_oneyear_empty"));
}

void RKSVGCompilerInstructionsFactory::weekInstructions(RKSVGCompilerInstructions& set, const QString& prefix,
    const RKCalendariumContentKey& content, Build& build) const
{
    const RKCalendariumContentConfig config = content.config();
    if (!prefix.startsWith(QLatin1Char('l'))) {
        addWeekStyles(set, prefix, (config.dayOfWeek() + config.dayInMonthCount() - 1 + 6) / 7);
    }
    set.addInstruction(RKSVGCompilerInstructionsFactory::key(QStringLiteral("weekcaption_short"), prefix), build.names.calendarWeekShort());
    set.addInstruction(RKSVGCompilerInstructionsFactory::key(QStringLiteral("weekcaption"), prefix), build.names.calendarWeekLong());
    for (int i = 0; i < WEEK_NUMBERS; ++i) {
        set.addInstruction(prefix % QLatin1String("_week") % number(i),
            QString::number(content.date().addDays(7 * i).weekNumber()));
    }
}

void RKSVGCompilerInstructionsFactory::holidayInstructions(RKSVGCompilerInstructions& set, const QString& prefix,
    const RKCalendariumContentKey& content, Build& build) const
{
    const RKDateRange range = content.config().dayRange();
    QStringList days;
    for (QDate date = range.first(); !range.isEmpty() && date.isValid() && date <= range.last(); date = date.addDays(1)) {
        const QStringList names = build.day(date).names;
        if (!names.isEmpty())
            days.append(number(date.day()) % QLatin1String(": ") % names.join(QLatin1Char(',')));
    }
    set.addInstruction(RKSVGCompilerInstructionsFactory::key(QStringLiteral("holidays"), prefix), days.join(QLatin1String(" - ")));
}

namespace {
/// The instructions of one day cell or slot, shared by block and list calendars.
void addDayCell(RKSVGCompilerInstructions& set, const QString& prefix, const QString& id, const QDate& date,
    const QString& dayClass, const QStringList& names, const RKHolidayImage& image)
{
    const QString styleKey = prefix % QLatin1String("_day") % id % STR_STYLE_SUFFIX;
    set.addInstruction(styleKey, STR_CLASS, dayClass);
    const QString dayText = date.isValid() ? number(date.day()) : QString();
    set.addInstruction(prefix % QLatin1String("_day") % id, dayText);
    set.addInstruction(prefix % QLatin1String("_day2d") % id, RKSVGCompilerInstructionsFactory::as2D(dayText));
    if (date.isValid())
        set.addInstruction(styleKey, STR_ID, STR_DAY_ID_PREFIX + date.toString(Qt::ISODate));
    for (int i = 0; i < MAX_HOLIDAY_NAMES; ++i) {
        const QString slot = prefix % QLatin1String("_holiday") % id % QChar(QLatin1Char('0' + i));
        const QString name = names.value(i);
        set.addInstruction(slot, name);
        set.addInstruction(slot + STR_STYLE_SUFFIX, STR_CLASS, name.isEmpty() ? STR_NO_EVENT : STR_OTHER_EVENT);
    }
    if (!image.first.isEmpty()) {
        const QString imageKey = prefix % QLatin1String("_imageholiday") % id;
        set.addInstruction(imageKey, STR_XLINK_HREF, image.first);
        set.addInstruction(imageKey, STR_IMAGEWIDTH, QString::number(image.second.width()));
        set.addInstruction(imageKey, STR_IMAGEHEIGHT, QString::number(image.second.height()));
    }
}
}

void RKSVGCompilerInstructionsFactory::blockCalendarInstructions(RKSVGCompilerInstructions& set, const QString& prefix,
    const RKCalendariumContentKey& content, Build& build) const
{
    const RKCalendariumContentConfig config = content.config();
    const int firstColumn = config.dayOfWeek();
    const int dayCount = config.dayInMonthCount();
    const int keyDay = config.day();
    for (int column = 1; column <= 7; ++column) {
        const QString index = number(column - 1);
        const QString shortName = build.names.dayOfWeekShort(column);
        const QString longName = build.names.dayOfWeekLong(column);
        set.addInstruction(prefix % QLatin1String("_dayname_short_uc") % index, shortName.toUpper());
        set.addInstruction(prefix % QLatin1String("_dayname_short") % index, shortName);
        set.addInstruction(prefix % QLatin1String("_dayname_uc") % index, longName.toUpper());
        set.addInstruction(prefix % QLatin1String("_dayname") % index, longName);
        for (int row = 0; row < BLOCK_ROWS; ++row) {
            const QString cellId = number(row) % number(column - 1);
            const int dayOfMonth = row * 7 + (column - firstColumn) + keyDay;
            const bool inside = dayOfMonth >= 1 && dayOfMonth <= dayCount;
            const QDate date = inside ? config.dayInThisMonth(dayOfMonth) : QDate();
            const Build::Day answers = build.day(date);
            const QString type = answers.holiday ? STR_SUNDAY : weekDayType(column);
            const QString dayClass = prefix % STR_CAL % type % (inside ? number(row) : STR_EMPTY);
            addDayCell(set, prefix, cellId, date, dayClass, answers.names, answers.image);
        }
    }
}

void RKSVGCompilerInstructionsFactory::listCalendarInstructions(RKSVGCompilerInstructions& set, const QString& prefix,
    const RKCalendariumContentKey& content, Build& build) const
{
    const RKCalendariumContentConfig config = content.config();
    const int firstWeekday = config.dayOfWeek();
    int row = 0;
    for (int i = 0; i < LIST_SLOTS; ++i) {
        const QString slotId = twoDigits(i);
        const QDate date = config.dayInThisMonth(i + 1);
        int weekday = (firstWeekday + i) % 7;
        if (weekday == 0)
            weekday = 7;
        if (i > 0 && weekday == 1 && date.isValid())
            ++row;
        const Build::Day answers = build.day(date);
        const QString type = weekDayType(answers.holiday ? 7 : weekday);
        const QString slotClass = prefix % STR_CAL % type % (date.isValid() ? number(row) : STR_EMPTY);
        addDayCell(set, prefix, slotId, date, slotClass, answers.names, answers.image);

        const QString shortName = build.names.dayOfWeekShort(weekday);
        const QString longName = build.names.dayOfWeekLong(weekday);
        set.addInstruction(prefix % QLatin1String("_dayname") % slotId % STR_STYLE_SUFFIX, STR_CLASS, slotClass);
        set.addInstruction(prefix % QLatin1String("_dayname_short_uc") % slotId, shortName.toUpper());
        set.addInstruction(prefix % QLatin1String("_dayname_short") % slotId, shortName);
        set.addInstruction(prefix % QLatin1String("_dayname_uc") % slotId, longName.toUpper());
        set.addInstruction(prefix % QLatin1String("_dayname") % slotId, longName);
    }
    addWeekStyles(set, prefix, config.isValid() ? row + 1 : 0);
    for (int i = 0; i < WEEK_NUMBERS; ++i)
        set.addInstruction(prefix % QLatin1String("_week-") % number(i) % STR_STYLE_SUFFIX, STR_CLASS,
            prefix % STR_CAL_WEEK_EMPTY);
}
