#pragma once

#include "RKAbstractHolidayCache.h"
#include "RKCalendariumHolidayCacheKey.h"
#include "RKCalendariumHolidayList.h"
#include "rkxml_export.h"

#include <QHash>
#include <mutex>
#include <QSharedPointer>

/**
 * The application's own holiday cache, built on RKCalendariumHolidayCalculator:
 * the marked days of a year (holidaysOfYear, which holds the school vacations,
 * and moonPhases) are computed once per RKCalendariumHolidayCacheKey, that is per
 * year and holiday configuration, and answered per day from then on. Safe to use
 * from several threads: one mutex guards the table of years.
 *
 * - hasHolidayOfType: a type of value 0 (the default, which the instructions
 *   factory uses to draw holidays like Sundays) asks for a public day off, that
 *   is an entry with the "free" flag; any other type asks for an entry that has
 *   at least one of the type's flags ("free" finds "free,show").
 * - holidaysAt: the non-empty descriptions of the day's entries in calculator
 *   order (moon phase days have none), then, with the vacations feature on,
 *   the name of each school vacation that covers the day (once per name).
 *   That is how vacations reach a printed page: the name fills a holiday-name
 *   slot of the day, whose "_style" class becomes "other_event", so a template
 *   can print it as a label or shade the cell with that class. A vacation never
 *   counts as a public holiday in hasHolidayOfType with the default type.
 * - holidayImageAt: for a moon phase day, the icon "moonphases/<phase keyword>.svg"
 *   of the resource directories (e.g. "moonphases/full_moon.svg") with its SVG
 *   default size, when that file exists; otherwise, and on other days, none.
 */
class RKXML_EXPORT RKCalculatedHolidayCache : public RKAbstractHolidayCache
{
    Q_OBJECT

public:
    RKCalculatedHolidayCache();
    ~RKCalculatedHolidayCache() override;

    bool hasHolidayOfType(const RKCalendariumContentKey& day, const RKCalendariumHolidayType& type) const override;
    QStringList holidaysAt(const RKCalendariumContentKey& day) const override;
    RKHolidayImage holidayImageAt(const RKCalendariumContentKey& day) const override;

    /// All marked days of the day's year under its configuration (computed on first use).
    RKCalendariumHolidayList marksOfYear(const RKCalendariumContentKey& day) const;
    /// Forgets the computed years, e.g. after the calculator reloaded its data.
    void clear();
    /// Number of computed years held.
    int size() const;

private:
    struct Year;
    QSharedPointer<const Year> year(const RKCalendariumContentKey& day) const;

    mutable std::mutex myMutex;
    mutable QHash<RKCalendariumHolidayCacheKey, QSharedPointer<const Year>> myYears;
};
