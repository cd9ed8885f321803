// Compiler instructions: what one does to an element, sets of them, the factory that makes
// a page's set from its content key and the holiday caches, and the cache that keeps the sets.

#include "RKTestSupport.h"

#include <RKAbstractHolidayCache.h>
#include <RKSVGCompilerInstructions.h>
#include <RKSVGCompilerInstructionsCache.h>
#include <RKSVGCompilerInstructionsFactory.h>

#include <QAtomicInt>
#include <QDomDocument>
#include <QThread>

namespace {
// Expected pages are written with single quotes, so that they need no escapes.
const QChar QUOTE = QLatin1Char('\'');
const RKLocale GERMAN(QStringLiteral("de"), QStringLiteral("DE"));

RKCalendariumContentKey keyOf(const QDate& date, const QString& features = QString(), const QString& province = QString(),
    const RKProjectIdentifier& project = RKProjectIdentifier())
{
    RKCalendariumHolidayConfig config;
    config.setLanguage(GERMAN);
    config.setProvince(province);
    config.setFeatures(RKCalendariumFeatures(features));
    return RKCalendariumContentKey(RKCalendariumContentConfig(date, config), project);
}

/// Marked days of a fixture: names, days off and pictures by date. Counts how often the factory
/// asks it for a day's names: once per day shown per build.
class FixtureHolidayCache : public RKAbstractHolidayCache
{
public:
    bool hasHolidayOfType(const RKCalendariumContentKey& day, const RKCalendariumHolidayType&) const override
    {
        return daysOff.contains(day.date());
    }
    QStringList holidaysAt(const RKCalendariumContentKey& day) const override
    {
        calls.ref();
        return names.value(day.date());
    }
    RKHolidayImage holidayImageAt(const RKCalendariumContentKey& day) const override
    {
        return images.value(day.date(), RKHolidayImage(QString(), QSize(-1, -1)));
    }
    QSet<QDate> daysOff;
    QHash<QDate, QStringList> names;
    QHash<QDate, RKHolidayImage> images;
    mutable QAtomicInt calls;
};

RKSVGCompilerInstructionsFactory& factory()
{
    return RKSingleton<RKSVGCompilerInstructionsFactory>::instance();
}

/// The value of the one instruction under `key` that sets `attribute` ("" for text); "<none>" or "<many>" otherwise.
QString valueOf(const RKSVGCompilerInstructions& set, const QString& key, const QString& attribute = QString())
{
    QStringList values;
    for (const RKSVGCompilerInstruction& instruction : set.replacements(key)) {
        if (instruction.targetAttribute() == attribute)
            values << instruction.targetValue();
    }
    return values.size() == 1 ? values.first() : values.isEmpty() ? QStringLiteral("<none>") : QStringLiteral("<many>");
}

/// Each "key=value" (or "key@attribute=value") entry of `expected` with the set's value for it, see valueOf().
QStringList valuesIn(const RKSVGCompilerInstructions& set, const QStringList& expected)
{
    QStringList actual;
    for (const QString& entry : expected) {
        const QString key = entry.section(QLatin1Char('='), 0, 0);
        actual << key + QLatin1Char('=') + valueOf(set, key.section(QLatin1Char('@'), 0, 0), key.section(QLatin1Char('@'), 1));
    }
    return actual;
}

RKSVGCompilerInstructions setOf(const QList<QPair<QString, RKSVGCompilerInstruction>>& entries, const QString& description)
{
    RKSVGCompilerInstructions set(QStringLiteral("vako:cal"));
    set.setDescription(description);
    for (const auto& entry : entries)
        set.addInstruction(entry.first, entry.second);
    return set;
}
}

