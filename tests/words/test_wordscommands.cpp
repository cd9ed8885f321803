#include "RKTestSupport.h"

#include <RKCalendarWordsRegistry.h>

#include <QProcess>

namespace {

struct Run {
    int exitCode = -1;
    QString out;
    QString err;
};

const RKCalendarWordsRegistry& registry()
{
    return RKSingleton<RKCalendarWordsRegistry>::instance();
}

}

/*
 * The "locales" and "words" commands of rkcalendar, run as a process over the
 * shipped data (compared with this process's registry over the same files) and
 * over the registry fixture for the fall-back and incomplete cases.
 */
class TestWordsCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        myWritable = isolateUserFiles();
        qputenv("RKXML_RESOURCE_PATH", QByteArray());
        qputenv("RKXML_DATA_DIR", shippedDataPath(QString()).toLocal8Bit());
        QVERIFY(QFileInfo::exists(QStringLiteral(RKXML_RKCALENDAR_BINARY)));
        QVERIFY(!registry().availalbleCalendarLanguages().isEmpty());
    }

    void localesListsEveryLanguageOnce()
    {
        const Run run = rkcalendar({QStringLiteral("locales")});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.err, QString());
        QStringList expected;
        for (const RKLocale& locale : registry().availalbleCalendarLanguages()) {
            const QString line = locale.name() + QLatin1Char('\t') + locale.englishName();
            if (!expected.contains(line))
                expected << line;
        }
        QCOMPARE(lines(run.out), expected);
        QVERIFY(expected.contains(QStringLiteral("de_DE\tGerman (Germany)")));
        QVERIFY(expected.contains(QStringLiteral("fr_FR\tFrench (France)")));
        QVERIFY(expected.contains(QStringLiteral("en_GB\tEnglish (United Kingdom)")));
    }

    void localesOverFixtureKeepsFileOrderWithoutDuplicates()
    {
        const Run run = rkcalendar({QStringLiteral("locales")}, testDataPath(QStringLiteral("words/registry")));
        QCOMPARE(run.exitCode, 0);
        QStringList names;
        for (const QString& line : lines(run.out))
            names << line.section(QLatin1Char('\t'), 0, 0);
        const QStringList expected{QStringLiteral("de_AT"), QStringLiteral("de_DE"), QStringLiteral("fr_CA"), QStringLiteral("fr_FR"),
            QStringLiteral("it_IT"), QStringLiteral("en_GB"), QStringLiteral("nl_NL")};
        QCOMPARE(names, expected);
    }

    void localesWithoutDataFails()
    {
        QTemporaryDir empty;
        QProcessEnvironment env = environment(QString());
        env.insert(QStringLiteral("RKXML_DATA_DIR"), empty.path());
        const Run run = rkcalendar({QStringLiteral("locales")}, QString(), env);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.out, QString());
        QVERIFY2(run.err.contains(QLatin1String("CalendarLanguages.xml")), qPrintable(run.err));
    }

    void wordsPrintsWhatTheRegistryAnswers_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("locale");
        QTest::newRow("fr_FR") << QStringList{QStringLiteral("--locale"), QStringLiteral("fr_FR")} << "fr_FR";
        QTest::newRow("inline dash form") << QStringList{QStringLiteral("--locale=fr-FR")} << "fr_FR";
        QTest::newRow("pl_PL") << QStringList{QStringLiteral("--locale"), QStringLiteral("pl_PL")} << "pl_PL";
        QTest::newRow("de_AT") << QStringList{QStringLiteral("--locale"), QStringLiteral("de_AT")} << "de_AT";
    }

    void wordsPrintsWhatTheRegistryAnswers()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, locale);
        const Run run = rkcalendar(QStringList{QStringLiteral("words")} + args);
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.err, QString());
        QCOMPARE(lines(run.out), expectedWords(RKLocale::decodeName(locale)));
    }

    void wordsSpotChecks()
    {
        const QStringList fr = lines(rkcalendar({QStringLiteral("words"), QStringLiteral("--locale"), QStringLiteral("fr_FR")}).out);
        QVERIFY(fr.contains(QStringLiteral("day\t1\tlu\tlundi")));
        QVERIFY(fr.contains(QStringLiteral("month\t12\tdéc.\tdécembre")));
        QVERIFY(fr.contains(QStringLiteral("week\tSem.\tSemaine")));
        QCOMPARE(fr.value(0), QStringLiteral("locale\tfr_FR\tFrench (France)"));
        QCOMPARE(fr.size(), 1 + 7 + 12 + 1);
    }

    void wordsFallsBackToSameLanguage()
    {
        const Run run = rkcalendar({QStringLiteral("words"), QStringLiteral("--locale"), QStringLiteral("de_IT")});
        QCOMPARE(run.exitCode, 0);
        const RKLocale used = registry().words(RKLocale::decodeName(QStringLiteral("de_IT"))).language();
        QCOMPARE(used.language(), QStringLiteral("de"));
        QVERIFY2(run.err.contains(QLatin1String("de_IT")) && run.err.contains(used.name()), qPrintable(run.err));
        QCOMPARE(lines(run.out), expectedWords(used));
    }

    void wordsOverFixture_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("outLine");
        QTest::addColumn<QString>("errText");
        QTest::newRow("incomplete fr_CA uses fr_FR") << "fr_CA" << 0 << "month\t12\tdéc.\tdécembre" << "fr_FR";
        QTest::newRow("incomplete it_IT printed as it is") << "it_IT" << 1 << "month\t12\tnn\tunknown" << "incomplete";
        QTest::newRow("no week word") << "en_GB" << 0 << "week\t\t" << "";
        QTest::newRow("words of an unlisted locale") << "es_ES" << 2 << "" << "de_AT, de_DE, fr_CA, fr_FR, it_IT, en_GB, nl_NL";
    }

    void wordsOverFixture()
    {
        QFETCH(QString, locale);
        QFETCH(int, exitCode);
        QFETCH(QString, outLine);
        QFETCH(QString, errText);
        const Run run = rkcalendar({QStringLiteral("words"), QStringLiteral("--locale"), locale}, testDataPath(QStringLiteral("words/registry")));
        QCOMPARE(run.exitCode, exitCode);
        if (outLine.isEmpty())
            QCOMPARE(run.out, QString());
        else
            QVERIFY2(lines(run.out).contains(outLine), qPrintable(run.out));
        if (errText.isEmpty())
            QCOMPARE(run.err, QString());
        else
            QVERIFY2(run.err.contains(errText), qPrintable(run.err));
    }

    void wordsWithoutAnyWordsListsValidLocales()
    {
        const Run run = rkcalendar({QStringLiteral("words"), QStringLiteral("--locale"), QStringLiteral("ja_JP")});
        QCOMPARE(run.exitCode, 2);
        QCOMPARE(run.out, QString());
        QVERIFY(run.err.contains(QLatin1String("ja_JP")));
        for (const RKLocale& locale : registry().availalbleCalendarLanguages())
            QVERIFY2(run.err.contains(locale.name()), qPrintable(locale.name()));
    }

    void wordsUsageErrors_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("errText");
        QTest::newRow("malformed name") << QStringList{QStringLiteral("--locale"), QStringLiteral("german")} << "malformed";
        QTest::newRow("three-letter country") << QStringList{QStringLiteral("--locale"), QStringLiteral("de_DEU")} << "malformed";
        QTest::newRow("empty name") << QStringList{QStringLiteral("--locale=")} << "malformed";
        QTest::newRow("no locale") << QStringList{} << "--locale";
        QTest::newRow("value missing") << QStringList{QStringLiteral("--locale")} << "needs a value";
        QTest::newRow("unknown option") << QStringList{QStringLiteral("--locale"), QStringLiteral("fr_FR"), QStringLiteral("--year"), QStringLiteral("2026")} << "--year";
        QTest::newRow("positional") << QStringList{QStringLiteral("fr_FR")} << "fr_FR";
    }

    void wordsUsageErrors()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, errText);
        const Run run = rkcalendar(QStringList{QStringLiteral("words")} + args);
        QCOMPARE(run.exitCode, 2);
        QCOMPARE(run.out, QString());
        QVERIFY2(run.err.contains(errText), qPrintable(run.err));
    }

    void localesRejectsArguments()
    {
        QCOMPARE(rkcalendar({QStringLiteral("locales"), QStringLiteral("extra")}).exitCode, 2);
        QCOMPARE(rkcalendar({QStringLiteral("locales"), QStringLiteral("--all")}).exitCode, 2);
    }

