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

namespace {

// Counts constructions and setup calls; the constructor is slow so that racing threads overlap.
class SlowService : public RKSingleton<SlowService>
{
    friend class RKSingleton<SlowService>;

public:
    static std::atomic<int> constructed;
    static std::atomic<int> setUp;
    bool ready = false;
    void setupSingleton()
    {
        ++setUp;
        ready = true;
    }

private:
    SlowService()
    {
        ++constructed;
        QThread::msleep(50);
    }
};
std::atomic<int> SlowService::constructed{0};
std::atomic<int> SlowService::setUp{0};

class PlainService : public RKSingleton<PlainService>
{
    friend class RKSingleton<PlainService>;
    PlainService() = default;
};

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

void writeFile(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

}

class TestCore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void singletonCreatedOnceUnderConcurrency();
    void singletonWithoutSetupHook();
    void localeDecodeName_data();
    void localeDecodeName();
    void localeFromXMLOrderAndHash();
    void resourcePathOrderAndFallBack();
    void writableDirectoryFromEnvironment();
    void loaderWarnsOnceWithPosition();
    void loaderMissingFile();
    void monolithPaths();
    void enumWordTables();
    void enumWrapperTableBuiltOnce();

private:
    QTemporaryDir myDir;
};

void TestCore::initTestCase()
{
    isolateUserFiles();
    QVERIFY(myDir.isValid());
}

void TestCore::cleanup()
{
    qunsetenv("RKXML_RESOURCE_PATH");
    RKDirectoryConfig::instance().reload();
}

void TestCore::singletonCreatedOnceUnderConcurrency()
{
    const int threads = 8;
    std::atomic<int> go{0};
    QVector<SlowService*> seen(threads, nullptr);
    QVector<bool> readySeen(threads, false);
    QList<QThread*> workers;
    for (int i = 0; i < threads; ++i) {
        workers << QThread::create([i, &go, &seen, &readySeen] {
            while (go.load() == 0)
                QThread::yieldCurrentThread();
            SlowService& service = SlowService::instance();
            seen[i] = &service;
            readySeen[i] = service.ready; // setup ran before anyone got the instance
        });
        workers.last()->start();
    }
    go.store(1);
    for (QThread* worker : workers) {
        QVERIFY(worker->wait(10000));
        delete worker;
    }
    QCOMPARE(SlowService::constructed.load(), 1);
    QCOMPARE(SlowService::setUp.load(), 1);
    for (int i = 0; i < threads; ++i) {
        QCOMPARE(seen[i], &SlowService::instance());
        QVERIFY(readySeen[i]);
    }
}

void TestCore::singletonWithoutSetupHook()
{
    QCOMPARE(&PlainService::instance(), &PlainService::instance());
}

void TestCore::localeDecodeName_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::newRow("underscore") << QStringLiteral("de_DE") << QStringLiteral("de_DE");
    QTest::newRow("dash, mixed case") << QStringLiteral("DE-at") << QStringLiteral("de_AT");
    QTest::newRow("language only") << QStringLiteral("fr") << QStringLiteral("fr");
    QTest::newRow("three letters") << QStringLiteral("fil_PH") << QStringLiteral("fil_PH");
    QTest::newRow("region number") << QStringLiteral("es_419") << QStringLiteral("es_419");
    QTest::newRow("padded") << QStringLiteral(" en_GB ") << QStringLiteral("en_GB");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("too long") << QStringLiteral("deutsch") << QString();
    QTest::newRow("trailing separator") << QStringLiteral("de_") << QString();
    QTest::newRow("three parts") << QStringLiteral("zh_Hans_CN") << QString();
}

void TestCore::localeDecodeName()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    const RKLocale locale = RKLocale::decodeName(text);
    QCOMPARE(locale.name(), name);
    QCOMPARE(locale.isValid(), !name.isEmpty());
    if (locale.isValid())
        QCOMPARE(RKLocale::decodeName(locale.name()), locale);
}

