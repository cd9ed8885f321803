#include "RKCalendariumHolidayList.h"

#include <QDebug>
#include <QMultiHash>

RKCalendariumHolidayList::RKCalendariumHolidayList(std::initializer_list<RKCalendariumHoliday> holidays)
    : QList<RKCalendariumHoliday>(holidays)
{
}

RKCalendariumHolidayList RKCalendariumHolidayList::filter(const QDate& date) const
{
    RKCalendariumHolidayList result;
    if (!date.isValid())
        return result;
    for (const RKCalendariumHoliday& holiday : *this) {
        if (holiday.date() == date)
            result.append(holiday);
    }
    return result;
}

RKCalendariumHolidayList RKCalendariumHolidayList::filter(const RKCalendariumHolidayType& type) const
{
    RKCalendariumHolidayList result;
    for (const RKCalendariumHoliday& holiday : *this) {
        if (holiday.type().toInt() == type.toInt())
            result.append(holiday);
    }
    return result;
}

RKCalendariumHolidayList RKCalendariumHolidayList::filterAway(const RKCalendariumHolidayType& type) const
{
    RKCalendariumHolidayList result;
    for (const RKCalendariumHoliday& holiday : *this) {
        if (holiday.type().toInt() != type.toInt())
            result.append(holiday);
    }
    return result;
}

RKCalendariumHolidayList RKCalendariumHolidayList::filterAwayDoubles() const
{
    // Equal entries have equal dates, so each entry is compared only with the kept
    // entries of its own day instead of with every kept entry.
    RKCalendariumHolidayList result;
    QMultiHash<qint64, int> keptByDay;
    keptByDay.reserve(size());
    for (const RKCalendariumHoliday& holiday : *this) {
        const qint64 day = holiday.date().toJulianDay();
        bool seen = false;
        for (auto it = keptByDay.constFind(day); it != keptByDay.constEnd() && it.key() == day; ++it) {
            if (result.at(it.value()) == holiday) {
                seen = true;
                break;
            }
        }
        if (!seen) {
            keptByDay.insert(day, result.size());
            result.append(holiday);
        }
    }
    return result;
}

void RKCalendariumHolidayList::dump() const
{
    qInfo() << "start";
    for (const RKCalendariumHoliday& holiday : *this)
        holiday.dump();
    qInfo() << " end";
}
