#include "private/RKMoonPhaseFile.h"

#include <RKResourceFile.h>
#include <RKXMLLoader.h>

#include <QDomElement>
#include <QRegularExpression>

#include <cmath>

namespace {
const QString STR_START = QStringLiteral("start");
const QString STR_COUNT = QStringLiteral("count");

/// The order in which the listed days of a year take their phase.
const RKCalendariumHolidayTypeEnum PHASE_RING[] = {
    RKCalendariumHolidayTypeNewMoon,
    RKCalendariumHolidayTypeGrowingCrescent,
    RKCalendariumHolidayTypeFullMoon,
    RKCalendariumHolidayTypeWaningCrescent,
};
const unsigned int PHASE_COUNT = sizeof(PHASE_RING) / sizeof(PHASE_RING[0]);
}

QSharedPointer<const RKMoonPhaseFile::Parsed> RKMoonPhaseFile::parsed() const
{
    const RKFileStamp stamp = RKFileStamp::of(RKResourceFile(RKResourceMoonPhases).fileInfo(false, QString()));
    std::lock_guard<std::mutex> lock(myMutex);
    if (myParsed && myParsed->stamp == stamp)
        return myParsed;
    QSharedPointer<Parsed> file(new Parsed);
    file->stamp = stamp;
    const QDomElement root = stamp.exists ? RKXMLLoader::loadDocumentElement(stamp.path) : QDomElement();
    static const QRegularExpression monthAndDay(QStringLiteral("(\\d+)\\D+(\\d+)"));
    for (QDomElement yearElement = root.firstChildElement(); !yearElement.isNull();
         yearElement = yearElement.nextSiblingElement()) {
        Year year;
        year.start = yearElement.attribute(STR_START).toInt(nullptr, 10);
        for (QDomElement dayElement = yearElement.firstChildElement(); !dayElement.isNull();
             dayElement = dayElement.nextSiblingElement()) {
            Day day;
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
    myParsed = file;
    return myParsed;
}

RKCalendariumHolidayList RKMoonPhaseFile::phasesOfYear(int year) const
{
    RKCalendariumHolidayList days;
    const QSharedPointer<const Parsed> file = parsed();
    const auto found = file->years.constFind(year);
    if (found == file->years.constEnd())
        return days;
    for (const Year& yearEntry : found.value()) {
        // Rotating the phase ring start - 1 times leaves it at (start - 1) mod 4.
        unsigned int position = yearEntry.start < 2 ? 0u : static_cast<unsigned int>(yearEntry.start - 1) % PHASE_COUNT;
        for (const Day& day : yearEntry.days) {
            const RKCalendariumHolidayTypeEnum phase = PHASE_RING[position];
            // A text that does not match still uses up its phase.
            position = (position + 1u) % PHASE_COUNT;
            if (day.matched)
                days.append(RKCalendariumHoliday(QDate(year, day.month, day.day), RKCalendariumHolidayType(phase)));
        }
    }
    return days;
}

void RKMoonPhaseFile::clear()
{
    std::lock_guard<std::mutex> lock(myMutex);
    myParsed.reset();
}

int RKMoonPhaseFile::moonAge(const QDate& date)
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