void TestCore::localeFromXMLOrderAndHash()
{
    QDomDocument document;
    QDomElement e = document.createElement(QStringLiteral("locale"));
    e.setAttribute(QStringLiteral("language"), QStringLiteral(" DE "));
    e.setAttribute(QStringLiteral("country"), QStringLiteral("ch"));
    const RKLocale fromXml = RKLocale::fromXML(e);
    QCOMPARE(fromXml, RKLocale(QStringLiteral("de"), QStringLiteral("CH")));
    QDomElement written = document.createElement(QStringLiteral("copy"));
    fromXml.toXML(written);
    QCOMPARE(RKLocale::fromXML(written), fromXml);
    QVERIFY(!RKLocale::fromXML(QDomElement()).isValid());

    QList<RKLocale> locales{RKLocale(QStringLiteral("fr"), QStringLiteral("FR")), RKLocale(QStringLiteral("de"), QStringLiteral("DE")),
        RKLocale(QStringLiteral("de"), QStringLiteral("AT")), RKLocale(QStringLiteral("de"), QString())};
    std::sort(locales.begin(), locales.end());
    QStringList names;
    for (const RKLocale& l : locales)
        names << l.name();
    QCOMPARE(names, QStringList({QStringLiteral("de"), QStringLiteral("de_AT"), QStringLiteral("de_DE"), QStringLiteral("fr_FR")}));
    QVERIFY(!(locales[1] < locales[1]));

    // Equal locales hash alike; swapped language and country must not collide.
    QCOMPARE(qHash(RKLocale(QStringLiteral("DE"), QStringLiteral("de"))), qHash(RKLocale(QStringLiteral("de"), QStringLiteral("DE"))));
    QVERIFY(qHash(RKLocale(QStringLiteral("at"), QStringLiteral("DE"))) != qHash(RKLocale(QStringLiteral("de"), QStringLiteral("AT"))));
    QSet<RKLocale> set;
    for (const RKLocale& l : locales)
        set.insert(l);
    set.insert(RKLocale(QStringLiteral("de"), QStringLiteral("DE")));
    QCOMPARE(set.size(), 4);
}

void TestCore::resourcePathOrderAndFallBack()
{
    const QString first = myDir.filePath(QStringLiteral("first"));
    const QString second = myDir.filePath(QStringLiteral("second"));
    writeFile(second + QStringLiteral("/holidays/x.xml"), "<second/>");
    writeFile(first + QStringLiteral("/only/first.xml"), "<first/>");
    writeFile(second + QStringLiteral("/only/first.xml"), "<shadowed/>");
    qputenv("RKXML_RESOURCE_PATH", (first + QStringLiteral("::") + second).toLocal8Bit());
    RKDirectoryConfig& config = RKDirectoryConfig::instance();
    config.reload();
    const QStringList dirs = config.resourceDirectories();
    QCOMPARE(dirs.size(), 3);
    QCOMPARE(dirs.at(0), first);
    QCOMPARE(dirs.at(1), second);
    QCOMPARE(dirs.at(2), config.shippedDataDirectory());

    QCOMPARE(config.resource(QStringLiteral("only/first.xml")), first + QStringLiteral("/only/first.xml"));
    QCOMPARE(config.resource(QStringLiteral("holidays/x.xml")), second + QStringLiteral("/holidays/x.xml"));
    // Nothing found: the shipped directory's path, so that a warning names a useful file.
    QCOMPARE(config.resource(QStringLiteral("nowhere/none.xml")), QDir(config.shippedDataDirectory()).filePath(QStringLiteral("nowhere/none.xml")));
    QCOMPARE(config.findInGlintoraDirs(QStringLiteral("holidays/x.xml")).absoluteFilePath(), second + QStringLiteral("/holidays/x.xml"));
    QVERIFY(config.findInGlintoraDirs(QStringLiteral("nowhere/none.xml")).filePath().isEmpty());
    QVERIFY(config.findInGlintoraDirs(QString()).filePath().isEmpty());
    QCOMPARE(config.findInGlintoraDirs(second + QStringLiteral("/holidays/x.xml")).absoluteFilePath(), second + QStringLiteral("/holidays/x.xml"));

    qunsetenv("RKXML_RESOURCE_PATH");
    config.reload();
    QCOMPARE(config.resourceDirectories(), QStringList{config.shippedDataDirectory()});
    QCOMPARE(config.shippedDataDirectory(), QDir(qEnvironmentVariable("RKXML_DATA_DIR", QStringLiteral(RKXML_SHIPPED_DATA_DIR))).absolutePath());
}

void TestCore::writableDirectoryFromEnvironment()
{
    RKDirectoryConfig& config = RKDirectoryConfig::instance();
    const QString writable = QDir(qEnvironmentVariable("RKXML_WRITABLE_DIR")).absolutePath();
    QCOMPARE(config.writableDirectory(), writable);
    const QString path = config.resource(QStringLiteral("sub/dir/calendarium_config.xml"), true);
    QCOMPARE(path, writable + QStringLiteral("/sub/dir/calendarium_config.xml"));
    QVERIFY(QFileInfo(writable + QStringLiteral("/sub/dir")).isDir());
    QCOMPARE(config.programDataTLMPath(QStringLiteral("a/b.xml")).left(writable.size()), writable);
}

