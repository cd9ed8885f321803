#include "RKToolSupport.h"

#include <RKCalendarWordsRegistry.h>

namespace {

const RKCalendarWordsRegistry& registry()
{
    return RKSingleton<RKCalendarWordsRegistry>::instance();
}

// Runs rkcalendar over the shipped data, or over the fixture directory `fixture` of tests/data/words.
RKToolResult rkcalendar(const QString& commandLine, const QString& fixture = QString())
{
    QProcessEnvironment env;
    env.insert(QStringLiteral("RKXML_RESOURCE_PATH"), fixture.isEmpty() ? QString() : testDataPath(QStringLiteral("words/") + fixture));
    return runRkcalendar(commandWords(commandLine), env);
}

}

// The calendar words that ship in data/international (the stand-alone forms of the
// Unicode CLDR; that every listed locale has complete words of its own is left to the
// build's data check, rkxml-datacheck), and the "locales" and "words" commands of
// rkcalendar, compared with this process's registry over the same files and run over
// the registry fixture for the fall-back cases and over a malformed words file.
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
        QTest::newRow("en_GB month") << "en_GB" << "month" << "1 Jan January;9 Sept September";
        QTest::newRow("pl_PL month") << "pl_PL" << "month" << "1 sty styczeń;10 paź październik;12 gru grudzień";
    }

    void cldrStandAloneForms()
    {
        QFETCH(QString, locale);
        QFETCH(QString, kind);
        QFETCH(QString, entries);
        const RKLocale l = RKLocale::decodeName(locale);
        for (const QString& entry : entries.split(QLatin1Char(';'))) {
            const QStringList pieces = entry.split(QLatin1Char(' '));
            const int n = pieces[0].toInt();
            QStringList got{registry().weekShort(l), registry().weekLong(l)};
            if (kind == QLatin1String("month"))
                got = QStringList{registry().monthNameShort(l, n), registry().monthNameLong(l, n)};
            else if (kind == QLatin1String("day"))
                got = QStringList{registry().dayNameShort(l, n), registry().dayNameLong(l, n)};
            QCOMPARE(got, pieces.mid(1));
        }
    }

    void localesListsEveryLanguageOnce()
    {
        // The fixture lists nl_NL twice, printed once, in file order.
        const RKToolResult run = rkcalendar(QStringLiteral("locales"), QStringLiteral("registry"));
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.err, QString());
        QCOMPARE(run.out, QStringLiteral("de_AT\tGerman (Austria)\nde_DE\tGerman (Germany)\nfr_CA\tFrench (Canada)\n"
                                         "fr_FR\tFrench (France)\nit_IT\tItalian (Italy)\nen_GB\tEnglish (United Kingdom)\n"
                                         "nl_NL\tDutch (Netherlands)\n"));
    }

    void wordsCommand_data()
    {
        QTest::addColumn<QString>("commandLine");
        QTest::addColumn<QString>("fixture"); // empty: the shipped data
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QStringList>("outLines"); // some of the 21 lines; none: nothing on stdout
        QTest::addColumn<QString>("errText"); // empty: nothing on stderr
        QTest::newRow("fr_FR") << "words --locale=fr_FR" << "" << 0
                               << QStringList{"locale\tfr_FR\tFrench (France)", "day\t1\tlu\tlundi", "month\t2\tfévr.\tfévrier", "week\tSem.\tSemaine"} << "";
        QTest::newRow("incomplete fr_CA uses fr_FR") << "words --locale fr_CA" << "registry" << 0 << QStringList{"month\t12\tdéc.\tdécembre"} << "fr_FR";
        QTest::newRow("incomplete it_IT printed as it is") << "words --locale it_IT" << "registry" << 1 << QStringList{"month\t12\tnn\tunknown"} << "incomplete";
        QTest::newRow("words of an unlisted locale") << "words --locale es_ES" << "registry" << 2 << QStringList() << "de_AT, de_DE, fr_CA, fr_FR, it_IT, en_GB, nl_NL";
        // The languages are read, the malformed words file gives none: no crash, no words.
        QTest::newRow("words file malformed") << "words --locale de_DE" << "malformed" << 2 << QStringList()
                                              << "no calendar words for de_DE; valid locales: de_DE";
        QTest::newRow("three-letter country") << "words --locale de_DEU" << "" << 2 << QStringList() << "malformed";
    }

    void wordsCommand()
    {
        QFETCH(QString, commandLine);
        QFETCH(QString, fixture);
        QFETCH(int, exitCode);
        QFETCH(QStringList, outLines);
        QFETCH(QString, errText);
        const RKToolResult run = rkcalendar(commandLine, fixture);
        QCOMPARE(run.exitCode, exitCode);
        if (outLines.isEmpty())
            QCOMPARE(run.out, QString());
        else
            QCOMPARE(run.lines().size(), 1 + 7 + 12 + 1); // all lines, also of incomplete words
        for (const QString& line : outLines)
            QVERIFY2(run.lines().contains(line), qPrintable(run.out));
        QVERIFY2(errText.isEmpty() ? run.err.isEmpty() : run.err.contains(errText), qPrintable(run.err));
    }
};

QTEST_GUILESS_MAIN(TestShippedWords)
#include "test_shippedwords.moc"
