#include "RKTestSupport.h"

#include <RKCalendarDayNames.h>
#include <RKCalendarWordsRegistry.h>
#include <RKXMLLoader.h>

namespace {

const RKCalendarWordsRegistry& registry()
{
    return RKSingleton<RKCalendarWordsRegistry>::instance();
}

}

/*
 * The calendar words that ship in data/international: complete for every listed
 * locale, and for a few locales the stand-alone forms of the Unicode CLDR.
 */
class TestShippedWords : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        qputenv("RKXML_RESOURCE_PATH", QByteArray());
        qputenv("RKXML_DATA_DIR", shippedDataPath(QString()).toLocal8Bit());
        QVERIFY(registry().availalbleCalendarLanguages().size() >= 40);
    }

    void everyListedLocaleHasCompleteWordsOfItsOwn()
    {
        const QList<RKLocale> languages = registry().availalbleCalendarLanguages();
        QSet<RKLocale> seen;
        for (const RKLocale& locale : languages) {
            QVERIFY2(!seen.contains(locale), qPrintable(locale.name() + QStringLiteral(" listed twice")));
            seen.insert(locale);
            QVERIFY2(locale.isValid() && !locale.country().isEmpty(), qPrintable(locale.name()));
            const RKCalendarWords words = registry().words(locale);
            QVERIFY2(words.isValid(), qPrintable(locale.name()));
            QCOMPARE(words.language(), locale);
            for (int month = 1; month <= 12; ++month) {
                QVERIFY2(!words.shortMonth(month).trimmed().isEmpty(), qPrintable(QStringLiteral("%1 month %2").arg(locale.name()).arg(month)));
                QVERIFY2(!words.longMonth(month).trimmed().isEmpty(), qPrintable(QStringLiteral("%1 month %2").arg(locale.name()).arg(month)));
            }
            for (int day = 1; day <= 7; ++day) {
                QVERIFY2(!words.shortDayOfWeek(day).trimmed().isEmpty(), qPrintable(QStringLiteral("%1 day %2").arg(locale.name()).arg(day)));
                QVERIFY2(!words.longDayOfWeek(day).trimmed().isEmpty(), qPrintable(QStringLiteral("%1 day %2").arg(locale.name()).arg(day)));
            }
            QVERIFY2(!words.shortWeek().isEmpty() && !words.longWeek().isEmpty(), qPrintable(locale.name()));
            // Twelve different month names and seven different day names: a shifted or repeated row shows here.
            QSet<QString> months, days;
            for (int month = 1; month <= 12; ++month)
                months.insert(words.longMonth(month));
            for (int day = 1; day <= 7; ++day)
                days.insert(words.longDayOfWeek(day));
            QVERIFY2(months.size() == 12 && days.size() == 7, qPrintable(locale.name()));
        }
    }

    void everyWordsEntryIsListedAndComplete()
    {
        // Read the file itself: the registry drops unlisted entries silently.
        const QDomElement root = RKXMLLoader::loadDocumentElement(shippedDataPath(QStringLiteral("international/CalendarWeekNames.xml")));
        QVERIFY(!root.isNull());
        const QList<RKLocale> languages = registry().availalbleCalendarLanguages();
        int entries = 0;
        for (QDomElement e = root.firstChildElement(QStringLiteral("Language")); !e.isNull();
             e = e.nextSiblingElement(QStringLiteral("Language"))) {
            const RKCalendarWords words(e);
            QVERIFY2(languages.contains(words.language()), qPrintable(words.language().name()));
            QVERIFY2(words.isValid(), qPrintable(words.language().name()));
            ++entries;
        }
        QCOMPARE(entries, languages.size());
    }

    void cldrStandAloneForms_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("shortName");
        QTest::addColumn<QString>("longName");
        const auto add = [](const char* locale, const char* kind, int number, const QString& s, const QString& l) {
            QTest::addRow("%s %s %d", locale, kind, number) << QString::fromLatin1(locale) << QString::fromLatin1(kind) << number << s << l;
        };
        add("de_DE", "month", 1, QStringLiteral("Jan"), QStringLiteral("Januar"));
        add("de_DE", "month", 3, QStringLiteral("Mär"), QStringLiteral("März"));
        add("de_DE", "month", 10, QStringLiteral("Okt"), QStringLiteral("Oktober"));
        add("de_DE", "month", 12, QStringLiteral("Dez"), QStringLiteral("Dezember"));
        add("de_DE", "day", 1, QStringLiteral("Mo"), QStringLiteral("Montag"));
        add("de_DE", "day", 2, QStringLiteral("Di"), QStringLiteral("Dienstag"));
        add("de_DE", "day", 3, QStringLiteral("Mi"), QStringLiteral("Mittwoch"));
        add("de_DE", "day", 4, QStringLiteral("Do"), QStringLiteral("Donnerstag"));
        add("de_DE", "day", 5, QStringLiteral("Fr"), QStringLiteral("Freitag"));
        add("de_DE", "day", 6, QStringLiteral("Sa"), QStringLiteral("Samstag"));
        add("de_DE", "day", 7, QStringLiteral("So"), QStringLiteral("Sonntag"));
        add("de_DE", "week", 0, QStringLiteral("KW"), QStringLiteral("Kalenderwoche"));
        add("de_AT", "month", 1, QStringLiteral("Jän"), QStringLiteral("Jänner"));
        add("fr_FR", "month", 1, QStringLiteral("janv."), QStringLiteral("janvier"));
        add("fr_FR", "month", 2, QStringLiteral("févr."), QStringLiteral("février"));
        add("fr_FR", "month", 8, QStringLiteral("août"), QStringLiteral("août"));
        add("fr_FR", "month", 12, QStringLiteral("déc."), QStringLiteral("décembre"));
        add("fr_FR", "day", 1, QStringLiteral("lu"), QStringLiteral("lundi"));
        add("fr_FR", "day", 3, QStringLiteral("me"), QStringLiteral("mercredi"));
        add("fr_FR", "day", 7, QStringLiteral("di"), QStringLiteral("dimanche"));
        add("fr_FR", "week", 0, QStringLiteral("Sem."), QStringLiteral("Semaine"));
        add("en_GB", "month", 1, QStringLiteral("Jan"), QStringLiteral("January"));
        add("en_GB", "month", 9, QStringLiteral("Sept"), QStringLiteral("September"));
        add("en_GB", "day", 1, QStringLiteral("Mo"), QStringLiteral("Monday"));
        add("en_GB", "day", 4, QStringLiteral("Th"), QStringLiteral("Thursday"));
        add("en_GB", "day", 7, QStringLiteral("Su"), QStringLiteral("Sunday"));
        add("en_GB", "week", 0, QStringLiteral("Wk"), QStringLiteral("Week"));
        add("pl_PL", "month", 1, QStringLiteral("sty"), QStringLiteral("styczeń"));
        add("pl_PL", "month", 10, QStringLiteral("paź"), QStringLiteral("październik"));
        add("pl_PL", "month", 12, QStringLiteral("gru"), QStringLiteral("grudzień"));
        add("pl_PL", "day", 1, QStringLiteral("pon"), QStringLiteral("poniedziałek"));
        add("pl_PL", "day", 3, QStringLiteral("śro"), QStringLiteral("środa"));
        add("pl_PL", "day", 7, QStringLiteral("nie"), QStringLiteral("niedziela"));
        add("pl_PL", "week", 0, QStringLiteral("Tydz."), QStringLiteral("Tydzień"));
    }

    void cldrStandAloneForms()
    {
        QFETCH(QString, locale);
        QFETCH(QString, kind);
        QFETCH(int, number);
        QFETCH(QString, shortName);
        QFETCH(QString, longName);
        const RKLocale l = RKLocale::decodeName(locale);
        QCOMPARE(registry().words(l).language(), l);
        // Through the snapshot that fills pages, so both paths are covered.
        const RKCalendarDayNames names(l);
        if (kind == QLatin1String("month")) {
            QCOMPARE(registry().monthNameShort(l, number), shortName);
            QCOMPARE(registry().monthNameLong(l, number), longName);
            QCOMPARE(names.monthLong(number), longName);
        } else if (kind == QLatin1String("day")) {
            QCOMPARE(registry().dayNameShort(l, number), shortName);
            QCOMPARE(registry().dayNameLong(l, number), longName);
            QCOMPARE(names.dayOfWeekShort(number), shortName);
        } else {
            QCOMPARE(registry().weekShort(l), shortName);
            QCOMPARE(registry().weekLong(l), longName);
            QCOMPARE(names.calendarWeekLong(), longName);
        }
    }

    void weekdayOneIsMonday()
    {
        // The compiler numbers days as QDate::dayOfWeek() does; 2024-01-01 was a Monday.
        const QDate monday(2024, 1, 1);
        QCOMPARE(monday.dayOfWeek(), 1);
        const RKLocale en(QStringLiteral("en"), QStringLiteral("GB"));
        for (int offset = 0; offset < 7; ++offset) {
            const QDate date = monday.addDays(offset);
            QCOMPARE(registry().dayNameLong(en, date.dayOfWeek()), QLocale(QStringLiteral("en_GB")).standaloneDayName(date.dayOfWeek()));
        }
    }
};

QTEST_GUILESS_MAIN(TestShippedWords)
#include "test_shippedwords.moc"
