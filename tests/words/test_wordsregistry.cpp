#include "RKTestSupport.h"

#include <RKApplicationLocale.h>
#include <RKCalendarDayNames.h>
#include <RKCalendarWords.h>
#include <RKCalendarWordsRegistry.h>

#include <limits>

namespace {

RKLocale loc(const QString& name)
{
    return RKLocale::decodeName(name);
}

const RKCalendarWordsRegistry& registry()
{
    return RKSingleton<RKCalendarWordsRegistry>::instance();
}

void setApplicationLocale(const QString& name)
{
    RKSingleton<RKApplicationLocale>::instance().setLocale(QLocale(name));
}

// A "Language" element with months "M<n>"/"Month<n>", weekdays "D<n>"/"Day<n>" and, optionally, a week word.
RKCalendarWords languageWords(int months, int days, bool withWeek = true)
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
    return RKCalendarWords(testElement(xml + QStringLiteral("</Language>")));
}

}

// Parsing of one language's words, and the registry over the fixture in
// tests/data/words/registry, where each entry exercises one rule (see the
// comments in its words file). The resource path is set before the first use of
// any singleton, since the registry loads only once.
class TestWordsRegistry : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        qputenv("RKXML_RESOURCE_PATH", testDataPath(QStringLiteral("words/registry")).toLocal8Bit());
        setApplicationLocale(QStringLiteral("en_GB"));
    }

    void atomicMissingPartsAreEmpty_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<QString>("shortName");
        QTest::addColumn<QString>("longName");
        QTest::newRow("short without name") << "<day><shortname/><longname name=\"Montag\"/></day>" << "" << "Montag";
        QTest::newRow("no long child") << "<day><shortname name=\"Mo\"/></day>" << "Mo" << "";
        QTest::newRow("first child wins") << "<day><shortname name=\"A\"/><shortname name=\"B\"/><longname name=\"L1\"/><longname name=\"L2\"/></day>" << "A" << "L1";
        QTest::newRow("text is not trimmed") << "<day><shortname name=\" Mo \"/><longname name=\"x\"/></day>" << " Mo " << "x";
    }

    void atomicMissingPartsAreEmpty()
    {
        QFETCH(QString, xml);
        QFETCH(QString, shortName);
        QFETCH(QString, longName);
        // Missing text is empty, never the "nn"/"unknown" placeholders of a default value.
        const RKCalendarLocalizedNamedAtomic atomic(testElement(xml));
        QCOMPARE(atomic.shortName(), shortName);
        QCOMPARE(atomic.longName(), longName);
    }

    void wordsCountEntriesAndLookUpFromOne_data()
    {
        QTest::addColumn<int>("months");
        QTest::addColumn<int>("days");
        QTest::addColumn<bool>("withWeek");
        QTest::newRow("complete") << 12 << 7 << true;
        QTest::newRow("no week word is still valid") << 12 << 7 << false;
        QTest::newRow("six days") << 12 << 6 << true;
        QTest::newRow("eight days") << 12 << 8 << true;
        QTest::newRow("eleven months") << 11 << 7 << true;
        QTest::newRow("thirteen months") << 13 << 7 << true;
    }

    void wordsCountEntriesAndLookUpFromOne()
    {
        QFETCH(int, months);
        QFETCH(int, days);
        QFETCH(bool, withWeek);
        const RKCalendarWords words = languageWords(months, days, withWeek);
        QCOMPARE(words.language(), loc(QStringLiteral("de_AT")));
        QCOMPARE(words.monthNames().count(), months);
        QCOMPARE(words.daysOfWeek().count(), days);
        QCOMPARE(words.isValid(), months == 12 && days == 7);
        // Invalid lists keep all their names; numbers outside the list give the placeholders.
        for (int m = 0; m <= 13; ++m) {
            const bool known = m >= 1 && m <= months;
            QCOMPARE(words.shortMonth(m) + QLatin1Char('|') + words.longMonth(m), known ? QStringLiteral("M%1|Month%1").arg(m) : QStringLiteral("nn|unknown"));
        }
        for (int d = -1; d <= 8; ++d) {
            const bool known = d >= 1 && d <= days;
            QCOMPARE(words.shortDayOfWeek(d) + QLatin1Char('|') + words.longDayOfWeek(d), known ? QStringLiteral("D%1|Day%1").arg(d) : QStringLiteral("nn|unknown"));
        }
        QCOMPARE(words.longMonth(std::numeric_limits<int>::min()), QStringLiteral("unknown"));
        QCOMPARE(words.shortWeek() + words.longWeek(), withWeek ? QStringLiteral("KWKalenderwoche") : QString());
    }

    void otherChildElementsAreSkipped()
    {
        const RKCalendarWords words(testElement(QStringLiteral(
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

    void defaultValuesShowPlaceholders()
    {
        const RKCalendarLocalizedNamedAtomic atomic;
        const RKCalendarWords words;
        QVERIFY(!words.isValid());
        QVERIFY(!words.language().isValid());
        // The default week atomic, not an empty one; a null element gives empty week words.
        QCOMPARE((QStringList{atomic.shortName(), atomic.longName(), words.longMonth(1), words.shortWeek(), words.longWeek()}),
            (QStringList{QStringLiteral("nn"), QStringLiteral("unknown"), QStringLiteral("unknown"), QStringLiteral("nn"), QStringLiteral("unknown")}));
        const RKCalendarWords fromNull{QDomElement()};
        QVERIFY(!fromNull.isValid());
        QVERIFY(fromNull.longWeek().isEmpty());
        const RKCalendarDayNames noNames;
        QVERIFY(noNames.isEmpty());
        QVERIFY(noNames.monthLong(1).isNull());
    }

    void languagesInFileOrderWithDuplicates()
    {
        QList<RKLocale> expected;
        for (const char* name : {"de_AT", "de_DE", "fr_CA", "fr_FR", "it_IT", "en_GB", "nl_NL", "nl_NL"})
            expected << loc(QString::fromLatin1(name));
        QCOMPARE(registry().availalbleCalendarLanguages(), expected);
    }

    void wordsForLocale_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("used"); // empty: no entry at all
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("january");
        QTest::addColumn<QString>("december");
        QTest::addColumn<QString>("week");
        // de_AT is listed first; de_DE must still get its own words.
        QTest::newRow("de_DE") << "de_DE" << "de_DE" << true << "Januar" << "Dezember" << "Kalenderwoche";
        QTest::newRow("later duplicate replaces earlier") << "nl_NL" << "nl_NL" << true << "januari" << "december" << "week";
        // Otherwise the first complete entry of the language, in the languages file's order.
        QTest::newRow("country not in files") << "de_CH" << "de_AT" << true << "Jänner" << "Dezember" << "Kalenderwoche";
        QTest::newRow("incomplete first entry skipped") << "fr_BE" << "fr_FR" << true << "janvier" << "décembre" << "Semaine";
        QTest::newRow("incomplete entry uses another country") << "fr_CA" << "fr_FR" << true << "janvier" << "décembre" << "Semaine";
        QTest::newRow("incomplete without alternative") << "it_IT" << "it_IT" << false << "gennaio" << "unknown" << "Settimana";
        QTest::newRow("same language finds incomplete") << "it_CH" << "it_IT" << false << "gennaio" << "unknown" << "Settimana";
        QTest::newRow("words but not listed") << "es_ES" << "" << false << "unknown" << "unknown" << "unknown";
        QTest::newRow("listed only as a non-Language element") << "sv_SE" << "" << false << "unknown" << "unknown" << "unknown";
        QTest::newRow("invalid locale") << "" << "" << false << "unknown" << "unknown" << "unknown";
    }

    void wordsForLocale()
    {
        QFETCH(QString, locale);
        QFETCH(QString, used);
        QFETCH(bool, valid);
        QFETCH(QString, january);
        QFETCH(QString, december);
        QFETCH(QString, week);
        const RKLocale l = loc(locale);
        const RKCalendarWords words = registry().words(l);
        QCOMPARE(words.language(), loc(used));
        QCOMPARE(words.isValid(), valid);
        QCOMPARE(registry().monthNameLong(l, 1), january);
        QCOMPARE(registry().monthNameLong(l, 12), december);
        QCOMPARE(registry().weekLong(l), week);
        QVERIFY(!used.isEmpty() || !registry().availalbleCalendarLanguages().contains(l));
        // Every look-up, and the snapshot that fills pages, answers with the entry used; the snapshot is null outside 1-7/1-12.
        const RKCalendarDayNames names(l);
        for (int n = 0; n <= 13; ++n) {
            const bool day = n >= 1 && n <= 7, month = n >= 1 && n <= 12;
            QCOMPARE((QStringList{registry().dayName(l, n, true), registry().dayName(l, n, false), registry().monthNameShort(l, n)}),
                (QStringList{words.shortDayOfWeek(n), words.longDayOfWeek(n), words.shortMonth(n)}));
            QCOMPARE((QStringList{names.dayOfWeekShort(n), names.dayOfWeekLong(n), names.monthShort(n), names.monthLong(n)}),
                (QStringList{day ? words.shortDayOfWeek(n) : QString(), day ? words.longDayOfWeek(n) : QString(),
                    month ? words.shortMonth(n) : QString(), month ? words.longMonth(n) : QString()}));
        }
        QCOMPARE((QStringList{registry().weekShort(l), names.calendarWeekShort(), names.calendarWeekLong()}), (QStringList{words.shortWeek(), words.shortWeek(), week}));
    }

    void monthNamesLongSortsAndJoins_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QList<int>>("months");
        QTest::addColumn<QString>("expected");
        QTest::newRow("12,1,3") << "en_GB" << QList<int>{12, 1, 3} << "January, March, December";
        QTest::newRow("one month") << "de_DE" << QList<int>{3} << "März";
        QTest::newRow("empty") << "de_DE" << QList<int>{} << "";
        QTest::newRow("out of range kept") << "de_DE" << QList<int>{13, 2, 0} << "unknown, Februar, unknown";
    }

    void monthNamesLongSortsAndJoins()
    {
        QFETCH(QString, locale);
        QFETCH(QList<int>, months);
        QFETCH(QString, expected);
        QCOMPARE(registry().monthNamesLong(loc(locale), QSet<int>(months.begin(), months.end())), expected);
    }

    void applicationLocaleGivesMonthMapAndDefault_data()
    {
        QTest::addColumn<QString>("applicationLocale");
        QTest::addColumn<QString>("january");
        QTest::addColumn<QString>("december");
        QTest::newRow("de_AT") << "de_AT" << "Jänner" << "Dezember";
        QTest::newRow("C locale") << "C" << "unknown" << "unknown";
    }

    void applicationLocaleGivesMonthMapAndDefault()
    {
        QFETCH(QString, applicationLocale);
        QFETCH(QString, january);
        QFETCH(QString, december);
        setApplicationLocale(applicationLocale);
        const QMap<int, QString> map = registry().createMonthMap();
        const RKLocale defaultLanguage = registry().defaultLanguage();
        setApplicationLocale(QStringLiteral("en_GB"));
        QCOMPARE(map.keys(), (QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
        QCOMPARE(map.value(1), january);
        QCOMPARE(map.value(12), december);
        if (applicationLocale != QLatin1String("C"))
            QCOMPARE(defaultLanguage, loc(applicationLocale));
    }
};

QTEST_GUILESS_MAIN(TestWordsRegistry)
#include "test_wordsregistry.moc"
