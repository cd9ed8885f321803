#pragma once

#include "RKAbstractHolidayCache.h"
#include "RKCalendarDayNames.h"
#include "RKCalendariumContentKey.h"
#include "RKCalendariumHolidayType.h"
#include "RKSVGCompilerInstructions.h"
#include "rkxml_export.h"

#include <RKLocale.h>
#include <RKSingleton.h>

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <mutex>

/**
 * Builds the instruction set that fills every calendar field of a template
 * page for one content key: month and year words, cover years, week numbers
 * and captions, the month's holiday list, and the date grids of block
 * calendars (a week grid) and list calendars (one slot per day).
 *
 * Every key is prefix + "_" + name and is matched against the template's
 * "vako:cal" attributes. The prefixes, each for the key shifted by months:
 * "lcm" (0), "lpm" (-1), "lm00".."lm11" (0..11) are list calendars; "cm" (0),
 * "pm" (-1), "nm" (+1), "m00".."m11" (0..11) are block calendars. Content keys
 * are expected to hold the first day of the month the page shows. An invalid
 * key gives a set without instructions.
 *
 * Block calendars: columns Monday..Sunday, rows 0..6, cell id "<row><column-1>".
 * Per cell: "day<id>" and "day2d<id>" (day number, empty outside the month),
 * "day<id>_style" (class "<prefix>_cal_<type><row>" or "<prefix>_cal_<type>_empty"
 * outside the month, and id "Day_<ISO date>" inside it), ten holiday-name slots
 * "holiday<id><0..9>" with their "_style" classes "other_event"/"no_event", and
 * "imageholiday<id>" (xlink:href, vako:imagewidth, vako:imageheight) when a
 * holiday cache has a picture for the day. <type> is "sunday" for a public
 * holiday (hasHolidayOfType with the default type) or a Sunday, "saturday",
 * else "weekday".
 *
 * List calendars: 31 slots, slot id "00".."30" for the days 1..31. A new week
 * row starts on every Monday; a slot's class is "<prefix>_cal_<type><row>" with
 * the 0-based week row, or "<prefix>_cal_<type>_empty" for a slot past the
 * month's end; "dayname<id>_style" gets the same class, and "dayname<id>",
 * "dayname_short<id>", "dayname_uc<id>", "dayname_short_uc<id>" the words of
 * the slot's weekday. "week<n>_style" is "<prefix>_cal_week<n>" for the rows in
 * use and "<prefix>_cal_week_empty" for n up to 5 beyond them; "week-<n>_style"
 * (n = 0..6) is always "<prefix>_cal_week_empty". The week numbers "week<n>"
 * come from the week instructions that every prefix receives (the ISO week of
 * the key's date plus 7n days, which is the week of row n).
 *
 * School vacations reach a page through the holiday caches only: a cache may
 * report a vacation's name among a day's holiday names (the application's
 * RKCalculatedHolidayCache does, after the day's holiday names), so the slot
 * shows the name and its "_style" class is "other_event". Vacations never make
 * a day "sunday": that needs a public holiday.
 *
 * Threads: building reads the registered caches and the calendar words only;
 * the table of day names by locale and the cache list have a mutex each,
 * so builds may run on any thread. Normally they arrive
 * through RKSVGCompilerInstructionsCache, which serialises them.
 */
class RKXML_EXPORT RKSVGCompilerInstructionsFactory : public QObject, public RKSingleton<RKSVGCompilerInstructionsFactory>
{
    Q_OBJECT
    friend class RKSingleton<RKSVGCompilerInstructionsFactory>;

public:
    /// "vako:cal": the attribute that carries the keys in templates.
    static const QString STR_KEY_ATTRIBUTE;

    ~RKSVGCompilerInstructionsFactory() override;

    /// createInstructions(key).
    RKSVGCompilerInstructions instructions(const RKCalendariumContentKey& key);
    /// The whole set for `key`. Costly: every day shown is asked of every holiday cache.
    RKSVGCompilerInstructions createInstructions(const RKCalendariumContentKey& key) const;
    /// key.describe().
    QString createInstructionsDescription(const RKCalendariumContentKey& key) const;

    /**
     * Appends a holiday source, asked after those registered before it. Not
     * owned; a cache that is destroyed leaves the list by itself, but must not
     * be destroyed while a build runs. A null or already registered cache is ignored.
     */
    void addHolidayCache(RKAbstractHolidayCache* cache);
    /// Removes a registered cache (no build may be running with it).
    void removeHolidayCache(RKAbstractHolidayCache* cache);
    QList<RKAbstractHolidayCache*> holidayCaches() const;

