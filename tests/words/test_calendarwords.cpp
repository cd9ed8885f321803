#include "RKTestSupport.h"

#include <RKCalendarDayNames.h>
#include <RKCalendarWords.h>

#include <QDomDocument>

namespace {

// A "Language" element with `months` months and `days` weekdays named "M<n>"/"Month<n>"
// and "D<n>"/"Day<n>", and a week word unless `withWeek` is false.
QString languageXml(int months, int days, bool withWeek = true)
{
    QString xml = QStringLiteral("<Language language=\"de\" country=\"AT\"><monthnames>");
    for (int m = 1; m <= months; ++m)
        xml += QStringLiteral("<month><shortname name=\"M%1\"/><longname name=\"Month%1\"/></month>").arg(m);
    xml += QStringLiteral("</monthnames><daysofweek>");
    for (int d = 1; d <= days; ++d)
        xml += QStringLiteral("<day><shortname name=\"D%1\"/><longname name=\"Day%1\"/></day>").arg(d);
    xml += QStringLiteral("</daysofweek>");
    if (withWeek)
        xml += QStringLiteral("<weekname><shortname name=\"KW\"/><longname name=\"Kalenderwoche\"/></weekname>");
    return xml + QStringLiteral("</Language>");
}

QDomElement parse(const QString& xml)
{
    QDomDocument document;
    const bool parsed = document.setContent(xml);
    Q_ASSERT(parsed);
    Q_UNUSED(parsed);
    return document.documentElement();
}

}

class TestCalendarWords : public QObject
{
    Q_OBJECT

private slots:
    void defaultAtomicShowsPlaceholders()
    {
        const RKCalendarLocalizedNamedAtomic atomic;
        QCOMPARE(atomic.shortName(), QStringLiteral("nn"));
        QCOMPARE(atomic.longName(), QStringLiteral("unknown"));
    }

