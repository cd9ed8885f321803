// rkcalendar holidays --format ics, checked against the rules of RFC 5545 that a
// calendar application relies on when it imports the file.

#include "RKToolSupport.h"

#include <QDate>
#include <QRegularExpression>
#include <QSet>

namespace {

// The logical content lines of an iCalendar text: CRLF-separated, folds joined.
QStringList unfold(const QByteArray& ics)
{
    QStringList lines;
    for (const QByteArray& physical : ics.split('\n')) {
        const QString line = QString::fromUtf8(physical.left(physical.size() - 1));
        if (line.startsWith(QLatin1Char(' ')) && !lines.isEmpty())
            lines.last() += line.mid(1);
        else
            lines << line;
    }
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

// A TEXT value back to its text; false when it holds an unescaped separator.
bool unescapeText(const QString& value, QString& text)
{
    text.clear();
    for (int i = 0; i < value.size(); ++i) {
        const QChar c = value.at(i);
        if (c == QLatin1Char(',') || c == QLatin1Char(';'))
            return false;
        if (c != QLatin1Char('\\')) {
            text += c;
            continue;
        }
        const QChar next = i + 1 < value.size() ? value.at(i + 1) : QChar();
        ++i;
        if (next == QLatin1Char('n') || next == QLatin1Char('N'))
            text += QLatin1Char('\n');
        else if (next == QLatin1Char('\\') || next == QLatin1Char(',') || next == QLatin1Char(';'))
            text += next;
        else
            return false;
    }
    return true;
}

} // namespace

class TestRkcalendarIcs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    void validCalendar_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<bool>("folds"); // the query has a summary longer than one line
        QTest::newRow("Bavaria, everything") << "--locale de_DE --province BY --from 2026 --to 2027 --features "
                                                "holidays,vacations,moonphases" << false;
        // 10 June 2004: two names, one with commas, together longer than a line.
        QTest::newRow("Portugal 2004") << "--locale pt_PT --year 2004" << true;
    }
    void validCalendar()
    {
        QFETCH(QString, query);
        QFETCH(bool, folds);
        const RKToolResult text = runRkcalendar(commandWords("holidays " + query));
        const RKToolResult ics = runRkcalendar(commandWords("holidays --format ics " + query));
        QCOMPARE(ics.exitCode, 0);
        const QByteArray bytes = ics.out.toUtf8();

        // Every line ends in CRLF and holds at most 75 octets; continuation lines start with a blank.
        QVERIFY(bytes.endsWith("\r\n"));
        bool folded = false;
        for (const QByteArray& physical : bytes.split('\n')) {
            if (physical.isEmpty())
                continue;
            QVERIFY2(physical.endsWith('\r'), physical.constData());
            QVERIFY2(physical.size() - 1 <= 75, physical.constData());
            QVERIFY(!physical.left(physical.size() - 1).contains('\r'));
            folded |= physical.startsWith(' ');
        }
        QCOMPARE(folded, folds);

        const QStringList lines = unfold(bytes);
        QCOMPARE(lines.first(), QStringLiteral("BEGIN:VCALENDAR"));
        QCOMPARE(lines.last(), QStringLiteral("END:VCALENDAR"));
        QCOMPARE(lines.count("VERSION:2.0"), 1);
        QCOMPARE(lines.filter(QRegularExpression("^PRODID:.+")).size(), 1);

        // Each VEVENT: one UID (unique in the file), DTSTAMP in UTC, an all-day DTSTART,
        // DTEND the next day, and a SUMMARY whose text is the day's names.
        QStringList summaries;
        QSet<QString> uids;
        QHash<QString, int> properties;
        bool inEvent = false;
        for (const QString& line : lines.mid(1, lines.size() - 2)) {
            if (line == QLatin1String("BEGIN:VEVENT")) {
                QVERIFY(!inEvent);
                inEvent = true;
                properties.clear();
                continue;
            }
            if (line == QLatin1String("END:VEVENT")) {
                QVERIFY(inEvent);
                inEvent = false;
                for (const char* required : {"UID", "DTSTAMP", "DTSTART;VALUE=DATE", "DTEND;VALUE=DATE", "SUMMARY"})
                    QVERIFY2(properties.value(required) == 1, required);
                continue;
            }
            const int colon = line.indexOf(QLatin1Char(':'));
            QVERIFY2(colon > 0, qPrintable(line));
            const QString name = line.left(colon);
            const QString value = line.mid(colon + 1);
            if (!inEvent)
                continue;
            ++properties[name];
            if (name == QLatin1String("UID")) {
                QVERIFY2(!uids.contains(value), qPrintable(value));
                uids.insert(value);
            } else if (name == QLatin1String("DTSTAMP")) {
                QVERIFY(QRegularExpression("^\\d{8}T\\d{6}Z$").match(value).hasMatch());
            } else if (name == QLatin1String("DTSTART;VALUE=DATE")) {
                properties.insert(QStringLiteral("start"), QDate::fromString(value, "yyyyMMdd").toJulianDay());
            } else if (name == QLatin1String("DTEND;VALUE=DATE")) {
                QCOMPARE(QDate::fromString(value, "yyyyMMdd").toJulianDay(), properties.value("start") + 1);
            } else if (name == QLatin1String("SUMMARY")) {
                QString summary;
                QVERIFY2(unescapeText(value, summary), qPrintable(value));
                QVERIFY(!summary.isEmpty());
                summaries << summary;
            }
        }
        QVERIFY(!inEvent);

        // One event per line of the text output, named alike where the data names the day.
        const QStringList textLines = text.lines();
        QCOMPARE(summaries.size(), textLines.size());
        for (int i = 0; i < textLines.size(); ++i) {
            const QString names = textLines.at(i).section(QLatin1Char('\t'), 2);
            if (!names.isEmpty())
                QCOMPARE(summaries.at(i), names);
        }

        // Exporting again gives the same UIDs, so a re-import replaces instead of duplicating.
        const QStringList again = unfold(runRkcalendar(commandWords("holidays --format ics " + query)).out.toUtf8());
        QCOMPARE(again.filter(QRegularExpression("^UID:")), lines.filter(QRegularExpression("^UID:")));
    }

    void unknownFormat()
    {
        const RKToolResult result = runRkcalendar(commandWords("holidays --locale de_DE --year 2026 --format csv"));
        QCOMPARE(result.exitCode, 2);
        QVERIFY(result.err.contains("unknown format \"csv\" (valid: text, ics)"));
    }
};

QTEST_GUILESS_MAIN(TestRkcalendarIcs)
#include "test_rkcalendar_ics.moc"
