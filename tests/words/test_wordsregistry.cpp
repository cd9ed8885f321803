#include "RKTestSupport.h"

#include <RKApplicationLocale.h>
#include <RKCalendarDayNames.h>
#include <RKCalendarWordsRegistry.h>

namespace {

RKLocale loc(const char* name)
{
    return RKLocale::decodeName(QString::fromLatin1(name));
}

const RKCalendarWordsRegistry& registry()
{
    return RKSingleton<RKCalendarWordsRegistry>::instance();
}

}

/*
 * The registry over the fixture in tests/data/words/registry, where each entry
 * exercises one rule (see the comments in its words file). The resource path is
 * set before the first use of any singleton, since the registry loads only once.
 */
class TestWordsRegistry : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        qputenv("RKXML_RESOURCE_PATH", testDataPath(QStringLiteral("words/registry")).toLocal8Bit());
        RKSingleton<RKApplicationLocale>::instance().setLocale(QLocale(QStringLiteral("en_GB")));
    }

    void languagesInFileOrderWithDuplicates()
    {
        const QList<RKLocale> expected{loc("de_AT"), loc("de_DE"), loc("fr_CA"), loc("fr_FR"), loc("it_IT"), loc("en_GB"),
            loc("nl_NL"), loc("nl_NL")};
        QCOMPARE(registry().availalbleCalendarLanguages(), expected);
    }

    void exactCompleteEntryWins_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("january");
        // de_AT is listed first; de_DE must still get its own words, and the other way round.
        QTest::newRow("de_DE") << "de_DE" << "Januar";
        QTest::newRow("de_AT") << "de_AT" << "Jänner";
        QTest::newRow("fr_FR") << "fr_FR" << "janvier";
        QTest::newRow("en_GB") << "en_GB" << "January";
    }

    void exactCompleteEntryWins()
    {
        QFETCH(QString, locale);
        QFETCH(QString, january);
        const RKLocale l = RKLocale::decodeName(locale);
        const RKCalendarWords words = registry().words(l);
        QCOMPARE(words.language(), l);
        QVERIFY(words.isValid());
        QCOMPARE(words.longMonth(1), january);
        QCOMPARE(registry().monthNameLong(l, 1), january);
    }

    void missingCountryFallsBackToSameLanguage_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("used");
        QTest::addColumn<QString>("january");
        // The first complete entry of the language in the languages file's order.
        QTest::newRow("country not in files") << "de_CH" << "de_AT" << "Jänner";
        QTest::newRow("no country") << "de" << "de_AT" << "Jänner";
        QTest::newRow("dash form") << "de-LU" << "de_AT" << "Jänner";
        // fr_CA is listed first but lacks December, so it is passed over.
        QTest::newRow("incomplete first entry skipped") << "fr_BE" << "fr_FR" << "janvier";
    }

    void missingCountryFallsBackToSameLanguage()
    {
        QFETCH(QString, locale);
        QFETCH(QString, used);
        QFETCH(QString, january);
        const RKLocale l = RKLocale::decodeName(locale);
        const RKCalendarWords words = registry().words(l);
        QVERIFY(words.isValid());
        QCOMPARE(words.language(), RKLocale::decodeName(used));
        QCOMPARE(registry().monthNameLong(l, 1), january);
        QCOMPARE(registry().dayNameLong(l, 1), registry().dayNameLong(words.language(), 1));
        QCOMPARE(registry().weekShort(l), registry().weekShort(words.language()));
    }

    void incompleteEntryFallsBackToAnotherCountry()
    {
        // fr_CA lacks December; fr_FR is the only other French entry.
        const RKCalendarWords words = registry().words(loc("fr_CA"));
        QCOMPARE(words.language(), loc("fr_FR"));
        QCOMPARE(registry().monthNameLong(loc("fr_CA"), 12), QStringLiteral("décembre"));
        QCOMPARE(registry().weekLong(loc("fr_CA")), QStringLiteral("Semaine"));
    }

    void incompleteEntryWithoutAlternativeIsReturnedItself()
    {
        const RKLocale it = loc("it_IT");
        const RKCalendarWords words = registry().words(it);
        QCOMPARE(words.language(), it);
        QVERIFY(!words.isValid());
        QCOMPARE(registry().monthNameLong(it, 11), QStringLiteral("novembre"));
        QCOMPARE(registry().monthNameLong(it, 12), QStringLiteral("unknown"));
        QCOMPARE(registry().monthNameShort(it, 12), QStringLiteral("nn"));
        QCOMPARE(registry().dayNameLong(it, 7), QStringLiteral("domenica"));
        QCOMPARE(registry().weekLong(it), QStringLiteral("Settimana"));
        // The same language in another country finds the incomplete entry too.
        QCOMPARE(registry().words(loc("it_CH")).language(), it);
    }

    void unlistedOrUnknownLanguageGetsPlaceholders_data()
    {
        QTest::addColumn<QString>("locale");
        // es_ES has complete words in the words file but is not in the languages file.
        QTest::newRow("words but not listed") << "es_ES";
        QTest::newRow("listed nowhere") << "ja_JP";
        QTest::newRow("listed only as a non-Language element") << "sv_SE";
        QTest::newRow("invalid locale") << "";
    }

    void unlistedOrUnknownLanguageGetsPlaceholders()
    {
        QFETCH(QString, locale);
        const RKLocale l = RKLocale::decodeName(locale);
        const RKCalendarWords words = registry().words(l);
        QVERIFY(!words.isValid());
        QVERIFY(!words.language().isValid());
        QCOMPARE(registry().monthNameLong(l, 1), QStringLiteral("unknown"));
        QCOMPARE(registry().monthNameShort(l, 1), QStringLiteral("nn"));
        QCOMPARE(registry().dayNameLong(l, 1), QStringLiteral("unknown"));
        QCOMPARE(registry().dayNameShort(l, 1), QStringLiteral("nn"));
        QCOMPARE(registry().weekShort(l), QStringLiteral("nn"));
        QCOMPARE(registry().weekLong(l), QStringLiteral("unknown"));
        QVERIFY(!registry().availalbleCalendarLanguages().contains(l));
    }

    void laterDuplicateEntryReplacesEarlier()
    {
        QCOMPARE(registry().monthNameLong(loc("nl_NL"), 1), QStringLiteral("januari"));
        QCOMPARE(registry().weekShort(loc("nl_NL")), QStringLiteral("wk"));
    }

    void missingWeekNameGivesEmptyWeekWords()
    {
        QVERIFY(registry().words(loc("en_GB")).isValid());
        QCOMPARE(registry().weekShort(loc("en_GB")), QString());
        QCOMPARE(registry().weekLong(loc("en_GB")), QString());
    }

    void dayNameChoosesForm()
    {
        const RKLocale de = loc("de_DE");
        for (int day = 0; day <= 8; ++day) {
            QCOMPARE(registry().dayName(de, day, true), registry().dayNameShort(de, day));
            QCOMPARE(registry().dayName(de, day, false), registry().dayNameLong(de, day));
        }
        QCOMPARE(registry().dayName(de, 3, true), QStringLiteral("Mi"));
        QCOMPARE(registry().dayName(de, 3, false), QStringLiteral("Mittwoch"));
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
        QTest::newRow("falls back like words") << "fr_CA" << QList<int>{12, 8} << "août, décembre";
    }

    void monthNamesLongSortsAndJoins()
    {
        QFETCH(QString, locale);
        QFETCH(QList<int>, months);
        QFETCH(QString, expected);
        const QSet<int> set(months.begin(), months.end());
        QCOMPARE(registry().monthNamesLong(RKLocale::decodeName(locale), set), expected);
    }

    void createMonthMapFollowsApplicationLocale_data()
    {
        QTest::addColumn<QString>("applicationLocale");
        QTest::addColumn<QString>("january");
        QTest::addColumn<QString>("december");
        QTest::newRow("en_GB") << "en_GB" << "January" << "December";
        QTest::newRow("fr_CA falls back") << "fr_CA" << "janvier" << "décembre";
        QTest::newRow("unknown language") << "ja_JP" << "unknown" << "unknown";
        QTest::newRow("C locale") << "C" << "unknown" << "unknown";
    }

    void createMonthMapFollowsApplicationLocale()
    {
        QFETCH(QString, applicationLocale);
        QFETCH(QString, january);
        QFETCH(QString, december);
        RKSingleton<RKApplicationLocale>::instance().setLocale(QLocale(applicationLocale));
        const QMap<int, QString> map = registry().createMonthMap();
        RKSingleton<RKApplicationLocale>::instance().setLocale(QLocale(QStringLiteral("en_GB")));
        const QList<int> keys{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
        QCOMPARE(map.keys(), keys);
        QCOMPARE(map.value(1), january);
        QCOMPARE(map.value(12), december);
    }

    void defaultLanguageIsApplicationLocale()
    {
        RKSingleton<RKApplicationLocale>::instance().setLocale(QLocale(QStringLiteral("de_AT")));
        QCOMPARE(registry().defaultLanguage(), loc("de_AT"));
        RKSingleton<RKApplicationLocale>::instance().setLocale(QLocale(QStringLiteral("en_GB")));
        QCOMPARE(registry().defaultLanguage(), loc("en_GB"));
    }

    void dayNamesSnapshotMatchesRegistry_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::newRow("exact") << "de_AT";
        QTest::newRow("fallback") << "fr_CA";
        QTest::newRow("incomplete") << "it_IT";
        QTest::newRow("unknown") << "ja_JP";
    }

    void dayNamesSnapshotMatchesRegistry()
    {
        QFETCH(QString, locale);
        const RKLocale l = RKLocale::decodeName(locale);
        const RKCalendarDayNames names(l);
        QVERIFY(!names.isEmpty());
        for (int day = 1; day <= 7; ++day) {
            QCOMPARE(names.dayOfWeekShort(day), registry().dayNameShort(l, day));
            QCOMPARE(names.dayOfWeekLong(day), registry().dayNameLong(l, day));
        }
        for (int month = 1; month <= 12; ++month) {
            QCOMPARE(names.monthShort(month), registry().monthNameShort(l, month));
            QCOMPARE(names.monthLong(month), registry().monthNameLong(l, month));
        }
        QCOMPARE(names.calendarWeekShort(), registry().weekShort(l));
        QCOMPARE(names.calendarWeekLong(), registry().weekLong(l));
        // Numbers outside the snapshot are null, not the "nn"/"unknown" of the lists.
        QVERIFY(names.dayOfWeekShort(8).isNull());
        QVERIFY(names.dayOfWeekShort(0).isNull());
        QVERIFY(names.dayOfWeekLong(-1).isNull());
        QVERIFY(names.monthShort(13).isNull());
        QVERIFY(names.monthLong(0).isNull());
    }

    void dayNamesSnapshotIsACopy()
    {
        RKCalendarDayNames names(loc("de_DE"));
        const RKCalendarDayNames copy = names;
        names = RKCalendarDayNames();
        QVERIFY(names.isEmpty());
        QCOMPARE(copy.dayOfWeekLong(7), QStringLiteral("Sonntag"));
        QCOMPARE(copy.monthShort(3), QStringLiteral("Mär"));
        QCOMPARE(copy.calendarWeekLong(), QStringLiteral("Kalenderwoche"));
    }
};

QTEST_GUILESS_MAIN(TestWordsRegistry)
#include "test_wordsregistry.moc"
