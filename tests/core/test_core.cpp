#include "RKTestSupport.h"

#include <RKDirectoryConfig.h>
#include <RKEnumWrapper.h>
#include <RKLocale.h>
#include <RKMonolithFile.h>
#include <RKSingleton.h>
#include <RKXMLLoader.h>

#include <QSet>
#include <QThread>

#include <atomic>
#include <functional>

namespace {

// Counts constructions and setup calls; the constructor is slow so that racing threads overlap.
class SlowService : public RKSingleton<SlowService>
{
    friend class RKSingleton<SlowService>;

public:
    static std::atomic<int> constructed, setUp;
    bool ready = false;
    void setupSingleton() { ++setUp; ready = true; }

private:
    SlowService() { ++constructed; QThread::msleep(50); }
};
std::atomic<int> SlowService::constructed{0}, SlowService::setUp{0};

enum class Feature : int { None = 0, Holidays = 1, Vacations = 2, Moon = 4, Weeks = 8 };

class Features : public RKEnumWrapper<Feature>
{
public:
    using RKEnumWrapper<Feature>::RKEnumWrapper;
    static std::atomic<int> fills;
    void fillTable(RKEnumToStringTable<Feature>* table) const override
    {
        ++fills;
        table->insert(QStringLiteral("Holidays"), Feature::Holidays);
        table->insert(QStringLiteral("feiertage"), Feature::Holidays);
        table->insert(QStringLiteral("vacations"), Feature::Vacations);
        table->insert(QStringLiteral("moon"), Feature::Moon);
        table->setUnknownWord(QStringLiteral("none"));
    }
    void read(const QString& csv) { decodeFrom(csv); }
};
std::atomic<int> Features::fills{0};

// Runs `work` on `count` threads released together; fails when one does not finish.
void runConcurrently(int count, const std::function<void(int)>& work)
{
    std::atomic<int> go{0};
    QList<QThread*> workers;
    for (int i = 0; i < count; ++i) {
        workers << QThread::create([i, &go, &work] {
            while (go.load() == 0)
                QThread::yieldCurrentThread();
            work(i);
        });
        workers.last()->start();
    }
    go.store(1);
    for (QThread* worker : workers) {
        QVERIFY(worker->wait(10000));
        delete worker;
    }
}

RKLocale locale(const char* language, const char* country) { return RKLocale(QLatin1String(language), QLatin1String(country)); }

}

class TestCore : public QObject
{
    Q_OBJECT
    QTemporaryDir myDir;

private Q_SLOTS:
    void initTestCase() { isolateUserFiles(); QVERIFY(myDir.isValid()); }
    void cleanup() { qunsetenv("RKXML_RESOURCE_PATH"); RKDirectoryConfig::instance().reload(); }

    void singletonCreatedOnceUnderConcurrency()
    {
        QVector<SlowService*> seen(8, nullptr);
        QVector<bool> readySeen(8, false);
        runConcurrently(8, [&](int i) {
            seen[i] = &SlowService::instance();
            readySeen[i] = seen[i]->ready; // setup ran before anyone got the instance
        });
        QCOMPARE(SlowService::constructed.load(), 1);
        QCOMPARE(SlowService::setUp.load(), 1);
        QCOMPARE(seen, QVector<SlowService*>(8, &SlowService::instance()));
        QCOMPARE(readySeen, QVector<bool>(8, true));
    }

