// rkcalendar holidays --format ics, checked against the rules of RFC 5545 that a
// calendar application relies on when it imports the file.

#include "RKToolSupport.h"

#include <QDate>
#include <QRegularExpression>

namespace {

// The logical content lines of an iCalendar text given as its CRLF-terminated lines: folds joined.
QStringList unfold(const QStringList& physicalLines)
{
    QStringList lines;
    for (const QString& line : physicalLines) {
        if (line.startsWith(QLatin1Char(' ')) && !lines.isEmpty())
            lines.last() += line.mid(1);
        else
            lines << line;
    }
    return lines;
}

// A TEXT value back to its text (escapes of "\\", ",", ";" and line breaks undone).
QString unescapeText(const QString& value)
{
    QString text;
    for (int i = 0; i < value.size(); ++i) {
        const bool escaped = value.at(i) == QLatin1Char('\\') && i + 1 < value.size();
        const QChar c = value.at(escaped ? ++i : i);
        text += escaped && c.toLower() == QLatin1Char('n') ? QChar(QLatin1Char('\n')) : c;
    }
    return text;
}

// The properties of each VEVENT by name ("DTSTART;VALUE=DATE"); none when events nest or stay open.
QList<QMultiHash<QString, QString>> events(const QStringList& lines)
{
    QList<QMultiHash<QString, QString>> result;
    bool inEvent = false;
    for (const QString& line : lines) {
        if (line == QLatin1String("BEGIN:VEVENT") || line == QLatin1String("END:VEVENT")) {
            if (inEvent != line.startsWith(QLatin1String("END")))
                return {};
            inEvent = !inEvent;
            if (inEvent)
                result.append(QMultiHash<QString, QString>());
        } else if (inEvent) {
            result.last().insert(line.section(QLatin1Char(':'), 0, 0), line.section(QLatin1Char(':'), 1));
        }
    }
    return inEvent ? QList<QMultiHash<QString, QString>>() : result;
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

        // Every line ends in CRLF and holds at most 75 octets; continuation lines start with a blank.
        QStringList physicalLines = ics.out.split(QStringLiteral("\r\n"));
        QCOMPARE(physicalLines.takeLast(), QString()); // the last line ends in CRLF too
        bool folded = false;
        for (const QString& line : physicalLines) {
            QVERIFY2(line.toUtf8().size() <= 75, qPrintable(line));
            QVERIFY2(!line.contains(QLatin1Char('\r')), qPrintable(line));
            QVERIFY2(!line.contains(QLatin1Char('\n')), qPrintable(line));
            folded |= line.startsWith(QLatin1Char(' '));
        }
        QCOMPARE(folded, folds);

        const QStringList lines = unfold(physicalLines);
        QCOMPARE(lines.value(0), QStringLiteral("BEGIN:VCALENDAR"));
        QCOMPARE(lines.value(lines.size() - 1), QStringLiteral("END:VCALENDAR"));
        QCOMPARE(lines.count("VERSION:2.0"), 1);
        QCOMPARE(lines.filter(QRegularExpression("^PRODID:.+")).size(), 1);

        for (const QString& line : lines)
            QVERIFY2(line.indexOf(QLatin1Char(':')) > 0, qPrintable(line));

        // Each VEVENT: one UID (unique in the file), DTSTAMP in UTC, an all-day DTSTART,
        // DTEND the next day, and a SUMMARY of TEXT (separators escaped) that holds the day's names.
        static const QRegularExpression textValue(QStringLiteral(R"(^(?:[^\\,;]|\\[\\,;nN])+$)"));
        QStringList summaries;
        QStringList uids;
        for (const auto& event : events(lines)) {
            for (const char* required : {"UID", "DTSTAMP", "DTSTART;VALUE=DATE", "DTEND;VALUE=DATE", "SUMMARY"})
                QVERIFY2(event.count(required) == 1, required);
            uids << event.value("UID");
            QVERIFY(QRegularExpression("^\\d{8}T\\d{6}Z$").match(event.value("DTSTAMP")).hasMatch());
            const QDate start = QDate::fromString(event.value("DTSTART;VALUE=DATE"), "yyyyMMdd");
            QVERIFY(start.isValid());
            QCOMPARE(QDate::fromString(event.value("DTEND;VALUE=DATE"), "yyyyMMdd"), start.addDays(1));
            QVERIFY2(textValue.match(event.value("SUMMARY")).hasMatch(), qPrintable(event.value("SUMMARY")));
            summaries << unescapeText(event.value("SUMMARY"));
        }
        QCOMPARE(uids.removeDuplicates(), 0);

        // One event per line of the text output, named alike where the data names the day.
        const QStringList textLines = text.lines();
        QCOMPARE(summaries.size(), textLines.size());
        for (int i = 0; i < textLines.size(); ++i) {
            const QString names = textLines.at(i).section(QLatin1Char('\t'), 2);
            if (!names.isEmpty())
                QCOMPARE(summaries.at(i), names);
        }

        // Exporting again gives the same UIDs, so a re-import replaces instead of duplicating.
        const QStringList again = unfold(runRkcalendar(commandWords("holidays --format ics " + query)).out.split("\r\n", Qt::SkipEmptyParts));
        QCOMPARE(again.filter(QRegularExpression("^UID:")), lines.filter(QRegularExpression("^UID:")));
    }
};

QTEST_GUILESS_MAIN(TestRkcalendarIcs)
#include "test_rkcalendar_ics.moc"
