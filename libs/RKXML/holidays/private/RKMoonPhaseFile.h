#pragma once

#include "RKCalendariumHolidayList.h"
#include "private/RKFileStamp.h"

#include <QDate>
#include <QHash>
#include <QSharedPointer>
#include <QVector>

#include <mutex>

/**
 * The two moon phase computations: the principal phases of a year as listed in the
 * moon phase file ("moonphases/moonphases.xml"), parsed once and again when the
 * file changes on disk (a mutex guards the parsed form; any thread may query); and
 * the moon's age on a date from a mean new-moon series, which needs no file.
 */
class RKMoonPhaseFile
{
public:
    /// The listed phase days of `year`: new moon, first quarter, full moon, last
    /// quarter in turn, starting where the year element's "start" says.
    RKCalendariumHolidayList phasesOfYear(int year) const;
    void clear();

    /// The moon's age in days (0..29; negative more than 30 days before the month's
    /// mean new moon); 0 for an invalid date.
    static int moonAge(const QDate& date);

private:
    struct Day {
        bool matched = false;
        int month = 0;
        int day = 0;
    };
    struct Year {
        int start = 0;
        QVector<Day> days;
    };
    struct Parsed {
        RKFileStamp stamp;
        /// Year elements by their "count", in file order.
        QHash<int, QVector<Year>> years;
    };
    QSharedPointer<const Parsed> parsed() const;

    mutable std::mutex myMutex;
    mutable QSharedPointer<const Parsed> myParsed;
};