    void localeDecodeName_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::newRow("dash, mixed case") << QStringLiteral("DE-at") << QStringLiteral("de_AT");
        QTest::newRow("language only") << QStringLiteral("fr") << QStringLiteral("fr");
        QTest::newRow("three letters") << QStringLiteral("fil_PH") << QStringLiteral("fil_PH");
        QTest::newRow("region number") << QStringLiteral("es_419") << QStringLiteral("es_419");
        QTest::newRow("padded") << QStringLiteral(" en_GB ") << QStringLiteral("en_GB");
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("too long") << QStringLiteral("deutsch") << QString();
        QTest::newRow("trailing separator") << QStringLiteral("de_") << QString();
        QTest::newRow("three pieces") << QStringLiteral("zh_Hans_CN") << QString();
    }
    void localeDecodeName()
    {
        QFETCH(QString, text);
        QFETCH(QString, name);
        const RKLocale decoded = RKLocale::decodeName(text);
        QCOMPARE(decoded.name(), name);
        QCOMPARE(decoded.isValid(), !name.isEmpty());
        if (decoded.isValid())
            QCOMPARE(RKLocale::decodeName(decoded.name()), decoded);
    }

    void localeXMLOrderAndHash()
    {
        const RKLocale fromXml = RKLocale::fromXML(testElement(QStringLiteral("<locale language=\" DE \" country=\"ch\"/>")));
        QCOMPARE(fromXml, locale("de", "CH"));
        QDomElement written = testElement(QStringLiteral("<copy/>"));
        fromXml.toXML(written);
        QCOMPARE(RKLocale::fromXML(written), fromXml);
        QVERIFY(!RKLocale::fromXML(QDomElement()).isValid());

        QList<RKLocale> locales{locale("fr", "FR"), locale("de", "DE"), locale("de", "AT"), locale("de", "")};
        std::sort(locales.begin(), locales.end());
        QCOMPARE(locales, (QList<RKLocale>{locale("de", ""), locale("de", "AT"), locale("de", "DE"), locale("fr", "FR")}));
        QVERIFY(!(locales[1] < locales[1]));
        // Equal locales hash alike; swapped language and country must not collide.
        QCOMPARE(qHash(locale("DE", "de")), qHash(locale("de", "DE")));
        QVERIFY(qHash(locale("at", "DE")) != qHash(locale("de", "AT")));
        QSet<RKLocale> set(locales.begin(), locales.end());
        set.insert(locale("de", "DE"));
        QCOMPARE(set.size(), 4);
    }

    void resourcePathOrderAndFallBack()
    {
        const QString first = myDir.filePath(QStringLiteral("first")), second = myDir.filePath(QStringLiteral("second"));
        writeTestFile(second + QStringLiteral("/holidays/x.xml"), "<second/>");
        writeTestFile(first + QStringLiteral("/only/first.xml"), "<first/>");
        writeTestFile(second + QStringLiteral("/only/first.xml"), "<shadowed/>");
        qputenv("RKXML_RESOURCE_PATH", (first + QStringLiteral("::") + second).toLocal8Bit());
        RKDirectoryConfig& config = RKDirectoryConfig::instance();
        config.reload();
        const QString shipped = config.shippedDataDirectory();
        QCOMPARE(config.resourceDirectories(), QStringList({first, second, shipped}));
        QCOMPARE(config.resource(QStringLiteral("only/first.xml")), first + QStringLiteral("/only/first.xml"));
        QCOMPARE(config.resource(QStringLiteral("holidays/x.xml")), second + QStringLiteral("/holidays/x.xml"));
        // Nothing found: the shipped directory's path, so that a warning names a useful file.
        QCOMPARE(config.resource(QStringLiteral("nowhere/none.xml")), QDir(shipped).filePath(QStringLiteral("nowhere/none.xml")));
        QCOMPARE(config.findInGlintoraDirs(QStringLiteral("holidays/x.xml")).absoluteFilePath(), second + QStringLiteral("/holidays/x.xml"));
        QVERIFY(config.findInGlintoraDirs(QStringLiteral("nowhere/none.xml")).filePath().isEmpty());
        QVERIFY(config.findInGlintoraDirs(QString()).filePath().isEmpty());
        QCOMPARE(config.findInGlintoraDirs(second + QStringLiteral("/holidays/x.xml")).absoluteFilePath(), second + QStringLiteral("/holidays/x.xml"));

        qunsetenv("RKXML_RESOURCE_PATH");
        config.reload();
        QCOMPARE(config.resourceDirectories(), QStringList{config.shippedDataDirectory()});
        QCOMPARE(config.shippedDataDirectory(), QDir(qEnvironmentVariable("RKXML_DATA_DIR", QStringLiteral(RKXML_SHIPPED_DATA_DIR))).absolutePath());

        // Writable resources go below the directory named by the environment, creating folders.
        const QString writable = QDir(qEnvironmentVariable("RKXML_WRITABLE_DIR")).absolutePath();
        QCOMPARE(config.writableDirectory(), writable);
        QCOMPARE(config.resource(QStringLiteral("sub/dir/calendarium_config.xml"), true), writable + QStringLiteral("/sub/dir/calendarium_config.xml"));
        QVERIFY(QFileInfo(writable + QStringLiteral("/sub/dir")).isDir());
        QCOMPARE(config.programDataTLMPath(QStringLiteral("a/b.xml")), writable + QStringLiteral("/programdata/a/b.xml"));
    }

    void loaderFailuresAreReportedOnce()
    {
        const QString path = myDir.filePath(QStringLiteral("broken.xml"));
        writeTestFile(path, "<root>\n  <a>\n  </b>\n</root>\n");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^XML parse error in \".*broken\\.xml\" at line 3, column \\d+: .+$")));
        QVERIFY(RKXMLLoader::loadDocument(path).isNull());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^XML parse error in \".*broken\\.xml\"")));
        QVERIFY(RKXMLLoader::loadDocumentElement(QFileInfo(path)).isNull());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Could not read XML file \".*absent\\.xml\"")));
        QVERIFY(RKXMLLoader::loadDocument(myDir.filePath(QStringLiteral("absent.xml"))).isNull());
        QTest::ignoreMessage(QtWarningMsg, "Could not read XML file \"\": no file name");
        QVERIFY(RKXMLLoader::loadDocument(QString()).isNull());

        writeTestFile(path, "<root a=\"1\"/>");
        QCOMPARE(RKXMLLoader::loadDocumentElement(path).attribute(QStringLiteral("a")), QStringLiteral("1"));
        // Prefixed names stay as written.
        QCOMPARE(RKXMLLoader::parse("<svg vako:cal=\"x\"/>", QStringLiteral("mem")).documentElement().attribute(QStringLiteral("vako:cal")), QStringLiteral("x"));
    }

    void monolithPaths()
    {
        const QString pack = myDir.filePath(QStringLiteral("m/pack.rkm"));
        writeTestFile(pack, "packed");
        QVERIFY(RKMonolithFile::isMonolithPath(pack + QStringLiteral("/cards/a.svg")));
        QVERIFY(RKMonolithFile::isMonolithPath(pack + QStringLiteral("/a.svg")));
        for (const QString& outside : {pack, myDir.filePath(QStringLiteral("m/other/x.svg")), QString(), QStringLiteral("/")})
            QVERIFY2(!RKMonolithFile::isMonolithPath(outside), qPrintable(outside));
    }

    void enumWordTables()
    {
        RKEnumToStringTable<Feature> table;
        Features().fillTable(&table);
        QCOMPARE(table.decode(QStringLiteral(" HOLIDAYS "), Feature::None), Feature::Holidays);
        QCOMPARE(table.decode(QStringLiteral("Feiertage"), Feature::None), Feature::Holidays);
        QCOMPARE(table.decode(QStringLiteral("x"), Feature::Weeks), Feature::Weeks);
        QCOMPARE(int(table.decodeCSV(QStringLiteral("moon, vacations"))), 6);
        table.setUnknownValue(Feature::Weeks);
        QCOMPARE(int(table.decodeCSV(QStringLiteral("moon,,bogus"))), 4 | 8);
        // The first word inserted names the value, as it was written.
        QCOMPARE(table.encodeCSV(static_cast<Feature>(7)), QStringLiteral("Holidays, vacations, moon"));
        QCOMPARE(table.encodeCSV(Feature::None), QStringLiteral("none"));
        // A bit without a word is skipped, also the sign bit.
        QVERIFY(table.encodeAsList(static_cast<Feature>(-1)).isEmpty());
        QCOMPARE(table.encodeAsList(static_cast<Feature>(8 | 1)), QStringList{QStringLiteral("Holidays")});
    }

    void enumWrapperTableBuiltOnce()
    {
        const int fillsBefore = Features::fills.load();
        Features a(Feature::Holidays);
        a |= Feature::Moon;
        QCOMPARE(a.encodeCSV(), QStringLiteral("Holidays, moon"));
        Features b;
        b.read(QStringLiteral("vacations,MOON"));
        QCOMPARE(b.toInt(), 6);
        QVERIFY(a != b);
        QVERIFY(a == Features(static_cast<Feature>(5)));
        QCOMPARE(int(a & b), 4);
        b.exclude(Feature::Moon);
        b.expandTo(a);
        QCOMPARE(b.toInt(), 7);
        QCOMPARE(int(b.reducedTo(Feature::Vacations)), 2);
        b.reduceTo(Feature::Holidays);
        QCOMPARE(b.toInt(), 1);
        QVERIFY(!Features().isValid());
        QVERIFY(Features(Feature::Holidays) < Features(Feature::Moon));
        runConcurrently(4, [](int) { Features(Feature::Moon).encodeCSV(); });
        QCOMPARE(Features::fills.load(), fillsBefore + 1);
    }
};

QTEST_GUILESS_MAIN(TestCore)
#include "test_core.moc"