void TestCore::loaderWarnsOnceWithPosition()
{
    const QString path = myDir.filePath(QStringLiteral("broken.xml"));
    writeFile(path, "<root>\n  <a>\n  </b>\n</root>\n");
    QTest::ignoreMessage(QtWarningMsg,
        QRegularExpression(QStringLiteral("^XML parse error in \".*broken\\.xml\" at line 3, column \\d+: .+$")));
    QVERIFY(RKXMLLoader::loadDocument(path).isNull());

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^XML parse error in \".*broken\\.xml\"")));
    QVERIFY(RKXMLLoader::loadDocumentElement(QFileInfo(path)).isNull());

    writeFile(path, "<root a=\"1\"/>");
    QCOMPARE(RKXMLLoader::loadDocumentElement(path).attribute(QStringLiteral("a")), QStringLiteral("1"));
    // Prefixed names stay as written.
    QCOMPARE(RKXMLLoader::parse("<svg vako:cal=\"x\"/>", QStringLiteral("mem")).documentElement().attribute(QStringLiteral("vako:cal")), QStringLiteral("x"));
}

void TestCore::loaderMissingFile()
{
    const QString path = myDir.filePath(QStringLiteral("absent.xml"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Could not read XML file \".*absent\\.xml\"")));
    QVERIFY(RKXMLLoader::loadDocument(path).isNull());
    QTest::ignoreMessage(QtWarningMsg, "Could not read XML file \"\": no file name");
    QVERIFY(RKXMLLoader::loadDocument(QString()).isNull());
}

void TestCore::monolithPaths()
{
    const QString pack = myDir.filePath(QStringLiteral("m/pack.rkm"));
    writeFile(pack, "packed");
    QVERIFY(RKMonolithFile::isMonolithPath(pack + QStringLiteral("/cards/a.svg")));
    QVERIFY(RKMonolithFile::isMonolithPath(pack + QStringLiteral("/a.svg")));
    QVERIFY(!RKMonolithFile::isMonolithPath(pack));
    QVERIFY(!RKMonolithFile::isMonolithPath(myDir.filePath(QStringLiteral("m/other/x.svg"))));
    QVERIFY(!RKMonolithFile::isMonolithPath(QString()));
    QVERIFY(!RKMonolithFile::isMonolithPath(QStringLiteral("/")));
}

void TestCore::enumWordTables()
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
    QCOMPARE(table.encodeAsList(static_cast<Feature>(7)), QStringList({QStringLiteral("Holidays"), QStringLiteral("vacations"), QStringLiteral("moon")}));
    QCOMPARE(table.encodeCSV(static_cast<Feature>(5)), QStringLiteral("Holidays, moon"));
    QCOMPARE(table.encodeCSV(Feature::None), QStringLiteral("none"));
    QVERIFY(table.encodeAsList(static_cast<Feature>(-1)).isEmpty());
    // A bit without a word is skipped, also the sign bit.
    QCOMPARE(table.encodeAsList(static_cast<Feature>(8 | 1)), QStringList{QStringLiteral("Holidays")});
}

void TestCore::enumWrapperTableBuiltOnce()
{
    const int fillsBefore = Features::fills.load();
    Features a(Feature::Holidays);
    a |= Feature::Moon;
    QCOMPARE(a.encodeCSV(), QStringLiteral("Holidays, moon"));
    Features b;
    b.read(QStringLiteral("vacations,MOON"));
    QCOMPARE(b.toInt(), 6);
    QVERIFY(a != b && a == Features(static_cast<Feature>(5)));
    QCOMPARE(int(a & b), 4);
    QCOMPARE(int(a | b), 7);
    b.exclude(Feature::Moon);
    QCOMPARE(b.toInt(), 2);
    b.expandTo(a);
    QCOMPARE(b.toInt(), 7);
    QCOMPARE(int(b.reducedTo(Feature::Vacations)), 2);
    QCOMPARE(b.toInt(), 7);
    b.reduceTo(Feature::Holidays);
    QCOMPARE(b.toInt(), 1);
    QVERIFY(!Features().isValid());
    QVERIFY(Features(Feature::Holidays) < Features(Feature::Moon));

    QList<QThread*> workers;
    for (int i = 0; i < 4; ++i) {
        workers << QThread::create([] { Features(Feature::Moon).encodeCSV(); });
        workers.last()->start();
    }
    for (QThread* worker : workers) {
        QVERIFY(worker->wait(10000));
        delete worker;
    }
    QCOMPARE(Features::fills.load(), fillsBefore + 1);
}

QTEST_GUILESS_MAIN(TestCore)
#include "test_core.moc"
