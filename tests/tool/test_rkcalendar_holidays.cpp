// The holiday commands of rkcalendar, run as a separate process: output format,
// the month grid's layout and the exit code of every kind of bad input.
// The holiday rules come from the fixture tests/data/tool (it replaces the shipped
// de_DE file); calendar words and moon phases are the shipped ones.

#include "RKTestSupport.h"

#include <QProcess>
#include <QRegularExpression>

namespace {

struct Result {
    int exitCode = -1;
    QString out;
    QString err;
};

Result runTool(const QStringList& args)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("RKXML_RESOURCE_PATH"), testDataPath(QStringLiteral("tool")));
    env.insert(QStringLiteral("RKXML_DATA_DIR"), shippedDataPath(QString()));
    env.insert(QStringLiteral("RKXML_WRITABLE_DIR"), QString::fromLocal8Bit(qgetenv("RKXML_WRITABLE_DIR")));
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(RKXML_RKCALENDAR_BINARY), args);
    Result result;
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return result;
    result.exitCode = process.exitCode();
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

QStringList lines(const QString& text)
{
    QStringList list = text.split(QLatin1Char('\n'));
    if (!list.isEmpty() && list.last().isEmpty())
        list.removeLast();
    return list;
}

// The grid's columns are six characters wide: week number, then Monday to Sunday.
const int CELL = 6;

QString cell(const QString& line, int column)
{
    return line.mid(column * CELL, CELL).trimmed();
}

QString stripAnsi(QString text)
{
    static const QRegularExpression escape(QStringLiteral("\x1b\\[[0-9;]*m"));
    return text.remove(escape);
}

} // namespace