class TestCompilerInstructions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    void applyText_data()
    {
        QTest::addColumn<QString>("element");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("first text child replaced, later kept") << "<text>a<tspan/>b</text>" << "5" << "<text>5<tspan/>b</text>";
        QTest::newRow("element first, then text") << "<text><tspan>x</tspan>old</text>" << "5" << "<text><tspan>x</tspan>5</text>";
        QTest::newRow("nested text only: appended after") << "<text><tspan>x</tspan></text>" << "5" << "<text><tspan>x</tspan>5</text>";
        QTest::newRow("uppercase attribute") << "<text text-transform='uppercase'>m</text>" << "März"
                                             << "<text text-transform='uppercase'>MÄRZ</text>";
        QTest::newRow("style wins over attribute") << "<text text-transform='uppercase' style='text-transform: Lowercase'/>" << "MÄRZ"
                                                   << "<text style='text-transform: Lowercase' text-transform='uppercase'>märz</text>";
        QTest::newRow("capitalize words") << "<text style='fill:red;text-transform:capitalize'/>" << "erster (mai) tag"
                                          << "<text style='fill:red;text-transform:capitalize'>Erster (Mai) Tag</text>";
        QTest::newRow("unknown transform is none") << "<text text-transform='shout'/>" << "ab" << "<text text-transform='shout'>ab</text>";
    }
    void applyText()
    {
        QFETCH(QString, element);
        QFETCH(QString, value);
        QFETCH(QString, expected);
        QDomDocument document;
        QVERIFY(document.setContent(element));
        QDomElement root = document.documentElement();
        const RKSVGCompilerInstruction instruction(value);
        instruction.applyInstruction(&root);
        QCOMPARE(canonicalLine(document, QUOTE), expected);
        // Applied again, the text node is reused, not doubled.
        instruction.applyInstruction(&root);
        QCOMPARE(canonicalLine(document, QUOTE), expected);
    }

    void attributeAndNothing()
    {
        QDomDocument document;
        document.setContent(QStringLiteral("<rect class=\"old\"/>"));
        QDomElement rect = document.documentElement();
        RKSVGCompilerInstruction(QStringLiteral("class"), QStringLiteral("new")).applyInstruction(&rect);
        RKSVGCompilerInstruction().applyInstruction(&rect);
        RKSVGCompilerInstruction(QStringLiteral("x")).applyInstruction(nullptr);
        QCOMPARE(document.toString(-1).trimmed(), QStringLiteral("<rect class=\"new\"/>"));
    }

    void replacementsNewestFirst()
    {
        RKSVGCompilerInstructions set;
        set.addInstruction(QStringLiteral("k"), QStringLiteral("first"));
        set.addInstruction(QStringLiteral("k"), QStringLiteral("class"), QStringLiteral("c"));
        set.addInstruction(QStringLiteral("k"), QStringLiteral("class"), QStringLiteral("c"));
        QStringList all;
        for (const RKSVGCompilerInstruction& instruction : set.replacements(QStringLiteral("k")))
            all << instruction.describe();
        QCOMPARE(all, (QStringList{"setAttribute: class=c", "setAttribute: class=c", "setText: =first"}));
        QTest::ignoreMessage(QtDebugMsg, "\"cm_imageholiday00\" setAttribute: xlink:href=moon.svg");
        set.addInstruction(QStringLiteral("cm_imageholiday00"), QStringLiteral("xlink:href"), QStringLiteral("moon.svg"));
    }

    void setEquality_data()
    {
        using Entries = QList<QPair<QString, RKSVGCompilerInstruction>>;
        const RKSVGCompilerInstruction a(QStringLiteral("a")), b(QStringLiteral("b")), c(QStringLiteral("class"), QStringLiteral("a"));
        QTest::addColumn<RKSVGCompilerInstructions>("left");
        QTest::addColumn<RKSVGCompilerInstructions>("right");
        QTest::addColumn<bool>("equal");
        QTest::newRow("order of adding does not matter") << setOf(Entries{{"k", a}, {"k", b}, {"j", c}}, "d") << setOf(Entries{{"j", c}, {"k", b}, {"k", a}}, "d") << true;
        QTest::newRow("description differs") << setOf(Entries{{"k", a}}, "d") << setOf(Entries{{"k", a}}, "e") << false;
        QTest::newRow("multiplicity counts") << setOf(Entries{{"k", a}, {"k", a}, {"k", b}}, "d") << setOf(Entries{{"k", a}, {"k", b}, {"k", b}}, "d") << false;
        QTest::newRow("same instruction, other key") << setOf(Entries{{"k", a}, {"j", b}}, "d") << setOf(Entries{{"k", b}, {"j", a}}, "d") << false;
        QTest::newRow("text versus attribute of same value") << setOf(Entries{{"k", a}}, "d") << setOf(Entries{{"k", RKSVGCompilerInstruction("class", "a")}}, "d") << false;
    }
    void setEquality()
    {
        QFETCH(RKSVGCompilerInstructions, left);
        QFETCH(RKSVGCompilerInstructions, right);
        QFETCH(bool, equal);
        QCOMPARE(left == right, equal);
        QCOMPARE(right == left, equal);
    }

    // The cache asks the factory once per key, also when threads ask at the same time.
    void cacheBuildsOnce()
    {
        static FixtureHolidayCache counter; // no marked days; outlives the factory's use of it
        RKSVGCompilerInstructionsCache& cache = RKSingleton<RKSVGCompilerInstructionsCache>::instance();
        const auto pageKey = [](const QString& project) {
            return keyOf(QDate(2024, 3, 1), QString(), QString(), RKProjectIdentifier(project, false));
        };
        factory().addHolidayCache(&counter);
        const RKSVGCompilerInstructions reference = factory().createInstructions(pageKey("p0"));
        const int perBuild = counter.calls.fetchAndStoreRelaxed(0);
        QVERIFY(perBuild > 0);

        const QStringList projects{QStringLiteral("p1"), QStringLiteral("p2"), QStringLiteral("p3")};
        QAtomicInt mismatches;
        QVector<QThread*> threads;
        for (int t = 0; t < 4; ++t) {
            threads.append(QThread::create([&]() {
                for (int round = 0; round < 3; ++round) {
                    for (const QString& project : projects) {
                        if (cache.instructions(pageKey(project)).allReplacements() != reference.allReplacements())
                            mismatches.ref();
                    }
                }
            }));
        }
        for (QThread* thread : threads)
            thread->start();
        for (QThread* thread : threads) {
            thread->wait();
            delete thread;
        }
        QCOMPARE(mismatches.loadRelaxed(), 0);
        QCOMPARE(counter.calls.loadRelaxed(), perBuild * projects.size());
        QCOMPARE(cache.size(), projects.size());

        cache.instructions(pageKey("p1"));
        QCOMPARE(counter.calls.loadRelaxed(), perBuild * projects.size());
        cache.clear();
        QCOMPARE(cache.size(), 0);
        cache.instructions(pageKey("p1"));
        QCOMPARE(counter.calls.loadRelaxed(), perBuild * (projects.size() + 1));
        factory().removeHolidayCache(&counter);
    }

    void noCache()
    {
        const RKCalendariumContentKey day = keyOf(QDate(2024, 12, 25), QStringLiteral("holidays"));
        QVERIFY(!factory().hasHolidayOfType(day));
        QVERIFY(factory().holidaysAt(day).isEmpty());
        QCOMPARE(factory().holidayImageAt(day), RKHolidayImage(QString(), QSize(-1, -1)));
        QVERIFY(factory().createInstructions(RKCalendariumContentKey()).isEmpty());
    }

    // A "0" in front of any number up to 9, negative ones too; strings other than one character stay.
    void as2DEdgeCases()
    {
        QCOMPARE(RKSVGCompilerInstructionsFactory::as2D(-3), QStringLiteral("0-3"));
        QCOMPARE(RKSVGCompilerInstructionsFactory::as2D(QString()), QString());
    }

    void weekRows_data()
    {
        QTest::addColumn<QDate>("month");
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<int>("rows");
        QTest::newRow("28 days from Monday") << QDate(2021, 2, 1) << "cm" << 4;
        QTest::newRow("31 days from Sunday") << QDate(2026, 3, 1) << "cm" << 6;
        QTest::newRow("list: 28 days from Monday") << QDate(2021, 2, 1) << "lcm" << 4;
        QTest::newRow("list: 31 days from Sunday") << QDate(2026, 3, 1) << "lcm" << 6;
    }
    void weekRows()
    {
        QFETCH(QDate, month);
        QFETCH(QString, prefix);
        QFETCH(int, rows);
        const RKSVGCompilerInstructions set = factory().createInstructions(keyOf(month));
        for (int i = 0; i < 6; ++i) {
            const QString expected = i < rows ? QStringLiteral("%1_cal_week%2").arg(prefix).arg(i) : prefix + QStringLiteral("_cal_week_empty");
            QCOMPARE(valueOf(set, QStringLiteral("%1_week%2_style").arg(prefix).arg(i), QStringLiteral("class")), expected);
        }
    }

    void yearsAndCover_data()
    {
        QTest::addColumn<QDate>("month");
        QTest::addColumn<QStringList>("values");
        QTest::newRow("January 2000") << QDate(2000, 1, 1)
                                      << QStringList{"cm_year_short=0", "cm_cov_start_year=2000", "cm_cov_end_year=2000",
                                             "pm_month_number2d=12", "cm_cov_oneyear_style@class=cov_oneyear",
                                             "cm_cov_twoyears_style@class=cov_twoyears_empty"};
        QTest::newRow("July 2009") << QDate(2009, 7, 1)
                                   << QStringList{"cm_year_short=9", "cm_cov_start_year=2009", "cm_cov_end_year=2010",
                                          "pm_month_number2d=06", "cm_cov_oneyear_style@class=cov_oneyear_empty",
                                          "cm_cov_twoyears_style@class=cov_twoyears"};
    }
    void yearsAndCover()
    {
        QFETCH(QDate, month);
        QFETCH(QStringList, values);
        const RKSVGCompilerInstructions set = factory().createInstructions(keyOf(month));
        QCOMPARE(valuesIn(set, values), values);
        QCOMPARE(set.replacements("cm_year").size(), 2); // from the month and from the year instructions
    }

    // March 2026 begins on a Sunday; April 2026 on a Wednesday.
    void cells_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("cell"); // "text|two-digit text|class|id"
        QTest::newRow("block: before the first") << "cm_day00" << "||cm_cal_weekday_empty|<none>";
        QTest::newRow("block: Sunday the first") << "cm_day06" << "1|01|cm_cal_sunday0|Day_2026-03-01";
        QTest::newRow("block: Saturday in row 4") << "cm_day45" << "28|28|cm_cal_saturday4|Day_2026-03-28";
        QTest::newRow("block: the 31st in row 5") << "cm_day51" << "31|31|cm_cal_weekday5|Day_2026-03-31";
        QTest::newRow("block: after the last") << "cm_day52" << "||cm_cal_weekday_empty|<none>";
        QTest::newRow("block: next month") << "nm_day02" << "1|01|nm_cal_weekday0|Day_2026-04-01";
        QTest::newRow("list: Sunday the first") << "lcm_day00" << "1|01|lcm_cal_sunday0|Day_2026-03-01";
        QTest::newRow("list: Monday starts row 1") << "lcm_day01" << "2|02|lcm_cal_weekday1|Day_2026-03-02";
        QTest::newRow("list: past April's end") << "lm01_day30" << "||lm01_cal_weekday_empty|<none>";
        QTest::newRow("list: 30 April") << "lm01_day29" << "30|30|lm01_cal_weekday4|Day_2026-04-30";
    }
    void cells()
    {
        QFETCH(QString, key);
        QFETCH(QString, cell);
        const RKSVGCompilerInstructions set = factory().createInstructions(keyOf(QDate(2026, 3, 1)));
        const QString day2d = QString(key).replace("_day", "_day2d");
        const QStringList values{valueOf(set, key), valueOf(set, day2d), valueOf(set, key + "_style", "class"),
            valueOf(set, key + "_style", "id")};
        QCOMPARE(values.join('|'), cell);
    }

    void listDayNames()
    {
        const RKSVGCompilerInstructions set = factory().createInstructions(keyOf(QDate(2026, 3, 1)));
        // ISO weeks 9 and 10 hold 1 and 2 March 2026.
        const QStringList expected{"lcm_dayname00=Sonntag", "lcm_dayname_short_uc01=MO", "cm_dayname_short_uc0=MO", "lcm_week0=9",
            "lcm_week1=10", "lcm_dayname00_style@class=lcm_cal_sunday0", "lcm_week-6_style@class=lcm_cal_week_empty"};
        QCOMPARE(valuesIn(set, expected), expected);
    }

    // 4 March 2024 (a Monday, cell "10") has twelve names and is a day off; 5 March (cell "11") has a picture.
    void holidaysOfCells()
    {
        FixtureHolidayCache fixture;
        QStringList twelve;
        for (int i = 1; i <= 12; ++i)
            twelve << QStringLiteral("n%1").arg(i);
        fixture.names.insert(QDate(2024, 3, 4), twelve);
        fixture.daysOff.insert(QDate(2024, 3, 4));
        fixture.images.insert(QDate(2024, 3, 5), RKHolidayImage(QStringLiteral("moon.svg"), QSize(30, 20)));
        factory().addHolidayCache(&fixture);
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("imageholiday"));
        const RKSVGCompilerInstructions set = factory().createInstructions(keyOf(QDate(2024, 3, 1)));
        factory().removeHolidayCache(&fixture);

        // Slots 0 to 9 of a cell take the first ten names; the cell's list takes all of them.
        const QStringList expected{"cm_day10_style@class=cm_cal_sunday1", "cm_holiday100=n1", "cm_holiday109=n10", "cm_holiday110=",
            "cm_holiday109_style@class=other_event", "cm_holiday110_style@class=no_event", "cm_holidays=4: " + twelve.join(','),
            "cm_imageholiday11@xlink:href=moon.svg", "cm_imageholiday11@vako:imagewidth=30", "cm_imageholiday11@vako:imageheight=20",
            "lcm_day03_style@class=lcm_cal_sunday1", "lcm_holiday039=n10"};
        QCOMPARE(valuesIn(set, expected), expected);
        QVERIFY(!set.contains("cm_imageholiday10"));
    }
};

QTEST_GUILESS_MAIN(TestCompilerInstructions)
#include "test_compilerinstructions.moc"
