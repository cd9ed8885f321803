// The holiday commands of rkcalendar, run as a separate process: output format,
// the month grid's layout and the exit code of every kind of bad input.
// The holiday rules come from the fixture tests/data/tool (it replaces the shipped
// de_DE file); calendar words and moon phases are the shipped ones.

#include "RKToolSupport.h"

#include <QRegularExpression>

namespace {

using Result = RKToolResult;

Result runTool(const QStringList& args)
{
    QProcessEnvironment env;
    env.insert("RKXML_RESOURCE_PATH", testDataPath("tool"));
    return runRkcalendar(args, env);
}

Result runTool(const QString& commandLine) { return runTool(commandWords(commandLine)); }

// The grid's columns are six characters wide: week number, then Monday to Sunday.
QString cell(const QString& line, int column) { return line.mid(column * 6, 6).trimmed(); }

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
        QTest::newRow("nationwide only without province") << commandWords("holidays --locale de_DE --year 2026")
            << QStringList{by2026[0], by2026[1], by2026[2], "2026-10-03\tfree\tTag der Deutschen Einheit", by2026[6], by2026[7], by2026[8]};
        // Karfreitag 2027 is 26 March; the one-time day of 2026 is gone; vacation days carry no name.
        QTest::newRow("Saxony 2027 with vacations")
            << commandWords("holidays --locale de_DE --province SN --year 2027 --features") + QStringList{"holidays, vacations"}
            << QStringList{"2027-01-01\tfree\tNeujahr", "2027-03-26\tfree\tKarfreitag", "2027-10-03\tfree\tTag der Deutschen Einheit",
                   "2027-11-17\tfree\tBuß- und Bettag", "2027-12-24\tshow\tHeiligabend", "2027-12-25\tfree\t1. Weihnachtstag",
                   "2027-12-26\tfree\t2. Weihnachtstag"};
        // A vacation across New Year: each year gets its own days.
        QTest::newRow("Bavaria 2027 vacations only") << commandWords("holidays --locale de_DE --province BY --from 2027 --to 2027 --features vacations")
            << QStringList{"2027-01-01\tschool\t", "2027-01-02\tschool\t", "2027-01-03\tschool\t", "2027-01-04\tschool\t", "2027-01-05\tschool\t"};
        QTest::newRow("provinces") << commandWords("provinces --locale de_DE") << QStringList{"BY\tBayern", "SN\tSachsen"};
    }
    void holidaysOfYear()
    {
        QFETCH(QStringList, args);
        QFETCH(QStringList, expected);
        const Result result = runTool(args);
        // The fixture has no Saxon vacations in 2027, and says so.
        const bool saxony = args.contains("SN") && args.contains("holidays, vacations");
        QCOMPARE(result.err, saxony ? QString("rkcalendar holidays: warning: no school vacations known for de_DE in 2027\n") : QString());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.lines(), expected);
    }

    // All marks of a date share its line, keywords from the lowest bit upward as the keyword
    // table writes them; the lines are in date order.
    void marksOfOneDateShareALine()
    {
        const Result result = runTool("holidays --locale de_DE --province BY --year 2026 --features holidays,vacations,moonphases");
        QCOMPARE(result.exitCode, 0);
        const QStringList out = result.lines();
        for (const char* line : {"2026-12-24\tfull_moon, school, show\tHeiligabend", "2026-12-25\tschool, free\t1. Weihnachtstag",
                 "2026-10-03\twaning_crescent, free, show\tTag der Deutschen Einheit", "2026-12-09\tnew_moon\t",
                 "2026-12-17\tgrowing_crescent\t", "2026-12-31\tschool\t"})
            QVERIFY2(out.contains(QString::fromUtf8(line)), line);
        // 13 vacation days; 12 new moons, 12 first and 13 last quarters, 13 full moons.
        QCOMPARE(out.filter("school").size(), 5 + 8);
        QCOMPARE(out.filter(QRegularExpression("_moon|_crescent")).size(), 50);
        QStringList sorted = out;
        sorted.sort();
        QCOMPARE(out, sorted);
    }

    void rangeIsTheYearsInOrder()
    {
        const QString common = " --locale de_DE --province BY --features holidays,vacations,moonphases";
        QString joined;
        for (int year = 2025; year <= 2027; ++year) {
            const Result one = runTool(QStringLiteral("holidays --year %1").arg(year) + common);
            QCOMPARE(one.exitCode, 0);
            QVERIFY(!one.out.isEmpty());
            joined += one.out;
        }
        const Result range = runTool("holidays --from 2025 --to 2027" + common);
        QCOMPARE(range.exitCode, 0);
        QCOMPARE(range.out, joined);
    }

    void monthGrid_data()
    {
        QTest::addColumn<QString>("month");
        QTest::newRow("2026-12 starts on Tuesday") << "2026-12";
        QTest::newRow("2026-02 starts on Sunday") << "2026-02";
        QTest::newRow("2027-01 in week 53 of 2026") << "2027-01";
        QTest::newRow("2024-02 leap year") << "2024-02";
        QTest::newRow("2021-02 four full weeks") << "2021-02";
        QTest::newRow("2025-03 six rows") << "2025-03";
        QTest::newRow("single-digit month") << "2026-1";
    }
    void monthGrid()
    {
        QFETCH(QString, month);
        const Result result = runTool("month " + month + " --locale de_DE --features holidays --color never");
        QCOMPARE(result.err, QString());
        QCOMPARE(result.exitCode, 0);
        const QStringList out = result.out.split(QLatin1Char('\n'));
        const QStringList head = {"KW", "Mo", "Di", "Mi", "Do", "Fr", "Sa", "So"};
        for (int column = 0; column <= 7; ++column)
            QCOMPARE(cell(out.value(1), column).left(2), head.at(column));

        // Day numbers run on from the first weekday, one row per week, with the ISO week number
        // on the left; the cells outside the month are blank, and a blank line ends the grid.
        const QDate first = QDate::fromString(month + "-1", "yyyy-M-d");
        QVERIFY(first.isValid());
        const int blanks = first.dayOfWeek() - 1;
        const int rows = (blanks + first.daysInMonth() + 6) / 7;
        for (int row = 0; row < rows; ++row) {
            const QString line = out.value(2 + row);
            QCOMPARE(cell(line, 0).toInt(), first.addDays(7 * row).weekNumber());
            for (int column = 1; column <= 7; ++column) {
                const int day = 7 * row + column - blanks;
                const QString number = day >= 1 && day <= first.daysInMonth() ? QString::number(day) : QString();
                QCOMPARE(cell(line, column).remove(QRegularExpression("\\D+$")), number);
            }
        }
        QCOMPARE(out.value(2 + rows), QString());
    }

    void monthMarksAndNames()
    {
        const QString args = "month 2026-12 --locale de_DE --province BY";
        const Result plain = runTool(args + " --color never");
        QCOMPARE(plain.exitCode, 0);
        const QStringList out = plain.out.split(QLatin1Char('\n'));
        QVERIFY(out.first().endsWith(" 2026"));
        QVERIFY(!plain.out.contains(QLatin1Char('\x1b')));

        QHash<int, QString> markers;
        for (int row = 2; row < out.size() && !out.at(row).isEmpty(); ++row) {
            for (int column = 1; column <= 7; ++column) {
                const QRegularExpressionMatch match = QRegularExpression("^(\\d+)(.*)$").match(cell(out.at(row), column));
                if (match.hasMatch())
                    markers.insert(match.captured(1).toInt(), match.captured(2));
            }
        }
        QCOMPARE(markers.size(), 31);
        // Moon phases of December 2026 in Berlin time: last quarter 1st and 30th, new moon 9th,
        // first quarter 17th, full moon 24th (on Christmas Eve, with the vacation).
        const QHash<int, QString> expected = {{8, "+"}, {25, "*s"}, {23, ""}, {2, ""}, {1, QString(QChar(0x25D1))},
            {9, QString(QChar(0x25CF))}, {17, QString(QChar(0x25D0))}, {24, "+s" + QString(QChar(0x25CB))},
            {30, "s" + QString(QChar(0x25D1))}};
        for (auto it = expected.cbegin(); it != expected.cend(); ++it)
            QCOMPARE(markers.value(it.key()), it.value());
        for (const char* legend : {"  8 +  Mariä Empfängnis", " 25 *  1. Weihnachtstag", "s   school vacation: 24-31"})
            QVERIFY2(out.contains(QString::fromUtf8(legend)), legend);

        // Without the province: neither the Bavarian day nor the Bavarian vacation.
        const Result nationwide = runTool("month 2026-12 --locale de_DE --color never");
        QCOMPARE(nationwide.exitCode, 0);
        QVERIFY(!nationwide.out.contains("Mariä"));
        QVERIFY(!nationwide.out.contains("school vacation"));
        QVERIFY(nationwide.out.contains(" 24 +  Heiligabend"));

        // Colour adds escape sequences around marked day numbers and changes nothing else.
        const Result coloured = runTool(args + " --color always");
        QCOMPARE(coloured.exitCode, 0);
        QVERIFY(coloured.out.contains("\x1b[1;31m 25\x1b[0m"));
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
        row("month unknown province", "month 2026-12 --locale de_DE --province XX", "unknown province \"XX\"");
        row("month unknown locale", "month 2026-12 --locale german", "unknown locale \"german\"");
        row("month bad feature", "month 2026-12 --locale de_DE --features moon", "unknown feature \"moon\"");
        row("month bad colour", "month 2026-12 --locale de_DE --color sometimes", "(valid: auto, always, never)");
        row("provinces unknown locale", "provinces --locale de_XX", "unknown locale \"de_XX\"");
        row("provinces extra argument", "provinces --locale de_DE BY", "unexpected argument \"BY\"");
    }
    void badInput()
    {
        QFETCH(QString, args);
        QFETCH(QString, message);
        const Result result = runTool(args);
        QCOMPARE(result.exitCode, 2);
        QCOMPARE(result.out, QString());
        QVERIFY2(result.err.contains(message), qPrintable(result.err));
        QVERIFY2(result.err.endsWith(QLatin1Char('\n')), qPrintable(result.err));
    }
};

QTEST_GUILESS_MAIN(TestRkcalendarHolidays)
#include "test_rkcalendar_holidays.moc"
