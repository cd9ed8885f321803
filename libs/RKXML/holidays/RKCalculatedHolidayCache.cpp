#include "RKCalculatedHolidayCache.h"

#include "RKCalendariumHolidayCalculator.h"

#include <RKDirectoryConfig.h>

#include <QFileInfo>
#include <QSvgRenderer>

#include <algorithm>

namespace {
const int MOON_FLAGS = RKCalendariumHolidayTypeNewMoon | RKCalendariumHolidayTypeGrowingCrescent
    | RKCalendariumHolidayTypeFullMoon | RKCalendariumHolidayTypeWaningCrescent;

RKHolidayImage noImage()
{
    return RKHolidayImage(QString(), QSize(-1, -1));
}

RKHolidayImage moonIcon(const RKCalendariumHolidayType& phase)
{
    const QString path = RKSingleton<RKDirectoryConfig>::instance().resource(
        QStringLiteral("moonphases/%1.svg").arg(phase.encode()));
    if (!QFileInfo::exists(path))
        return noImage();
    QSvgRenderer renderer(path);
    if (!renderer.isValid())
        return noImage();
    return RKHolidayImage(path, renderer.defaultSize());
}
}

struct RKCalculatedHolidayCache::Year {
    RKCalendariumHolidayList marks;
    /// Indices into `marks` by Julian day.
    QMultiHash<qint64, int> byDay;
    /// Moon icons by Julian day, for days that have one.
    QHash<qint64, RKHolidayImage> images;
    /// Names of the school vacations by Julian day, in data file order.
    QHash<qint64, QStringList> vacationNames;
};

RKCalculatedHolidayCache::RKCalculatedHolidayCache() = default;
RKCalculatedHolidayCache::~RKCalculatedHolidayCache() = default;

QSharedPointer<const RKCalculatedHolidayCache::Year> RKCalculatedHolidayCache::year(const RKCalendariumContentKey& day) const
{
    const RKCalendariumHolidayCacheKey key(day.date().year(), day.config().holidayConfig());
    std::lock_guard<std::mutex> lock(myMutex);
    const auto found = myYears.constFind(key);
    if (found != myYears.constEnd())
        return found.value();

    const RKCalendariumHolidayCalculator& calculator = RKSingleton<RKCalendariumHolidayCalculator>::instance();
    QSharedPointer<Year> computed(new Year);
    computed->marks = calculator.holidaysOfYear(key);
    computed->marks += calculator.moonPhases(key);
    QHash<int, RKHolidayImage> iconByPhase;
    for (int n = 0; n < computed->marks.size(); ++n) {
        const RKCalendariumHoliday& mark = computed->marks.at(n);
        if (!mark.date().isValid())
            continue;
        const qint64 julianDay = mark.date().toJulianDay();
        computed->byDay.insert(julianDay, n);
        const int type = mark.type().toInt();
        if ((type & MOON_FLAGS) == 0 || computed->images.contains(julianDay))
            continue;
        if (!iconByPhase.contains(type))
            iconByPhase.insert(type, moonIcon(mark.type()));
        if (!iconByPhase.value(type).first.isEmpty())
            computed->images.insert(julianDay, iconByPhase.value(type));
    }
    const RKCalendariumHolidayList vacations = calculator.namedSchoolVacations(key);
    for (const RKCalendariumHoliday& day : vacations) {
        if (!day.date().isValid() || day.description().isEmpty())
            continue;
        QStringList& names = computed->vacationNames[day.date().toJulianDay()];
        if (!names.contains(day.description()))
            names.append(day.description());
    }
    myYears.insert(key, computed);
    return computed;
}

RKCalendariumHolidayList RKCalculatedHolidayCache::marksOfYear(const RKCalendariumContentKey& day) const
{
    if (!day.date().isValid())
        return RKCalendariumHolidayList();
    return year(day)->marks;
}

bool RKCalculatedHolidayCache::hasHolidayOfType(const RKCalendariumContentKey& day, const RKCalendariumHolidayType& type) const
{
    if (!day.date().isValid())
        return false;
    const QSharedPointer<const Year> marks = year(day);
    const int wanted = type.toInt() == 0 ? int(RKCalendariumHolidayTypeFree) : type.toInt();
    const qint64 julianDay = day.date().toJulianDay();
    for (auto it = marks->byDay.constFind(julianDay); it != marks->byDay.constEnd() && it.key() == julianDay; ++it) {
        if ((marks->marks.at(it.value()).type().toInt() & wanted) != 0)
            return true;
    }
    return false;
}

QStringList RKCalculatedHolidayCache::holidaysAt(const RKCalendariumContentKey& day) const
{
    QStringList names;
    if (!day.date().isValid())
        return names;
    const QSharedPointer<const Year> marks = year(day);
    // QMultiHash yields a key's values newest first; the calculator's order is wanted.
    const qint64 julianDay = day.date().toJulianDay();
    QList<int> indices = marks->byDay.values(julianDay);
    std::sort(indices.begin(), indices.end());
    for (int index : indices) {
        const QString name = marks->marks.at(index).description();
        if (!name.isEmpty())
            names.append(name);
    }
    for (const QString& vacation : marks->vacationNames.value(julianDay)) {
        if (!names.contains(vacation))
            names.append(vacation);
    }
    return names;
}

RKHolidayImage RKCalculatedHolidayCache::holidayImageAt(const RKCalendariumContentKey& day) const
{
    if (!day.date().isValid())
        return noImage();
    return year(day)->images.value(day.date().toJulianDay(), noImage());
}

void RKCalculatedHolidayCache::clear()
{
    std::lock_guard<std::mutex> lock(myMutex);
    myYears.clear();
}

int RKCalculatedHolidayCache::size() const
{
    std::lock_guard<std::mutex> lock(myMutex);
    return myYears.size();
}
