#include "RKTestSupport.h"

#include <RKCalendariumContentKey.h>
#include <RKCalendariumFeatures.h>
#include <RKCalendariumHoliday.h>
#include <RKCalendariumHolidayDayPrototype.h>
#include <RKCalendariumHolidayList.h>
#include <RKCalendariumHolidayType.h>
#include <RKDateRange.h>
#include <RKProvinceSpecification.h>

#include <QHash>

class TestHolidayModel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    void typeFromKeywords_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value");
        QTest::newRow("free, show") << "free, show" << 96;
        QTest::newRow("capitalised") << "Free" << 32;
        QTest::newRow("empty") << "" << 0;
        QTest::newRow("not a keyword") << "holiday" << 0;
        QTest::newRow("empty parts") << ",,free," << 32;
        QTest::newRow("blanks") << " SHOW " << 64;
        QTest::newRow("none") << "none" << 0;
        QTest::newRow("NO_HOLIDAY is no row") << "NO_HOLIDAY" << 0;
        QTest::newRow("moon phases") << "new_moon,growing_crescent,full_moon,waning_crescent" << 15;
        QTest::newRow("school") << "school" << 16;
    }
    void typeFromKeywords()
    {
        QFETCH(QString, text);
        QFETCH(int, value);
        QCOMPARE(RKCalendariumHolidayType(text).toInt(), value);
    }

    void typeKeywordsRoundTrip()
    {
        // Every single flag writes its keyword and reads back to itself.
        for (int bit = 1; bit <= 64; bit <<= 1) {
            const RKCalendariumHolidayType type(static_cast<RKCalendariumHolidayTypeEnum>(bit));
            QVERIFY(type.encode() != QLatin1String("NO_HOLIDAY"));
            QCOMPARE(RKCalendariumHolidayType(type.encode()).toInt(), bit);
        }
        QCOMPARE(RKCalendariumHolidayType().encode(), QStringLiteral("NO_HOLIDAY"));
        QCOMPARE(RKCalendariumHolidayType(QStringLiteral("free,show")).encode(), QStringLiteral("NO_HOLIDAY"));
        QCOMPARE(RKCalendariumHolidayType(QStringLiteral("free,show")).encodeCSV(), QStringLiteral("free, show"));
    }

    void holidayValidityAndEquality()
    {
        const QDate day(2024, 5, 1);
        QVERIFY(!RKCalendariumHoliday(day, QStringLiteral("x"), RKCalendariumHolidayType()).isValid());
        QVERIFY(RKCalendariumHoliday(QDate(), RKCalendariumHolidayType(RKCalendariumHolidayTypeShow)).isValid());
        QVERIFY(!RKCalendariumHoliday().isValid());

        const RKCalendariumHoliday a(day, QStringLiteral("Tag der Arbeit"), RKCalendariumHolidayType(RKCalendariumHolidayTypeFree));
        QVERIFY(a == RKCalendariumHoliday(day, QStringLiteral("Tag der Arbeit"), RKCalendariumHolidayType(QStringLiteral("free"))));
        QVERIFY(a != RKCalendariumHoliday(day, QStringLiteral("Tag der Arbeit"), RKCalendariumHolidayType(RKCalendariumHolidayTypeShow)));
        QVERIFY(a != RKCalendariumHoliday(day.addDays(1), QStringLiteral("Tag der Arbeit"), RKCalendariumHolidayType(RKCalendariumHolidayTypeFree)));
        QVERIFY(a != RKCalendariumHoliday(day, QStringLiteral("Maifeiertag"), RKCalendariumHolidayType(RKCalendariumHolidayTypeFree)));
        QVERIFY(RKCalendariumHoliday(day, RKCalendariumHolidayType(RKCalendariumHolidayTypeFree)).description().isEmpty());
    }

    void longDescriptionAndDump()
    {
        const QDate day(2024, 12, 25);
        const RKCalendariumHoliday holiday(day, QStringLiteral("Weihnachten"), RKCalendariumHolidayType(RKCalendariumHolidayTypeFree));
        QCOMPARE(holiday.longDescription(),
            QStringLiteral("%1: \"Weihnachten\"").arg(QLocale().toString(day, QLocale::ShortFormat)));
        QTest::ignoreMessage(QtInfoMsg, "Tag:  \"2024-12-25\" :  \"Weihnachten\"  :  \"free\"");
        holiday.dump();
        const RKCalendariumHolidayList list{holiday};
        QTest::ignoreMessage(QtInfoMsg, "start");
        QTest::ignoreMessage(QtInfoMsg, "Tag:  \"2024-12-25\" :  \"Weihnachten\"  :  \"free\"");
        QTest::ignoreMessage(QtInfoMsg, " end");
        list.dump();
    }

    void listFilters()
    {
        const QDate d1(2024, 1, 1);
        const QDate d2(2024, 1, 2);
        const RKCalendariumHoliday free1(d1, QStringLiteral("A"), RKCalendariumHolidayType(QStringLiteral("free")));
        const RKCalendariumHoliday both1(d1, QStringLiteral("B"), RKCalendariumHolidayType(QStringLiteral("free,show")));
        const RKCalendariumHoliday show2(d2, QStringLiteral("C"), RKCalendariumHolidayType(QStringLiteral("show")));
        const RKCalendariumHoliday none2(d2, QStringLiteral("D"), RKCalendariumHolidayType());
        const RKCalendariumHolidayList list{free1, both1, show2, none2};

        QCOMPARE(list.filter(QDate()).size(), 0);
        QCOMPARE(list.filter(d1), (RKCalendariumHolidayList{free1, both1}));
        QCOMPARE(list.filter(d2), (RKCalendariumHolidayList{show2, none2}));
        QCOMPARE(list.filter(QDate(2024, 1, 3)).size(), 0);

        // Whole-value comparison, not a flag test.
        const RKCalendariumHolidayType free(RKCalendariumHolidayTypeFree);
        QCOMPARE(list.filter(free), (RKCalendariumHolidayList{free1}));
        QCOMPARE(list.filterAway(free), (RKCalendariumHolidayList{both1, show2, none2}));
        QCOMPARE(list.filterAway(RKCalendariumHolidayType()), (RKCalendariumHolidayList{free1, both1, show2}));
        QCOMPARE(list.size(), 4); // the receiver stays as it was
    }

    void filterAwayDoubles()
    {
        const RKCalendariumHolidayType free(RKCalendariumHolidayTypeFree);
        const RKCalendariumHoliday a(QDate(2024, 1, 1), QStringLiteral("A"), free);
        const RKCalendariumHoliday b(QDate(2024, 1, 2), QStringLiteral("B"), free);
        const RKCalendariumHoliday a2(QDate(2024, 1, 1), QStringLiteral("A"), free);
        const RKCalendariumHoliday c(QDate(2024, 1, 3), QStringLiteral("C"), free);
        QCOMPARE((RKCalendariumHolidayList{a, b, a2, c, b}).filterAwayDoubles(), (RKCalendariumHolidayList{a, b, c}));

        // Differing only in description, type or date: all kept.
        const RKCalendariumHoliday otherName(QDate(2024, 1, 1), QStringLiteral("A'"), free);
        const RKCalendariumHoliday otherType(QDate(2024, 1, 1), QStringLiteral("A"), RKCalendariumHolidayType(RKCalendariumHolidayTypeShow));
        const RKCalendariumHoliday nullDate(QDate(), QStringLiteral("A"), free);
        const RKCalendariumHolidayList distinct{a, otherName, otherType, nullDate, nullDate};
        QCOMPARE(distinct.filterAwayDoubles(), (RKCalendariumHolidayList{a, otherName, otherType, nullDate}));
        QCOMPARE(RKCalendariumHolidayList().filterAwayDoubles().size(), 0);
    }

    void prototypes()
    {
        const RKCalendariumHolidayDayPrototype empty;
        QCOMPARE(empty.id(), -1);
        QVERIFY(empty.description().isEmpty() && empty.abstractDate().isEmpty());
        QCOMPARE(empty.type().toInt(), 0);
        const RKCalendariumHolidayDayPrototype dated(QStringLiteral("Einheit"), RKCalendariumHolidayType(RKCalendariumHolidayTypeFree),
            QStringLiteral("xxxx-10-03"));
        QCOMPARE(dated.id(), -1);
        QCOMPARE(dated.abstractDate(), QStringLiteral("xxxx-10-03"));
        const RKCalendariumHolidayDayPrototype ruled(QStringLiteral("Ostern"), RKCalendariumHolidayType(RKCalendariumHolidayTypeFree),
            RKCalendariumHolidayDayId(4));
        QCOMPARE(ruled.id(), 4);
        QVERIFY(ruled.abstractDate().isEmpty());
    }

    void provinceSpecification()
    {
        const RKLocale german(QStringLiteral("de"), QStringLiteral("DE"));
        const RKProvinceSpecification upper(german, QStringLiteral("BY"));
        const RKProvinceSpecification lower(german, QStringLiteral("by"));
        QVERIFY(upper != lower);
        QVERIFY(upper == RKProvinceSpecification(german, QStringLiteral("BY")));
        QVERIFY(upper != RKProvinceSpecification(RKLocale(QStringLiteral("de"), QStringLiteral("AT")), QStringLiteral("BY")));
        QCOMPARE(upper.hashKey(), 1u);
        QCOMPARE(RKProvinceSpecification().hashKey(), 1u);
        QCOMPARE(qHash(lower), 1u);

        // One bucket for all: look-up still goes by equality.
        QHash<RKProvinceSpecification, int> table;
        table.insert(upper, 1);
        table.insert(lower, 2);
        table.insert(RKProvinceSpecification(german, QString()), 3);
        QCOMPARE(table.size(), 3);
        QCOMPARE(table.value(RKProvinceSpecification(german, QStringLiteral("by"))), 2);
        QCOMPARE(table.value(RKProvinceSpecification(german, QStringLiteral("BY"))), 1);
        QCOMPARE(table.value(RKProvinceSpecification(german, QStringLiteral("NW")), -1), -1);
    }

    void featuresDecode_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value");
        QTest::newRow("two words") << "holidays, vacations" << 9;
        QTest::newRow("any case") << "Holidays,MOONPHASES" << 17;
        QTest::newRow("camel case word") << "PERSONALENTRIES" << 4;
        QTest::newRow("unknown word") << "birthdays" << 0;
        QTest::newRow("empty") << "" << 0;
        QTest::newRow("padded") << " zodiacs , show_week_of_year " << 96;
        QTest::newRow("all") << "personalEntries,holidays,holiday_colors,vacations,moonphases,zodiacs,show_week_of_year" << 127;
    }
    void featuresDecode()
    {
        QFETCH(QString, text);
        QFETCH(int, value);
        const RKCalendariumFeatures features(text);
        QCOMPARE(features.toInt(), value);
        QCOMPARE(features.isValid(), value != 0);
    }

    void featuresEncode()
    {
        QCOMPARE(RKCalendariumFeatures(static_cast<RKCalendariumFeaturesEnum>(7)).encodeCSV(),
            QStringLiteral("holidays, holiday_colors, personalEntries"));
        QCOMPARE(RKCalendariumFeatures().encodeCSV(), QString());
        // Every value survives writing and reading.
        for (int value = 0; value < 128; ++value) {
            const RKCalendariumFeatures features(static_cast<RKCalendariumFeaturesEnum>(value));
            QCOMPARE(RKCalendariumFeatures(features.encodeCSV()).toInt(), value);
        }
    }

    void dateRange()
    {
        const RKDateRange february = RKDateRange::month(QDate(2024, 2, 17));
        QCOMPARE(february.first(), QDate(2024, 2, 1));
        QCOMPARE(february.last(), QDate(2024, 2, 29));
        QCOMPARE(february.days(), 29);
        QVERIFY(february.contains(QDate(2024, 2, 1)) && february.contains(QDate(2024, 2, 29)));
        QVERIFY(!february.contains(QDate(2024, 3, 1)) && !february.contains(QDate(2024, 1, 31)));
        QCOMPARE(RKDateRange::month(QDate(2023, 2, 1)).days(), 28);
        QCOMPARE(RKDateRange::month(QDate(2024, 12, 31)).last(), QDate(2024, 12, 31));
        QVERIFY(RKDateRange::month(QDate()).isEmpty());
        QCOMPARE(RKDateRange::month(QDate()).days(), 0);
        QVERIFY(!RKDateRange::month(QDate()).contains(QDate()));
        QCOMPARE(RKDateRange(QDate(2024, 1, 5), QDate(2024, 1, 1)).days(), 0);
    }
};

QTEST_GUILESS_MAIN(TestHolidayModel)
#include "test_holidaymodel.moc"
