#include "IcsWriter.h"

#include <RKCalendariumHolidayType.h>

#include <QCryptographicHash>

namespace {

const int MAX_OCTETS = 75;

// A summary for days the data gives no name (school vacations, moon phases).
struct TypeSummary {
    RKCalendariumHolidayTypeEnum type;
    const char* text;
};
const TypeSummary TYPE_SUMMARIES[] = {
    {RKCalendariumHolidayTypeSchool, "School vacation"},
    {RKCalendariumHolidayTypeNewMoon, "New moon"},
    {RKCalendariumHolidayTypeGrowingCrescent, "First quarter"},
    {RKCalendariumHolidayTypeFullMoon, "Full moon"},
    {RKCalendariumHolidayTypeWaningCrescent, "Last quarter"},
};

bool isContinuationByte(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

} // namespace

IcsWriter::IcsWriter(const QString& region, const QDateTime& stamp)
    : myRegion(region)
    , myStamp(stamp.toUTC())
{
}

QString IcsWriter::escapeText(const QString& text)
{
    QString escaped;
    for (const QChar c : text) {
        if (c == QLatin1Char('\\') || c == QLatin1Char(';') || c == QLatin1Char(','))
            escaped += QLatin1Char('\\');
        if (c == QLatin1Char('\n'))
            escaped += QStringLiteral("\\n");
        else if (c != QLatin1Char('\r'))
            escaped += c;
    }
    return escaped;
}

QByteArray IcsWriter::contentLine(const QString& line)
{
    const QByteArray utf8 = line.toUtf8();
    QByteArray folded;
    int start = 0;
    int limit = MAX_OCTETS;
    while (utf8.size() - start > limit) {
        int end = start + limit;
        while (end > start && isContinuationByte(utf8.at(end)))
            --end;
        folded += utf8.mid(start, end - start) + "\r\n ";
        start = end;
        limit = MAX_OCTETS - 1; // the leading blank of a continuation line counts
    }
    return folded + utf8.mid(start) + "\r\n";
}

QString IcsWriter::mySummaryFor(const HolidayCommandSupport::MarkedDay& day) const
{
    if (!day.names.isEmpty())
        return day.names.join(QStringLiteral("; "));
    QStringList words;
    for (const TypeSummary& summary : TYPE_SUMMARIES) {
        if (day.type.toInt() & summary.type)
            words << QLatin1String(summary.text);
    }
    return words.join(QStringLiteral("; "));
}

QByteArray IcsWriter::calendar(const QList<HolidayCommandSupport::MarkedDay>& days) const
{
    QByteArray ics = contentLine(QStringLiteral("BEGIN:VCALENDAR")) + contentLine(QStringLiteral("VERSION:2.0"))
        + contentLine(QStringLiteral("PRODID:-//RKXML//rkcalendar 0.1//EN"))
        + contentLine(QStringLiteral("CALSCALE:GREGORIAN"))
        + contentLine(QStringLiteral("X-WR-CALNAME:") + escapeText(myRegion));
    const QString stamp = myStamp.toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
    for (const HolidayCommandSupport::MarkedDay& day : days) {
        const QString summary = mySummaryFor(day);
        const QByteArray identity = (day.date.toString(Qt::ISODate) + QLatin1Char('|') + myRegion + QLatin1Char('|')
            + summary).toUtf8();
        const QString uid = QString::fromLatin1(QCryptographicHash::hash(identity, QCryptographicHash::Sha1).toHex());
        const QString categories = escapeText(HolidayCommandSupport::typeKeywords(day.type))
                                       .replace(QStringLiteral("\\, "), QStringLiteral(","));
        ics += contentLine(QStringLiteral("BEGIN:VEVENT"))
            + contentLine(QStringLiteral("UID:%1-%2@rkcalendar").arg(day.date.toString(QStringLiteral("yyyyMMdd")), uid))
            + contentLine(QStringLiteral("DTSTAMP:") + stamp)
            + contentLine(QStringLiteral("DTSTART;VALUE=DATE:") + day.date.toString(QStringLiteral("yyyyMMdd")))
            + contentLine(QStringLiteral("DTEND;VALUE=DATE:") + day.date.addDays(1).toString(QStringLiteral("yyyyMMdd")))
            + contentLine(QStringLiteral("SUMMARY:") + escapeText(summary))
            + contentLine(QStringLiteral("CATEGORIES:") + categories)
            + contentLine(QStringLiteral("TRANSP:TRANSPARENT")) + contentLine(QStringLiteral("END:VEVENT"));
    }
    return ics + contentLine(QStringLiteral("END:VCALENDAR"));
}