private:
    QProcessEnvironment environment(const QString& resourcePath) const
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("RKXML_RESOURCE_PATH"), resourcePath);
        env.insert(QStringLiteral("RKXML_DATA_DIR"), shippedDataPath(QString()));
        env.insert(QStringLiteral("RKXML_WRITABLE_DIR"), myWritable);
        return env;
    }

    Run rkcalendar(const QStringList& args, const QString& resourcePath = QString(), const QProcessEnvironment& env = {}) const
    {
        QProcess process;
        process.setProcessEnvironment(env.isEmpty() ? environment(resourcePath) : env);
        process.start(QStringLiteral(RKXML_RKCALENDAR_BINARY), args);
        Run run;
        if (!process.waitForFinished(30000)) {
            process.kill();
            process.waitForFinished();
            return run;
        }
        run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        run.out = QString::fromUtf8(process.readAllStandardOutput());
        run.err = QString::fromUtf8(process.readAllStandardError());
        return run;
    }

    static QStringList lines(const QString& text)
    {
        return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    // The lines "words" must print for `locale`, built from this process's registry.
    static QStringList expectedWords(const RKLocale& locale)
    {
        const RKCalendarWordsRegistry& r = registry();
        QStringList out{QStringLiteral("locale\t%1\t%2").arg(locale.name(), locale.englishName())};
        for (int day = 1; day <= 7; ++day)
            out << QStringLiteral("day\t%1\t%2\t%3").arg(day).arg(r.dayNameShort(locale, day), r.dayNameLong(locale, day));
        for (int month = 1; month <= 12; ++month)
            out << QStringLiteral("month\t%1\t%2\t%3").arg(month).arg(r.monthNameShort(locale, month), r.monthNameLong(locale, month));
        out << QStringLiteral("week\t%1\t%2").arg(r.weekShort(locale), r.weekLong(locale));
        return out;
    }

    QString myWritable;
};

QTEST_GUILESS_MAIN(TestWordsCommands)
#include "test_wordscommands.moc"
