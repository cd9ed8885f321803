#include "RKTestSupport.h"

#include <RKCalendarDayNames.h>
#include <RKCalendarWordsRegistry.h>
#include <RKXMLLoader.h>

#include <QProcess>

namespace {

struct Run {
    int exitCode = -1;
    QString out;
    QString err;
    QStringList lines() const { return out.split(QLatin1Char('\n'), Qt::SkipEmptyParts); }
};

const RKCalendarWordsRegistry& registry()
{
    return RKSingleton<RKCalendarWordsRegistry>::instance();
}

// Runs rkcalendar over the shipped data, or over `resourcePath` when given, or with `dataDir` as its data directory.
Run rkcalendar(const QStringList& args, const QString& resourcePath = QString(), const QString& dataDir = shippedDataPath(QString()))
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("RKXML_RESOURCE_PATH"), resourcePath);
    env.insert(QStringLiteral("RKXML_DATA_DIR"), dataDir);
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(RKXML_RKCALENDAR_BINARY), args);
    Run run;
    if (!process.waitForFinished(30000))
        return run; // killed with `process`
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}


}

// The calendar words that ship in data/international (complete for every listed
// locale, the stand-alone forms of the Unicode CLDR), and the "locales" and
// "words" commands of rkcalendar, compared with this process's registry over the
// same files and run over the registry fixture for the fall-back cases.
class TestShippedWords : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles(); // its writable directory is inherited by rkcalendar
        qputenv("RKXML_RESOURCE_PATH", QByteArray());
        qputenv("RKXML_DATA_DIR", shippedDataPath(QString()).toLocal8Bit());
        QVERIFY(QFileInfo::exists(QStringLiteral(RKXML_RKCALENDAR_BINARY)));
        QVERIFY(registry().availalbleCalendarLanguages().size() >= 40);
    }

    void everyListedLocaleHasCompleteWordsOfItsOwn()
    {
        const QList<RKLocale> languages = registry().availalbleCalendarLanguages();
        for (const RKLocale& locale : languages) {
            const QByteArray name = locale.name().toUtf8();
            QVERIFY2(languages.count(locale) == 1, name);
            QVERIFY2(locale.isValid() && !locale.country().isEmpty(), name);
            const RKCalendarWords words = registry().words(locale);
            QVERIFY2(words.isValid() && words.language() == locale, name);
            // Twelve different month names and seven different day names: a shifted or repeated row shows here.
            QSet<QString> months, days;
            for (int month = 1; month <= 12; ++month) {
                QVERIFY2(!words.shortMonth(month).trimmed().isEmpty() && !words.longMonth(month).trimmed().isEmpty(), name);
                months << words.longMonth(month);
            }
            for (int day = 1; day <= 7; ++day) {
                QVERIFY2(!words.shortDayOfWeek(day).trimmed().isEmpty() && !words.longDayOfWeek(day).trimmed().isEmpty(), name);
                days << words.longDayOfWeek(day);
            }
            QVERIFY2(months.size() == 12 && days.size() == 7, name);
            QVERIFY2(!words.shortWeek().isEmpty() && !words.longWeek().isEmpty(), name);
        }
        // Read the words file itself: the registry drops unlisted entries silently.
        const QDomElement root = RKXMLLoader::loadDocumentElement(shippedDataPath(QStringLiteral("international/CalendarWeekNames.xml")));
        int entries = 0;
        for (QDomElement e = root.firstChildElement(QStringLiteral("Language")); !e.isNull(); e = e.nextSiblingElement(QStringLiteral("Language")), ++entries) {
            const RKCalendarWords words(e);
            QVERIFY2(languages.contains(words.language()) && words.isValid(), qPrintable(words.language().name()));
        }
        QCOMPARE(entries, languages.size());
    }

    void cldrStandAloneForms_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("entries"); // "<number> <short> <long>", separated by ";"
        QTest::newRow("de_DE month") << "de_DE" << "month" << "1 Jan Januar;3 Mär März;10 Okt Oktober;12 Dez Dezember";
        QTest::newRow("de_DE day") << "de_DE" << "day" << "1 Mo Montag;2 Di Dienstag;3 Mi Mittwoch;4 Do Donnerstag;5 Fr Freitag;6 Sa Samstag;7 So Sonntag";
        QTest::newRow("de_DE week") << "de_DE" << "week" << "0 KW Kalenderwoche";
        QTest::newRow("de_AT month") << "de_AT" << "month" << "1 Jän Jänner";
        QTest::newRow("fr_FR month") << "fr_FR" << "month" << "1 janv. janvier;2 févr. février;8 août août;12 déc. décembre";
        QTest::newRow("fr_FR day") << "fr_FR" << "day" << "1 lu lundi;3 me mercredi;7 di dimanche";
        QTest::newRow("fr_FR week") << "fr_FR" << "week" << "0 Sem. Semaine";
        QTest::newRow("en_GB month") << "en_GB" << "month" << "1 Jan January;9 Sept September";
        QTest::newRow("en_GB day") << "en_GB" << "day" << "1 Mo Monday;4 Th Thursday;7 Su Sunday";
        QTest::newRow("en_GB week") << "en_GB" << "week" << "0 Wk Week";
        QTest::newRow("pl_PL month") << "pl_PL" << "month" << "1 sty styczeń;10 paź październik;12 gru grudzień";
        QTest::newRow("pl_PL day") << "pl_PL" << "day" << "1 pon poniedziałek;3 śro środa;7 nie niedziela";
        QTest::newRow("pl_PL week") << "pl_PL" << "week" << "0 Tydz. Tydzień";
    }

    void cldrStandAloneForms()
    {
        QFETCH(QString, locale);
        QFETCH(QString, kind);
        QFETCH(QString, entries);
        const RKLocale l = RKLocale::decodeName(locale);
        QCOMPARE(registry().words(l).language(), l);
        const RKCalendarDayNames names(l); // the snapshot that fills pages
        for (const QString& entry : entries.split(QLatin1Char(';'))) {
            const QStringList pieces = entry.split(QLatin1Char(' '));
            const int n = pieces[0].toInt();
            const QStringList got = kind == QLatin1String("month") ? QStringList{registry().monthNameShort(l, n), registry().monthNameLong(l, n), names.monthShort(n), names.monthLong(n)}
                : kind == QLatin1String("day") ? QStringList{registry().dayNameShort(l, n), registry().dayNameLong(l, n), names.dayOfWeekShort(n), names.dayOfWeekLong(n)}
                                               : QStringList{registry().weekShort(l), registry().weekLong(l), names.calendarWeekShort(), names.calendarWeekLong()};
            QCOMPARE(got, (QStringList{pieces[1], pieces[2], pieces[1], pieces[2]}));
        }
    }

    void localesListsEveryLanguageOnce()
    {
        const Run run = rkcalendar({QStringLiteral("locales")});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.err, QString());
        QStringList expected;
        for (const RKLocale& locale : registry().availalbleCalendarLanguages())
            expected << locale.name() + QLatin1Char('\t') + locale.englishName();
        expected.removeDuplicates();
        QCOMPARE(run.lines(), expected);
        QVERIFY(expected.contains(QStringLiteral("de_DE\tGerman (Germany)")));

        // The fixture lists nl_NL twice, printed once, in file order.
        QStringList names;
        for (const QString& line : rkcalendar({QStringLiteral("locales")}, testDataPath(QStringLiteral("words/registry"))).lines())
            names << line.section(QLatin1Char('\t'), 0, 0);
        QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("de_AT de_DE fr_CA fr_FR it_IT en_GB nl_NL"));

        QTemporaryDir empty;
        const Run noData = rkcalendar({QStringLiteral("locales")}, QString(), empty.path());
        QCOMPARE(noData.exitCode, 1);
        QCOMPARE(noData.out, QString());
        QVERIFY2(noData.err.contains(QLatin1String("CalendarLanguages.xml")), qPrintable(noData.err));
    }

    void wordsPrintsOneLinePerWord_data()
    {
        QTest::addColumn<QString>("argument");
        QTest::addColumn<QStringList>("lines"); // some of the 21 lines
        QTest::newRow("fr_FR") << "--locale=fr_FR"
                               << QStringList{"locale\tfr_FR\tFrench (France)", "day\t1\tlu\tlundi", "month\t2\tfévr.\tfévrier", "week\tSem.\tSemaine"};
        QTest::newRow("dash form") << "--locale=pl-PL" << QStringList{"month\t10\tpaź\tpaździernik", "day\t7\tnie\tniedziela"};
    }
    void wordsPrintsOneLinePerWord()
    {
        QFETCH(QString, argument);
        QFETCH(QStringList, lines);
        const Run run = rkcalendar({QStringLiteral("words"), argument});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.err, QString());
        QCOMPARE(run.lines().size(), 1 + 7 + 12 + 1);
        for (const QString& line : lines)
            QVERIFY2(run.lines().contains(line), qPrintable(line));
    }

    void commandOutcomes_data()
    {
        QTest::addColumn<QString>("args");
        QTest::addColumn<bool>("overFixture");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("outLine"); // empty: nothing on stdout
        QTest::addColumn<QString>("errText"); // empty: nothing on stderr
        QTest::newRow("incomplete fr_CA uses fr_FR") << "words --locale fr_CA" << true << 0 << "month\t12\tdéc.\tdécembre" << "fr_FR";
        QTest::newRow("incomplete it_IT printed as it is") << "words --locale it_IT" << true << 1 << "month\t12\tnn\tunknown" << "incomplete";
        QTest::newRow("no week word") << "words --locale en_GB" << true << 0 << "week\t\t" << "";
        QTest::newRow("words of an unlisted locale") << "words --locale es_ES" << true << 2 << "" << "de_AT, de_DE, fr_CA, fr_FR, it_IT, en_GB, nl_NL";
        QTest::newRow("malformed name") << "words --locale german" << false << 2 << "" << "malformed";
        QTest::newRow("three-letter country") << "words --locale de_DEU" << false << 2 << "" << "malformed";
    }

    void commandOutcomes()
    {
        QFETCH(QString, args);
        QFETCH(bool, overFixture);
        QFETCH(int, exitCode);
        QFETCH(QString, outLine);
        QFETCH(QString, errText);
        const Run run = rkcalendar(args.split(QLatin1Char(' ')), overFixture ? testDataPath(QStringLiteral("words/registry")) : QString());
        QCOMPARE(run.exitCode, exitCode);
        QVERIFY2(outLine.isEmpty() ? run.out.isEmpty() : run.lines().contains(outLine), qPrintable(run.out));
        QVERIFY2(errText.isEmpty() ? run.err.isEmpty() : run.err.contains(errText), qPrintable(run.err));
    }
};

QTEST_GUILESS_MAIN(TestShippedWords)
#include "test_shippedwords.moc"
