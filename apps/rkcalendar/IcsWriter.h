#pragma once

#include "HolidayCommandSupport.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

/**
 * Writes marked days as one iCalendar object (RFC 5545): one all-day VEVENT per
 * marked date (DTSTART/DTEND as DATE values, DTEND the day after), text escaped,
 * lines ended by CRLF and folded at 75 octets without splitting a UTF-8 sequence.
 * A UID depends only on the date, the region and the day's names, so exporting
 * again replaces events in a calendar application instead of duplicating them.
 */
class IcsWriter
{
public:
    /// `region` names the calendar ("de_DE BY") and goes into every UID.
    explicit IcsWriter(const QString& region, const QDateTime& stamp = QDateTime::currentDateTimeUtc());

    QByteArray calendar(const QList<HolidayCommandSupport::MarkedDay>& days) const;

    /// TEXT value escaping: backslash, semicolon, comma and line breaks.
    static QString escapeText(const QString& text);
    /// "NAME:VALUE" as content lines of at most 75 octets each, CRLF-terminated.
    static QByteArray contentLine(const QString& line);

private:
    QString mySummaryFor(const HolidayCommandSupport::MarkedDay& day) const;

    QString myRegion;
    QDateTime myStamp;
};