    void atomicMissingPartsAreEmpty_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<QString>("shortName");
        QTest::addColumn<QString>("longName");
        QTest::newRow("both") << "<day><shortname name=\"Mo\"/><longname name=\"Montag\"/></day>" << "Mo" << "Montag";
        QTest::newRow("short without name") << "<day><shortname/><longname name=\"Montag\"/></day>" << "" << "Montag";
        QTest::newRow("no long child") << "<day><shortname name=\"Mo\"/></day>" << "Mo" << "";
        QTest::newRow("nothing") << "<day/>" << "" << "";
        QTest::newRow("first child wins")
            << "<day><shortname name=\"A\"/><shortname name=\"B\"/><longname name=\"L1\"/><longname name=\"L2\"/></day>"
            << "A" << "L1";
        QTest::newRow("text is not trimmed") << "<day><shortname name=\" Mo \"/><longname name=\"x\"/></day>" << " Mo "
                                             << "x";
    }

    void atomicMissingPartsAreEmpty()
    {
        QFETCH(QString, xml);
        QFETCH(QString, shortName);
        QFETCH(QString, longName);
        const RKCalendarLocalizedNamedAtomic atomic(parse(xml));
        QCOMPARE(atomic.shortName(), shortName);
        QCOMPARE(atomic.longName(), longName);
        // Missing text is empty, never the placeholders of the default value.
        QVERIFY(atomic.shortName() != QLatin1String("nn"));
        QVERIFY(atomic.longName() != QLatin1String("unknown"));
    }

    void validityCountsEntries_data()
    {
        QTest::addColumn<int>("months");
        QTest::addColumn<int>("days");
        QTest::addColumn<bool>("monthsValid");
        QTest::addColumn<bool>("daysValid");
        QTest::newRow("complete") << 12 << 7 << true << true;
        QTest::newRow("six days") << 12 << 6 << true << false;
        QTest::newRow("eight days") << 12 << 8 << true << false;
        QTest::newRow("eleven months") << 11 << 7 << false << true;
        QTest::newRow("thirteen months") << 13 << 7 << false << true;
        QTest::newRow("empty lists") << 0 << 0 << false << false;
    }

    void validityCountsEntries()
    {
        QFETCH(int, months);
        QFETCH(int, days);
        QFETCH(bool, monthsValid);
        QFETCH(bool, daysValid);
        const RKCalendarWords words(parse(languageXml(months, days)));
        QCOMPARE(words.monthNames().count(), months);
        QCOMPARE(words.daysOfWeek().count(), days);
        QCOMPARE(words.monthNames().isValid(), monthsValid);
        QCOMPARE(words.daysOfWeek().isValid(), daysValid);
        QCOMPARE(words.isValid(), monthsValid && daysValid);
    }

    void lookUpsCountFromOneInFileOrder()
    {
        const RKCalendarWords words(parse(languageXml(12, 7)));
        QCOMPARE(words.language(), RKLocale(QStringLiteral("de"), QStringLiteral("AT")));
        for (int m = 1; m <= 12; ++m) {
            QCOMPARE(words.shortMonth(m), QStringLiteral("M%1").arg(m));
            QCOMPARE(words.longMonth(m), QStringLiteral("Month%1").arg(m));
        }
        for (int d = 1; d <= 7; ++d) {
            QCOMPARE(words.shortDayOfWeek(d), QStringLiteral("D%1").arg(d));
            QCOMPARE(words.longDayOfWeek(d), QStringLiteral("Day%1").arg(d));
        }
        QCOMPARE(words.shortWeek(), QStringLiteral("KW"));
        QCOMPARE(words.longWeek(), QStringLiteral("Kalenderwoche"));
    }

    void outOfRangeGivesPlaceholders_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("zero") << 0;
        QTest::newRow("minus one") << -1;
        QTest::newRow("thirteen") << 13;
        QTest::newRow("int min") << std::numeric_limits<int>::min();
        QTest::newRow("int max") << std::numeric_limits<int>::max();
    }

    void outOfRangeGivesPlaceholders()
    {
        QFETCH(int, index);
        const RKCalendarWords words(parse(languageXml(12, 7)));
        QCOMPARE(words.longMonth(index), QStringLiteral("unknown"));
        QCOMPARE(words.shortMonth(index), QStringLiteral("nn"));
        QCOMPARE(words.longDayOfWeek(index), QStringLiteral("unknown"));
        QCOMPARE(words.shortDayOfWeek(index), QStringLiteral("nn"));
        QCOMPARE(words.longDayOfWeek(8), QStringLiteral("unknown"));
        QCOMPARE(words.shortDayOfWeek(8), QStringLiteral("nn"));
    }

    void sixDaysMakeWordsInvalidButKeepTheirNames()
    {
        const RKCalendarWords words(parse(languageXml(12, 6)));
        QVERIFY(!words.isValid());
        QCOMPARE(words.longDayOfWeek(6), QStringLiteral("Day6"));
        QCOMPARE(words.longDayOfWeek(7), QStringLiteral("unknown"));
        QCOMPARE(words.longMonth(12), QStringLiteral("Month12"));
    }

    void missingWeekNameStillValid()
    {
        const RKCalendarWords words(parse(languageXml(12, 7, false)));
        QVERIFY(words.isValid());
        QCOMPARE(words.shortWeek(), QString());
        QCOMPARE(words.longWeek(), QString());
    }

    void otherChildElementsAreSkipped()
    {
        const RKCalendarWords words(parse(QStringLiteral(
            "<Language language=\"en\" country=\"GB\">"
            "<monthnames><month><shortname name=\"Jan\"/><longname name=\"January\"/></month>"
            "<note>not a month</note><day><shortname name=\"X\"/></day>"
            "<month><shortname name=\"Feb\"/><longname name=\"February\"/></month></monthnames>"
            "<monthnames><month><shortname name=\"ignored\"/></month></monthnames>"
            "<daysofweek><!-- comment --><day><shortname name=\"Mo\"/><longname name=\"Monday\"/></day>"
            "<month><shortname name=\"Y\"/></month></daysofweek></Language>")));
        QCOMPARE(words.monthNames().count(), 2);
        QCOMPARE(words.longMonth(2), QStringLiteral("February"));
        QCOMPARE(words.daysOfWeek().count(), 1);
        QCOMPARE(words.shortDayOfWeek(1), QStringLiteral("Mo"));
    }

    void defaultWordsAreInvalidAndEmpty()
    {
        const RKCalendarWords words;
        QVERIFY(!words.isValid());
        QVERIFY(!words.language().isValid());
        QCOMPARE(words.longMonth(1), QStringLiteral("unknown"));
        QCOMPARE(words.shortDayOfWeek(1), QStringLiteral("nn"));
        // The default week atomic, not an empty one.
        QCOMPARE(words.shortWeek(), QStringLiteral("nn"));
        QCOMPARE(words.longWeek(), QStringLiteral("unknown"));

        const RKCalendarWords fromNull{QDomElement()};
        QVERIFY(!fromNull.isValid());
        QCOMPARE(fromNull.monthNames().count(), 0);
        QCOMPARE(fromNull.longWeek(), QString());
    }

    void copiesAreIndependentValues()
    {
        RKCalendarWords original(parse(languageXml(12, 7)));
        RKCalendarWords copy = original;
        original = RKCalendarWords();
        QVERIFY(copy.isValid());
        QCOMPARE(copy.longMonth(3), QStringLiteral("Month3"));
        const RKCalendarWords moved = std::move(copy);
        QCOMPARE(moved.longDayOfWeek(7), QStringLiteral("Day7"));
    }

    void defaultDayNamesAreEmpty()
    {
        const RKCalendarDayNames names;
        QVERIFY(names.isEmpty());
        QVERIFY(names.dayOfWeekShort(1).isNull());
        QVERIFY(names.monthLong(1).isNull());
        QVERIFY(names.calendarWeekLong().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestCalendarWords)
#include "test_calendarwords.moc"