    /// All instructions of `prefix` for `key` into `set` (a null set is ignored).
    void addInstructions(RKSVGCompilerInstructions* set, const QString& prefix, const RKCalendariumContentKey& key) const;
    void createMonthInstructions(RKSVGCompilerInstructions* set, const QString& prefix, const RKCalendariumContentKey& key) const;
    void createYearInstructions(RKSVGCompilerInstructions* set, const QString& prefix, const RKCalendariumContentKey& key) const;
    void createWeekInstructions(RKSVGCompilerInstructions* set, const QString& prefix, const RKCalendariumContentKey& key) const;
    void createHolidayInstructions(RKSVGCompilerInstructions* set, const QString& prefix, const RKCalendariumContentKey& key) const;
    void createBlockCalendarInstructions(RKSVGCompilerInstructions* set, const QString& prefix, const RKCalendariumContentKey& key) const;
    void createListCalendarInstructions(RKSVGCompilerInstructions* set, const QString& prefix, const RKCalendariumContentKey& key) const;

    /// The day, month and week words of the configuration's language; made once per locale.
    RKCalendarDayNames calendarDayNames(const RKCalendariumHolidayConfig& config) const;
    /// Forgets the words taken per locale (after the calendar words changed).
    void clearCalendarDayNames();
    QString monthShort(const RKCalendariumHolidayConfig& config, int month) const;
    QString monthLong(const RKCalendariumHolidayConfig& config, int month) const;
    QString calendarWeekShort(const RKCalendariumHolidayConfig& config) const;
    QString calendarWeekLong(const RKCalendariumHolidayConfig& config) const;
    /// "sunday" for 7, "saturday" for 6, else "weekday".
    static QString weekDayType(int column);

    /// Whether any registered cache marks the key's day with `type`; asked in order, stopping at the first yes.
    bool hasHolidayOfType(const RKCalendariumContentKey& key,
        const RKCalendariumHolidayType& type = RKCalendariumHolidayType()) const;
    /// The day's holiday names of all caches, in registration order.
    QStringList holidaysAt(const RKCalendariumContentKey& key) const;
    /// The first picture a cache gives for the day; an empty path and size (-1, -1) when none does.
    RKHolidayImage holidayImageAt(const RKCalendariumContentKey& key) const;

    /// prefix + "_" + name. Note the order of the arguments.
    static QString key(const QString& name, const QString& prefix);
    /// prefix + "_" + format with its lowest placeholder replaced by `value`.
    static QString key(const QString& format, const QString& prefix, int value);
    static QString key(const QString& format, const QString& prefix, const QString& value);
    /// The number with a "0" in front when it is at most 9 ("00".."09"; -3 gives "0-3").
    static QString as2D(int n);
    /// A one-character string with a "0" in front; any other string unchanged.
    static QString as2D(const QString& s);

private:
    RKSVGCompilerInstructionsFactory();

    class Build;
    void addInstructions(RKSVGCompilerInstructions& set, const QString& prefix, const RKCalendariumContentKey& key,
        Build& build) const;
    void monthInstructions(RKSVGCompilerInstructions& set, const QString& prefix, const RKCalendariumContentKey& key,
        Build& build) const;
    void yearInstructions(RKSVGCompilerInstructions& set, const QString& prefix, const RKCalendariumContentKey& key) const;
    void weekInstructions(RKSVGCompilerInstructions& set, const QString& prefix, const RKCalendariumContentKey& key,
        Build& build) const;
    void holidayInstructions(RKSVGCompilerInstructions& set, const QString& prefix, const RKCalendariumContentKey& key,
        Build& build) const;
    void blockCalendarInstructions(RKSVGCompilerInstructions& set, const QString& prefix,
        const RKCalendariumContentKey& key, Build& build) const;
    void listCalendarInstructions(RKSVGCompilerInstructions& set, const QString& prefix,
        const RKCalendariumContentKey& key, Build& build) const;

    mutable std::mutex myCachesMutex;
    QList<RKAbstractHolidayCache*> myCaches;
    mutable std::mutex myDayNamesMutex;
    mutable QHash<RKLocale, RKCalendarDayNames> myDayNames;
};
