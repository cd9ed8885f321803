// The holiday commands of rkcalendar, run as a separate process: text and iCalendar output,
// the month grid's layout and the exit code of every kind of bad input. The holiday rules
// come from the fixture tests/data/tool (it replaces the shipped de_DE file) except in the
// iCalendar test; calendar words and moon phases are the shipped ones.

#include "RKToolSupport.h"

#include <QRegularExpression>

namespace {

RKToolResult runTool(const QStringList& args)
{
    QProcessEnvironment env;
    env.insert("RKXML_RESOURCE_PATH", testDataPath("tool"));
    return runRkcalendar(args, env);
}

RKToolResult runTool(const QString& commandLine) { return runTool(commandWords(commandLine)); }

// The grid's columns are six characters wide: week number, then Monday to Sunday.
QString cell(const QString& line, int column) { return line.mid(column * 6, 6).trimmed(); }

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

class TestRkcalendarHolidays : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    void holidaysOfYear_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QStringList>("expected");
        // "free" nationwide and "free,show" in the province: one line, one name (3 October).
        const QStringList by2026 = {"2026-01-01\tfree\tNeujahr", "2026-04-03\tfree\tKarfreitag",
            "2026-05-08\tshow\tEinmaliger Gedenktag", "2026-06-04\tfree\tFronleichnam",
            "2026-10-03\tfree, show\tTag der Deutschen Einheit", "2026-12-08\tshow\tMariä Empfängnis",
            "2026-12-24\tshow\tHeiligabend", "2026-12-25\tfree\t1. Weihnachtstag", "2026-12-26\tfree\t2. Weihnachtstag"};
        QTest::newRow("Bavaria, holidays by default") << commandWords("holidays --locale de_DE --province BY --year 2026") << by2026;
        QTest::newRow("option=value form") << commandWords("holidays --locale=de-DE --province=BY --year=2026 --features=Holidays") << by2026;
        // Karfreitag 2027 is 26 March; the one-time day of 2026 is gone.
        QTest::newRow("Saxony 2027 with vacations")
            << commandWords("holidays --locale de_DE --province SN --year 2027 --features") + QStringList{"holidays, vacations"}
            << QStringList{"2027-01-01\tfree\tNeujahr", "2027-03-26\tfree\tKarfreitag", "2027-10-03\tfree\tTag der Deutschen Einheit",
                   "2027-11-17\tfree\tBuß- und Bettag", "2027-12-24\tshow\tHeiligabend", "2027-12-25\tfree\t1. Weihnachtstag",
                   "2027-12-26\tfree\t2. Weihnachtstag"};
        QTest::newRow("provinces") << commandWords("provinces --locale de_DE") << QStringList{"BY\tBayern", "SN\tSachsen"};
    }
    void holidaysOfYear()
    {
        QFETCH(QStringList, args);
        QFETCH(QStringList, expected);
        const RKToolResult result = runTool(args);
        // The fixture has no Saxon vacations in 2027, and says so.
        const bool saxony = args.contains("SN") && args.contains("holidays, vacations");
        QCOMPARE(result.err, saxony ? QString("rkcalendar holidays: warning: no school vacations known for de_DE in 2027\n") : QString());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.lines(), expected);
    }

    // With every feature: a range is its years one after another, the lines are in date
    // order, and all marks of a date share its line, keywords from the lowest bit upward as
    // the keyword table writes them.
    void everyFeature()
    {
        const QString common = " --locale de_DE --province BY --features holidays,vacations,moonphases";
        QString joined;
        for (int year = 2025; year <= 2027; ++year) {
            const RKToolResult one = runTool(QStringLiteral("holidays --year %1").arg(year) + common);
            QCOMPARE(one.exitCode, 0);
            QVERIFY(!one.out.isEmpty());
            joined += one.out;
        }
        const RKToolResult range = runTool("holidays --from 2025 --to 2027" + common);
        QCOMPARE(range.exitCode, 0);
        QCOMPARE(range.out, joined);

        const QStringList out = range.lines();
        QStringList sorted = out;
        sorted.sort();
        QCOMPARE(out, sorted);
        for (const char* line : {"2026-12-24\tfull_moon, school, show\tHeiligabend", "2026-12-25\tschool, free\t1. Weihnachtstag",
                 "2026-10-03\twaning_crescent, free, show\tTag der Deutschen Einheit", "2026-12-09\tnew_moon\t",
                 "2026-12-17\tgrowing_crescent\t", "2026-12-31\tschool\t"})
            QVERIFY2(out.contains(QString::fromUtf8(line)), line);
        // 2026: 13 vacation days; 12 new moons, 12 first and 13 last quarters, 13 full moons.
        QCOMPARE(out.filter(QRegularExpression("^2026-.*school")).size(), 5 + 8);
        QCOMPARE(out.filter(QRegularExpression("^2026-.*(_moon|_crescent)")).size(), 50);
    }

    // --format ics against the rules of RFC 5545 that a calendar application relies on when
    // it imports the file, with the shipped data.
    void icsIsValidCalendar_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<bool>("folds"); // the query has a summary longer than one line
        QTest::newRow("Bavaria, everything") << "--locale de_DE --province BY --from 2026 --to 2027 --features "
                                                "holidays,vacations,moonphases" << false;
        // 10 June 2004: two names, one with commas, together longer than a line.
        QTest::newRow("Portugal 2004") << "--locale pt_PT --year 2004" << true;
    }
    void icsIsValidCalendar()
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
            QVERIFY2(!line.contains(QRegularExpression(QStringLiteral("[\r\n]"))), qPrintable(line)); // no bare CR or LF
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

    void monthGrid_data()
    {
        QTest::addColumn<QString>("args");
        QTest::addColumn<QString>("marks"); // "day:marks" of the marked days, blank-separated
        QTest::addColumn<QStringList>("lines"); // title and legend lines among the output
        QTest::newRow("2026-12 starts on Tuesday") << "2026-12 --features holidays" << "24:+ 25:* 26:*" << QStringList{" 24 +  Heiligabend"};
        QTest::newRow("2026-02 starts on Sunday") << "2026-02 --features holidays" << "" << QStringList();
        QTest::newRow("2027-01 in week 53 of 2026") << "2027-01 --features holidays" << "1:*" << QStringList{"Januar 2027", "  1 *  Neujahr"};
        QTest::newRow("2024-02 leap year") << "2024-02 --features holidays" << "" << QStringList();
        QTest::newRow("2021-02 four full weeks") << "2021-02 --features holidays" << "" << QStringList();
        QTest::newRow("2025-03 six rows") << "2025-03 --features holidays" << "" << QStringList();
        QTest::newRow("single-digit month") << "2026-1 --features holidays" << "1:*" << QStringList();
        // Every feature by default. Moon phases of December 2026 in Berlin time: last quarter 1st
        // and 30th, new moon 9th, first quarter 17th, full moon 24th (with the vacation).
        QTest::newRow("2026-12 in Bavaria") << "2026-12 --province BY"
                                            << "1:◑ 8:+ 9:● 17:◐ 24:+s○ 25:*s 26:*s 27:s 28:s 29:s 30:s◑ 31:s"
                                            << QStringList{"Dezember 2026", "  8 +  Mariä Empfängnis", " 25 *  1. Weihnachtstag",
                                                   "s   school vacation: 24-31"};
    }
    void monthGrid()
    {
        QFETCH(QString, args);
        QFETCH(QString, marks);
        QFETCH(QStringList, lines);
        const RKToolResult result = runTool("month " + args + " --locale de_DE --color never");
        QCOMPARE(result.err, QString());
        QCOMPARE(result.exitCode, 0);
        const QStringList out = result.out.split(QLatin1Char('\n'));
        for (const QString& line : lines)
            QVERIFY2(out.contains(line), qPrintable(line));
        const QStringList head = {"KW", "Mo", "Di", "Mi", "Do", "Fr", "Sa", "So"};
        for (int column = 0; column <= 7; ++column)
            QCOMPARE(cell(out.value(1), column).left(2), head.at(column));

        // Each day in its weekday's column with its marks, one row per week, with the ISO week
        // number on the left; the cells outside the month are blank, and a blank line ends the grid.
        QHash<int, QString> marksOfDay;
        for (const QString& mark : marks.split(QLatin1Char(' '), Qt::SkipEmptyParts))
            marksOfDay.insert(mark.section(QLatin1Char(':'), 0, 0).toInt(), mark.section(QLatin1Char(':'), 1));
        const QDate first = QDate::fromString(args.section(QLatin1Char(' '), 0, 0) + "-1", "yyyy-M-d");
        QVERIFY(first.isValid());
        const int blanks = first.dayOfWeek() - 1;
        const int rows = (blanks + first.daysInMonth() + 6) / 7;
        for (int row = 0; row < rows; ++row) {
            const QString line = out.value(2 + row);
            QCOMPARE(cell(line, 0).toInt(), first.addDays(7 * row).weekNumber());
            for (int column = 1; column <= 7; ++column) {
                const int day = 7 * row + column - blanks;
                const bool inMonth = day >= 1 && day <= first.daysInMonth();
                QCOMPARE(cell(line, column), inMonth ? QString::number(day) + marksOfDay.value(day) : QString());
            }
        }
        QCOMPARE(out.value(2 + rows), QString());
    }

    // Colour adds escape sequences around marked day numbers and changes nothing else.
    void monthColour()
    {
        const QString args = "month 2026-12 --locale de_DE --province BY";
        const RKToolResult plain = runTool(args + " --color never");
        const RKToolResult coloured = runTool(args + " --color always");
        QCOMPARE(coloured.exitCode, 0);
        QVERIFY(coloured.out.contains("\x1b[1;31m 25\x1b[0m"));
        // Stripped of them, the coloured text is the plain one, which therefore has none.
        QCOMPARE(QString(coloured.out).remove(QRegularExpression("\x1b\\[[0-9;]*m")), plain.out);
        // Not a terminal: the default is plain text.
        QCOMPARE(runTool(args).out, plain.out);
    }

    void badInput_data()
    {
        QTest::addColumn<QString>("args");
        QTest::addColumn<QString>("message");
        const auto row = [](const char* name, const char* args, const char* message) { QTest::newRow(name) << args << message; };
        row("unknown locale", "holidays --locale xx_XX --year 2026", "unknown locale \"xx_XX\" (valid: ");
        // Every calendar language has holidays now; a real locale outside them stands in.
        row("locale without holidays", "holidays --locale en_ZA --year 2026", "unknown locale \"en_ZA\"");
        row("missing locale", "holidays --year 2026", "--locale is required (valid: ");
        row("unknown province", "holidays --locale de_DE --province by --year 2026", "unknown province \"by\" for de_DE (valid: BY, SN)");
        row("year not a number", "holidays --locale de_DE --year 20x6", "--year \"20x6\" is not a year (valid: 1583 to 9999)");
        row("year too large", "holidays --locale de_DE --year 10000", "is not a year");
        row("year before Gregorian", "holidays --locale de_DE --year 1400", "is not a year");
        row("from after to", "holidays --locale de_DE --from 2027 --to 2026", "--from 2027 is after --to 2026");
        row("bad --to", "holidays --locale de_DE --from 2026 --to next", "--to \"next\" is not a year");
        row("year and range", "holidays --locale de_DE --year 2026 --from 2026 --to 2027", "either --year Y or --from Y1 --to Y2");
        row("no year", "holidays --locale de_DE", "either --year Y or --from Y1 --to Y2");
        row("unknown feature", "holidays --locale de_DE --year 2026 --features holidays,holyday",
            "unknown feature \"holyday\" (valid, comma-separated: ");
        row("empty feature", "holidays --locale de_DE --year 2026 --features holidays,", "unknown feature \"\"");
        row("missing value", "holidays --locale de_DE --year", "missing value after '--year'");
        row("unknown format", "holidays --locale de_DE --year 2026 --format csv", "unknown format \"csv\" (valid: text, ics)");
        row("feature the tool ignores", "holidays --locale de_DE --year 2026 --features zodiacs", "unknown feature \"zodiacs\"");
        row("month 13", "month 2026-13 --locale de_DE", "\"2026-13\" is not a month (valid: YYYY-MM");
        row("month with slash", "month 2026/12 --locale de_DE", "is not a month");
        row("month as a date", "month 2026-12-01 --locale de_DE", "is not a month");
        row("month 0", "month 2026-00 --locale de_DE", "is not a month");
        row("month unknown locale", "month 2026-12 --locale german", "unknown locale \"german\"");
        row("month bad colour", "month 2026-12 --locale de_DE --color sometimes", "(valid: auto, always, never)");
        row("provinces unknown locale", "provinces --locale de_XX", "unknown locale \"de_XX\"");
        row("provinces extra argument", "provinces --locale de_DE BY", "unexpected argument \"BY\"");
    }
    void badInput()
    {
        QFETCH(QString, args);
        QFETCH(QString, message);
        const RKToolResult result = runTool(args);
        QCOMPARE(result.exitCode, 2);
        QCOMPARE(result.out, QString());
        QVERIFY2(result.err.contains(message), qPrintable(result.err));
        QVERIFY2(result.err.endsWith(QLatin1Char('\n')), qPrintable(result.err));
    }
};

QTEST_GUILESS_MAIN(TestRkcalendarHolidays)
#include "test_rkcalendar_holidays.moc"