class TestRkcalendarHolidays : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        QVERIFY(QFileInfo::exists(QStringLiteral(RKXML_RKCALENDAR_BINARY)));
    }

    void holidaysOfYear_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QStringList>("expected");

        const QStringList by2026 = {
            QStringLiteral("2026-01-01\tfree\tNeujahr"),
            QStringLiteral("2026-04-03\tfree\tKarfreitag"),
            QStringLiteral("2026-05-08\tshow\tEinmaliger Gedenktag"),
            QStringLiteral("2026-06-04\tfree\tFronleichnam"),
            // "free" nationwide and "free,show" in the province: one line, one name.
            QStringLiteral("2026-10-03\tfree, show\tTag der Deutschen Einheit"),
            QStringLiteral("2026-12-08\tshow\tMariä Empfängnis"),
            QStringLiteral("2026-12-24\tshow\tHeiligabend"),
            QStringLiteral("2026-12-25\tfree\t1. Weihnachtstag"),
            QStringLiteral("2026-12-26\tfree\t2. Weihnachtstag"),
        };
        QTest::newRow("Bavaria, holidays by default")
            << QStringList{QStringLiteral("holidays"), QStringLiteral("--locale"), QStringLiteral("de_DE"),
                           QStringLiteral("--province"), QStringLiteral("BY"), QStringLiteral("--year"),
                           QStringLiteral("2026")}
            << by2026;
        QTest::newRow("option=value form")
            << QStringList{QStringLiteral("holidays"), QStringLiteral("--locale=de-DE"), QStringLiteral("--province=BY"),
                           QStringLiteral("--year=2026"), QStringLiteral("--features=Holidays")}
            << by2026;
        QTest::newRow("nationwide only without province")
            << QStringList{QStringLiteral("holidays"), QStringLiteral("--locale"), QStringLiteral("de_DE"),
                           QStringLiteral("--year"), QStringLiteral("2026")}
            << QStringList{QStringLiteral("2026-01-01\tfree\tNeujahr"), QStringLiteral("2026-04-03\tfree\tKarfreitag"),
                           QStringLiteral("2026-05-08\tshow\tEinmaliger Gedenktag"),
                           QStringLiteral("2026-10-03\tfree\tTag der Deutschen Einheit"),
                           QStringLiteral("2026-12-24\tshow\tHeiligabend"),
                           QStringLiteral("2026-12-25\tfree\t1. Weihnachtstag"),
                           QStringLiteral("2026-12-26\tfree\t2. Weihnachtstag")};
        // Karfreitag 2027 is 26 March; the one-time day of 2026 is gone; vacation days carry no name.
        QTest::newRow("Saxony 2027 with vacations")
            << QStringList{QStringLiteral("holidays"), QStringLiteral("--locale"), QStringLiteral("de_DE"),
                           QStringLiteral("--province"), QStringLiteral("SN"), QStringLiteral("--year"),
                           QStringLiteral("2027"), QStringLiteral("--features"), QStringLiteral("holidays, vacations")}
            << QStringList{QStringLiteral("2027-01-01\tfree\tNeujahr"), QStringLiteral("2027-03-26\tfree\tKarfreitag"),
                           QStringLiteral("2027-10-03\tfree\tTag der Deutschen Einheit"),
                           QStringLiteral("2027-11-17\tfree\tBuß- und Bettag"),
                           QStringLiteral("2027-12-24\tshow\tHeiligabend"),
                           QStringLiteral("2027-12-25\tfree\t1. Weihnachtstag"),
                           QStringLiteral("2027-12-26\tfree\t2. Weihnachtstag")};
        // A vacation across New Year: each year gets its own days, merged with the holiday on 1 January.
        QTest::newRow("Bavaria 2027 vacations only")
            << QStringList{QStringLiteral("holidays"), QStringLiteral("--locale"), QStringLiteral("de_DE"),
                           QStringLiteral("--province"), QStringLiteral("BY"), QStringLiteral("--from"),
                           QStringLiteral("2027"), QStringLiteral("--to"), QStringLiteral("2027"),
                           QStringLiteral("--features"), QStringLiteral("vacations")}
            << QStringList{QStringLiteral("2027-01-01\tschool\t"), QStringLiteral("2027-01-02\tschool\t"),
                           QStringLiteral("2027-01-03\tschool\t"), QStringLiteral("2027-01-04\tschool\t"),
                           QStringLiteral("2027-01-05\tschool\t")};
    }

    void holidaysOfYear()
    {
        QFETCH(QStringList, args);
        QFETCH(QStringList, expected);
        const Result result = runTool(args);
        QCOMPARE(result.err, QString());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(lines(result.out), expected);
    }

    void holidayAndVacationOnOneDay()
    {
        const Result result = runTool({QStringLiteral("holidays"), QStringLiteral("--locale"), QStringLiteral("de_DE"),
                                       QStringLiteral("--province"), QStringLiteral("BY"), QStringLiteral("--year"),
                                       QStringLiteral("2026"), QStringLiteral("--features"),
                                       QStringLiteral("holidays,vacations")});
        QCOMPARE(result.exitCode, 0);
        const QStringList out = lines(result.out);
        // Keywords from the lowest bit upward, as the keyword table writes them.
        QVERIFY(out.contains(QStringLiteral("2026-12-24\tschool, show\tHeiligabend")));
        QVERIFY(out.contains(QStringLiteral("2026-12-25\tschool, free\t1. Weihnachtstag")));
        QVERIFY(out.contains(QStringLiteral("2026-12-31\tschool\t")));
        QVERIFY(out.contains(QStringLiteral("2026-10-26\tschool\t")));
        QCOMPARE(out.filter(QStringLiteral("\tschool")).size(), 5 + 8);
        QStringList sorted = out;
        sorted.sort();
        QCOMPARE(out, sorted);
    }

    void rangeIsTheYearsInOrder()
    {
        const QStringList common = {QStringLiteral("--locale"), QStringLiteral("de_DE"), QStringLiteral("--province"),
                                    QStringLiteral("BY"), QStringLiteral("--features"),
                                    QStringLiteral("holidays,vacations,moonphases")};
        QString joined;
        for (int year = 2025; year <= 2027; ++year) {
            const Result one = runTool(QStringList{QStringLiteral("holidays"), QStringLiteral("--year"),
                                                   QString::number(year)} + common);
            QCOMPARE(one.exitCode, 0);
            QVERIFY(!one.out.isEmpty());
            joined += one.out;
        }
        const Result range = runTool(QStringList{QStringLiteral("holidays"), QStringLiteral("--from"),
                                                 QStringLiteral("2025"), QStringLiteral("--to"),
                                                 QStringLiteral("2027")} + common);
        QCOMPARE(range.exitCode, 0);
        QCOMPARE(range.out, joined);
    }

    void moonPhasesFollowTheRing()
    {
        const Result result = runTool({QStringLiteral("holidays"), QStringLiteral("--locale"), QStringLiteral("de_DE"),
                                       QStringLiteral("--from"), QStringLiteral("2025"), QStringLiteral("--to"),
                                       QStringLiteral("2026"), QStringLiteral("--features"), QStringLiteral("moonphases")});
        QCOMPARE(result.exitCode, 0);
        const QStringList ring = {QStringLiteral("new_moon"), QStringLiteral("growing_crescent"),
                                  QStringLiteral("full_moon"), QStringLiteral("waning_crescent")};
        const QStringList out = lines(result.out);
        QVERIFY2(out.size() >= 2 * 49, qPrintable(QString::number(out.size())));
        QDate previous;
        int previousPhase = -1;
        for (const QString& line : out) {
            const QStringList fields = line.split(QLatin1Char('\t'));
            QCOMPARE(fields.size(), 3);
            const QDate date = QDate::fromString(fields.at(0), Qt::ISODate);
            const int phase = ring.indexOf(fields.at(1));
            QVERIFY2(date.isValid() && phase >= 0, qPrintable(line));
            QCOMPARE(fields.at(2), QString());
            if (previous.isValid()) {
                QCOMPARE(phase, (previousPhase + 1) % 4);
                QVERIFY2(previous.daysTo(date) >= 6 && previous.daysTo(date) <= 9, qPrintable(line));
            }
            previous = date;
            previousPhase = phase;
        }
    }

    void provinces()
    {
        const Result result = runTool({QStringLiteral("provinces"), QStringLiteral("--locale"), QStringLiteral("de_DE")});
        QCOMPARE(result.err, QString());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(lines(result.out), (QStringList{QStringLiteral("BY\tBayern"), QStringLiteral("SN\tSachsen")}));
    }

    void monthGrid_data()
    {
        QTest::addColumn<QString>("month");
        QTest::addColumn<int>("firstWeek");
        QTest::addColumn<int>("firstWeekday");
        QTest::addColumn<int>("lastDay");
        QTest::addColumn<int>("rows");

        QTest::newRow("2026-12 starts on Tuesday") << QStringLiteral("2026-12") << 49 << 2 << 31 << 5;
        QTest::newRow("2026-02 starts on Sunday") << QStringLiteral("2026-02") << 5 << 7 << 28 << 5;
        QTest::newRow("2027-01 in week 53 of 2026") << QStringLiteral("2027-01") << 53 << 5 << 31 << 5;
        QTest::newRow("2024-02 leap year") << QStringLiteral("2024-02") << 5 << 4 << 29 << 5;
        QTest::newRow("2021-02 four full weeks") << QStringLiteral("2021-02") << 5 << 1 << 28 << 4;
        QTest::newRow("2025-03 six rows") << QStringLiteral("2025-03") << 9 << 6 << 31 << 6;
        QTest::newRow("single-digit month") << QStringLiteral("2026-1") << 1 << 4 << 31 << 5;
    }

    void monthGrid()
    {
        QFETCH(QString, month);
        QFETCH(int, firstWeek);
        QFETCH(int, firstWeekday);
        QFETCH(int, lastDay);
        QFETCH(int, rows);

        const Result result = runTool({QStringLiteral("month"), month, QStringLiteral("--locale"),
                                       QStringLiteral("de_DE"), QStringLiteral("--features"), QStringLiteral("holidays"),
                                       QStringLiteral("--color"), QStringLiteral("never")});
        QCOMPARE(result.err, QString());
        QCOMPARE(result.exitCode, 0);
        const QStringList out = lines(result.out);
        QVERIFY(out.size() >= 2 + rows);

        const QString head = out.at(1);
        QCOMPARE(cell(head, 0), QStringLiteral("KW"));
        const QStringList weekdays = {QStringLiteral("Mo"), QStringLiteral("Di"), QStringLiteral("Mi"),
                                      QStringLiteral("Do"), QStringLiteral("Fr"), QStringLiteral("Sa"),
                                      QStringLiteral("So")};
        for (int day = 1; day <= 7; ++day)
            QCOMPARE(cell(head, day).left(2), weekdays.at(day - 1));

        // Day numbers run on from the first weekday, one row per week, with the week numbers on the left.
        int expectedDay = 1;
        for (int row = 0; row < rows; ++row) {
            const QString line = out.at(2 + row);
            const int week = cell(line, 0).toInt();
            if (row == 0)
                QCOMPARE(week, firstWeek);
            else
                QVERIFY2(week == firstWeek + row || (firstWeek >= 52 && week == row), qPrintable(line));
            for (int column = 1; column <= 7; ++column) {
                const QString text = cell(line, column).remove(QRegularExpression(QStringLiteral("\\D+$")));
                if ((row == 0 && column < firstWeekday) || expectedDay > lastDay) {
                    QVERIFY2(text.isEmpty(), qPrintable(line));
                    continue;
                }
                QCOMPARE(text, QString::number(expectedDay));
                ++expectedDay;
            }
        }
        QCOMPARE(expectedDay, lastDay + 1);
        QVERIFY(out.size() == 2 + rows || out.at(2 + rows).isEmpty());
    }

    void monthMarksAndNames()
    {
        const QStringList args = {QStringLiteral("month"), QStringLiteral("2026-12"), QStringLiteral("--locale"),
                                  QStringLiteral("de_DE"), QStringLiteral("--province"), QStringLiteral("BY")};
        const Result plain = runTool(args + QStringList{QStringLiteral("--color"), QStringLiteral("never")});
        QCOMPARE(plain.exitCode, 0);
        const QStringList out = lines(plain.out);
        QVERIFY(out.first().endsWith(QStringLiteral(" 2026")));
        QVERIFY(!plain.out.contains(QLatin1Char('\x1b')));

        QHash<int, QString> markers;
        for (int row = 2; row < out.size() && !out.at(row).isEmpty(); ++row) {
            for (int column = 1; column <= 7; ++column) {
                const QString text = cell(out.at(row), column);
                const int digits = text.indexOf(QRegularExpression(QStringLiteral("\\D")));
                if (!text.isEmpty())
                    markers.insert(text.left(digits < 0 ? text.size() : digits).toInt(),
                                   digits < 0 ? QString() : text.mid(digits));
            }
        }
        QCOMPARE(markers.size(), 31);
        QCOMPARE(markers.value(8), QStringLiteral("+"));
        QCOMPARE(markers.value(25), QStringLiteral("*s"));
        QCOMPARE(markers.value(23), QString());
        QCOMPARE(markers.value(2), QString());
        // Moon phases of December 2026 in Berlin time: last quarter 1st and 30th, new moon 9th,
        // first quarter 17th, full moon 24th (on Christmas Eve, with the vacation).
        QCOMPARE(markers.value(1), QString(QChar(0x25D1)));
        QCOMPARE(markers.value(9), QString(QChar(0x25CF)));
        QCOMPARE(markers.value(17), QString(QChar(0x25D0)));
        QCOMPARE(markers.value(24), QStringLiteral("+s") + QChar(0x25CB));
        QCOMPARE(markers.value(30), QStringLiteral("s") + QChar(0x25D1));

        QVERIFY(out.contains(QStringLiteral("  8 +  Mariä Empfängnis")));
        QVERIFY(out.contains(QStringLiteral(" 25 *  1. Weihnachtstag")));
        QVERIFY(out.contains(QStringLiteral("s   school vacation: 24-31")));

        // Without the province: neither the Bavarian day nor the Bavarian vacation.
        const Result nationwide = runTool({QStringLiteral("month"), QStringLiteral("2026-12"), QStringLiteral("--locale"),
                                           QStringLiteral("de_DE"), QStringLiteral("--color"), QStringLiteral("never")});
        QCOMPARE(nationwide.exitCode, 0);
        QVERIFY(!nationwide.out.contains(QStringLiteral("Mariä")));
        QVERIFY(!nationwide.out.contains(QStringLiteral("school vacation")));
        QVERIFY(nationwide.out.contains(QStringLiteral(" 24 +  Heiligabend")));

        // Colour adds escape sequences around marked day numbers and changes nothing else.
        const Result coloured = runTool(args + QStringList{QStringLiteral("--color"), QStringLiteral("always")});
        QCOMPARE(coloured.exitCode, 0);
        QVERIFY(coloured.out.contains(QStringLiteral("\x1b[1;31m 25\x1b[0m")));
        QCOMPARE(stripAnsi(coloured.out), plain.out);
        // Not a terminal: the default is plain text.
        QCOMPARE(runTool(args).out, plain.out);
    }

    void badInput_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("message");

        const QString h = QStringLiteral("holidays");
        const QString m = QStringLiteral("month");
        const QString l = QStringLiteral("--locale");
        const QString de = QStringLiteral("de_DE");
        const QString y = QStringLiteral("--year");
        QTest::newRow("unknown locale") << QStringList{h, l, QStringLiteral("xx_XX"), y, QStringLiteral("2026")}
                                        << QStringLiteral("unknown locale \"xx_XX\" (valid: ");
        QTest::newRow("locale without holidays") << QStringList{h, l, QStringLiteral("en_NZ"), y, QStringLiteral("2026")}
                                                 << QStringLiteral("unknown locale \"en_NZ\"");
        QTest::newRow("missing locale") << QStringList{h, y, QStringLiteral("2026")}
                                        << QStringLiteral("--locale is required (valid: ");
        QTest::newRow("unknown province") << QStringList{h, l, de, QStringLiteral("--province"), QStringLiteral("by"), y,
                                                         QStringLiteral("2026")}
                                          << QStringLiteral("unknown province \"by\" for de_DE (valid: BY, SN)");
        QTest::newRow("year not a number") << QStringList{h, l, de, y, QStringLiteral("20x6")}
                                           << QStringLiteral("--year \"20x6\" is not a year (valid: 1583 to 9999)");
        QTest::newRow("year too large") << QStringList{h, l, de, y, QStringLiteral("10000")}
                                        << QStringLiteral("is not a year");
        QTest::newRow("year before Gregorian") << QStringList{h, l, de, y, QStringLiteral("1400")}
                                               << QStringLiteral("is not a year");
        QTest::newRow("from after to") << QStringList{h, l, de, QStringLiteral("--from"), QStringLiteral("2027"),
                                                      QStringLiteral("--to"), QStringLiteral("2026")}
                                       << QStringLiteral("--from 2027 is after --to 2026");
        QTest::newRow("bad --to") << QStringList{h, l, de, QStringLiteral("--from"), QStringLiteral("2026"),
                                                 QStringLiteral("--to"), QStringLiteral("next")}
                                  << QStringLiteral("--to \"next\" is not a year");
        QTest::newRow("year and range") << QStringList{h, l, de, y, QStringLiteral("2026"), QStringLiteral("--from"),
                                                       QStringLiteral("2026"), QStringLiteral("--to"), QStringLiteral("2027")}
                                        << QStringLiteral("either --year Y or --from Y1 --to Y2");
        QTest::newRow("no year") << QStringList{h, l, de} << QStringLiteral("either --year Y or --from Y1 --to Y2");
        QTest::newRow("unknown feature") << QStringList{h, l, de, y, QStringLiteral("2026"), QStringLiteral("--features"),
                                                        QStringLiteral("holidays,holyday")}
                                         << QStringLiteral("unknown feature \"holyday\" (valid, comma-separated: ");
        QTest::newRow("empty feature") << QStringList{h, l, de, y, QStringLiteral("2026"), QStringLiteral("--features"),
                                                      QStringLiteral("holidays,")}
                                       << QStringLiteral("unknown feature \"\"");
        QTest::newRow("unknown option") << QStringList{h, l, de, y, QStringLiteral("2026"), QStringLiteral("--bogus")}
                                        << QStringLiteral("unknown option --bogus");
        QTest::newRow("missing value") << QStringList{h, l, de, y} << QStringLiteral("option --year needs a value");
        QTest::newRow("month 13") << QStringList{m, QStringLiteral("2026-13"), l, de}
                                  << QStringLiteral("\"2026-13\" is not a month (valid: YYYY-MM");
        QTest::newRow("month with slash") << QStringList{m, QStringLiteral("2026/12"), l, de}
                                          << QStringLiteral("is not a month");
        QTest::newRow("month as a date") << QStringList{m, QStringLiteral("2026-12-01"), l, de}
                                         << QStringLiteral("is not a month");
        QTest::newRow("month 0") << QStringList{m, QStringLiteral("2026-00"), l, de} << QStringLiteral("is not a month");
        QTest::newRow("month unknown province")
            << QStringList{m, QStringLiteral("2026-12"), l, de, QStringLiteral("--province"), QStringLiteral("XX")}
            << QStringLiteral("unknown province \"XX\"");
        QTest::newRow("month unknown locale") << QStringList{m, QStringLiteral("2026-12"), l, QStringLiteral("german")}
                                              << QStringLiteral("unknown locale \"german\"");
        QTest::newRow("month bad feature") << QStringList{m, QStringLiteral("2026-12"), l, de, QStringLiteral("--features"),
                                                          QStringLiteral("moon")}
                                           << QStringLiteral("unknown feature \"moon\"");
        QTest::newRow("month bad colour") << QStringList{m, QStringLiteral("2026-12"), l, de, QStringLiteral("--color"),
                                                         QStringLiteral("sometimes")}
                                          << QStringLiteral("(valid: auto, always, never)");
        QTest::newRow("provinces unknown locale") << QStringList{QStringLiteral("provinces"), l, QStringLiteral("de_XX")}
                                                  << QStringLiteral("unknown locale \"de_XX\"");
        QTest::newRow("provinces extra argument") << QStringList{QStringLiteral("provinces"), l, de, QStringLiteral("BY")}
                                                  << QStringLiteral("unexpected argument \"BY\"");
    }

    void badInput()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, message);
        const Result result = runTool(args);
        QCOMPARE(result.exitCode, 2);
        QCOMPARE(result.out, QString());
        QVERIFY2(result.err.contains(message), qPrintable(result.err));
        QVERIFY(result.err.endsWith(QLatin1Char('\n')));
    }
};

QTEST_GUILESS_MAIN(TestRkcalendarHolidays)
#include "test_rkcalendar_holidays.moc"
