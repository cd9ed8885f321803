#include "RKTestSupport.h"

#include <RKCssSheetCache.h>
#include <RKCssSheetRegistry.h>
#include <RKDefaultCssSheetFactory.h>
#include <RKDirectoryConfig.h>

#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <atomic>
#include <thread>
#include <vector>

namespace {
constexpr int WORKERS = 8;
constexpr qint64 RUN_MILLISECONDS = 1500;

QString fixture(const QString& name)
{
    return QDir::cleanPath(testDataPath(QStringLiteral("css/") + name));
}

// Collects every message while alive, so that tests can assert how often one was logged.
class MessageCapture
{
public:
    MessageCapture() { myPrevious = qInstallMessageHandler(&MessageCapture::handle); messages().clear(); }
    ~MessageCapture() { qInstallMessageHandler(myPrevious); }
    static QStringList& messages()
    {
        static QStringList captured;
        return captured;
    }

private:
    static void handle(QtMsgType, const QMessageLogContext&, const QString& message) { messages() << message; }
    QtMessageHandler myPrevious;
};

RKCssSheetCache& cache()
{
    return RKSingleton<RKCssSheetCache>::instance();
}

RKCssSheetRegistry& registry()
{
    return RKSingleton<RKCssSheetRegistry>::instance();
}
}

class TestCssCache : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        RKDirectoryConfig::instance().reload();
    }

    void init()
    {
        cache().clearCache();
        registry().clearCache();
        QVERIFY(cache().isEmpty());
        QVERIFY(registry().isEmpty());
    }

    void factoryColor_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("color");
        QTest::newRow("hex") << "customColor#ff0000.css" << "#ff0000";
        QTest::newRow("no colour") << "customColor.css" << "";
        QTest::newRow("prefix case") << "customcolor#ff0000.css" << "";
        QTest::newRow("suffix case") << "customColor#ff0000.CSS" << "";
        QTest::newRow("empty") << "" << "";
    }

    void factoryColor()
    {
        QFETCH(QString, id);
        QFETCH(QString, color);
        QCOMPARE(RKDefaultCssSheetFactory::color(id), color);
        QCOMPARE(RKDefaultCssSheetFactory::cssAvailable(id), !color.isEmpty());
        // The generated text itself is checked as written in generatedSheetsNeverTouchDisk.
        QCOMPARE(RKDefaultCssSheetFactory::cssString(id).isEmpty(), color.isEmpty());
    }

    void generatedSheetsNeverTouchDisk()
    {
        MessageCapture capture;
        QCOMPARE(cache().cssString(QStringLiteral("customColor#ff0000.css")), QStringLiteral(".vakoCustomFill{fill: #ff0000;}"));
        QVERIFY(registry().isValidId(QStringLiteral("customColor#123456.css")));
        QVERIFY(registry().isEmpty());
        QCOMPARE(cache().currentCacheSize(), 1);
        QVERIFY(MessageCapture::messages().isEmpty());
    }

    void shippedSheets()
    {
        const QFileInfo list(shippedDataPath(QStringLiteral("css/calendar-sheets.xml")));
        const RKCssSheetTitleIdMap map = cache().styleSheetsIn(list);
        // Shipped sheets are named relative to the data directory, independent of where it is installed.
        QCOMPARE(map.toDebugStringList(),
            (QStringList{ "Blue <=> css/blue.css", "Green <=> css/green.css", "Standard (default) <=> css/default.css" }));

        for (const QString& id : map.values()) {
            QVERIFY(registry().isValidId(id));
            const QString css = cache().cssString(id);
            QCOMPARE(css, QString::fromUtf8(readTestFile(shippedDataPath(id))));
            for (const char* selector : { ".cm_cal_sunday0", ".m11_cal_saturday5", ".lcm_cal_weekday5", ".holiday" })
                QVERIFY2(css.contains(QLatin1String(selector)), qPrintable(id + QLatin1Char(' ') + selector));
        }

        // A sheet object goes by its id, its absolute path here: the same text as by the short id.
        const RKCssSheet sheet(QFileInfo(shippedDataPath(QStringLiteral("css/green.css"))));
        QCOMPARE(cache().cssString(sheet), cache().cssString(QStringLiteral("css/green.css")));
        QVERIFY(cache().cssString(RKCssSheet()).isEmpty());
    }

    void unknownIds()
    {
        MessageCapture capture;
        QVERIFY(!registry().document(QStringLiteral("css/nothere.css")).isValid());
        QVERIFY(!registry().isValidId(QStringLiteral("css/nothere.css")));
        QVERIFY(registry().document(QString()).fileInfo().filePath().isEmpty());
        const QString warning = QStringLiteral("file with CSSId=css/nothere.css not found");
        QCOMPARE(MessageCapture::messages(), (QStringList{ warning, warning }));

        MessageCapture::messages().clear();
        QVERIFY(cache().cssString(QStringLiteral("css/nothere.css")).isEmpty());
        QVERIFY(cache().cssString(QStringLiteral("css/nothere.css")).isEmpty()); // the empty text is cached
        QCOMPARE(MessageCapture::messages(), QStringList{ warning });
        QVERIFY(registry().isEmpty());
    }

    void evictionAfter101Ids()
    {
        QTemporaryDir dir;
        QStringList ids;
        for (int i = 0; i < 101; ++i) {
            ids << dir.filePath(QStringLiteral("sheet%1.css").arg(i));
            writeTestFile(ids.last(), QStringLiteral(".s%1{}").arg(i).toUtf8());
        }
        for (const QString& id : qAsConst(ids))
            QCOMPARE(cache().cssString(id), QStringLiteral(".s%1{}").arg(ids.indexOf(id)));
        QCOMPARE(cache().currentCacheSize(), 100);

        // Change the files on disk: only an evicted text is read again.
        writeTestFile(ids.first(), ".changed{}");
        writeTestFile(ids.last(), ".changed{}");
        QCOMPARE(cache().cssString(ids.last()), QStringLiteral(".s100{}"));
        QCOMPARE(cache().cssString(ids.first()), QStringLiteral(".changed{}"));
        QCOMPARE(cache().currentCacheSize(), 100);
    }

    void mapCacheAndClear()
    {
        QTemporaryDir dir;
        QVERIFY(QFile::copy(fixture(QStringLiteral("alpha.css")), dir.filePath(QStringLiteral("alpha.css"))));
        QVERIFY(QFile::copy(fixture(QStringLiteral("beta.css")), dir.filePath(QStringLiteral("beta.css"))));
        const QString listing = dir.filePath(QStringLiteral("list.xml"));
        writeTestFile(listing, "<?xml-stylesheet href=\"alpha.css\" title=\"A\"?><list/>");
        QCOMPARE(cache().styleSheetsIn(QFileInfo(listing)).keys(), QStringList{ "A" });

        writeTestFile(listing, "<?xml-stylesheet href=\"beta.css\" title=\"B\"?><list/>");
        QCOMPARE(cache().styleSheetsIn(QFileInfo(listing)).keys(), QStringList{ "A" });
        cache().clearCache();
        QVERIFY(cache().isEmpty());
        QCOMPARE(cache().styleSheetsIn(QFileInfo(listing)).keys(), QStringList{ "B" });
        QVERIFY(!cache().isEmpty());
    }

    void unreadableListings()
    {
        const QString missing = fixture(QStringLiteral("nothere.xml"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Could not read XML file")));
        QTest::ignoreMessage(QtWarningMsg, qPrintable(QStringLiteral("include fails: file not found: ") + missing));
        QVERIFY(cache().styleSheetsIn(QFileInfo(missing)).isEmpty());
        QVERIFY(cache().isEmpty()); // failures are not cached
    }

    void selfInclude()
    {
        const QString path = fixture(QStringLiteral("include-self.xml"));
        QTest::ignoreMessage(QtWarningMsg, qPrintable(QStringLiteral("include cycle: file already being read: ") + path));
        const RKCssSheetTitleIdMap map = cache().styleSheetsIn(QFileInfo(path));
        QCOMPARE(map.keys(), QStringList{ "Alpha" });

        MessageCapture capture;
        QCOMPARE(cache().styleSheetsIn(QFileInfo(path)), map);
        QVERIFY(MessageCapture::messages().isEmpty());
    }

    void includeCycle()
    {
        const QString a = fixture(QStringLiteral("cycle-a.xml"));
        const QString b = fixture(QStringLiteral("cycle-b.xml"));
        QTest::ignoreMessage(QtWarningMsg, qPrintable(QStringLiteral("include cycle: file already being read: ") + a));
        const RKCssSheetTitleIdMap fromA = cache().styleSheetsIn(QFileInfo(a));
        QCOMPARE(fromA.keys(), (QStringList{ "Alpha", "Beta" }));
        QCOMPARE(fromA.defaultCssSheetTitle(), QStringLiteral("Alpha"));

        // b's map built inside the cut cycle lacked a's sheets and was not cached:
        // asked directly, b is read again and gets a's complete map from the cache.
        MessageCapture capture;
        const RKCssSheetTitleIdMap fromB = cache().styleSheetsIn(QFileInfo(b));
        QCOMPARE(fromB.keys(), (QStringList{ "Alpha", "Beta" }));
        QCOMPARE(fromB.defaultCssSheetTitle(), QStringLiteral("Beta"));
        QVERIFY(MessageCapture::messages().isEmpty());
    }

    void hammerCachesWhileClearing()
    {
        // Expected answers, computed on this thread before any sharing (the tests above check them).
        QStringList cssIds{ "css/default.css", "css/blue.css", "css/green.css" };
        for (const char* name : { "alpha.css", "beta.css", "gamma.css" })
            cssIds << fixture(QLatin1String(name));
        // More generated sheets than the cache holds, so that eviction runs concurrently too.
        for (int i = 0; i < 150; ++i)
            cssIds << QStringLiteral("customColor#%1.css").arg(i * 101, 6, 16, QLatin1Char('0'));
        const QStringList listings{ shippedDataPath(QStringLiteral("css/calendar-sheets.xml")), fixture(QStringLiteral("list.xml")),
            fixture(QStringLiteral("includer.svg")), fixture(QStringLiteral("template.svg")) };
        QHash<QString, QString> expectedCss;
        for (const QString& id : qAsConst(cssIds)) {
            expectedCss.insert(id, cache().cssString(id));
            QVERIFY2(!expectedCss.value(id).isEmpty(), qPrintable(id));
        }
        QHash<QString, QStringList> expectedTitles;
        for (const QString& listing : listings) {
            expectedTitles.insert(listing, cache().styleSheetsIn(QFileInfo(listing)).keys());
            QVERIFY2(!expectedTitles.value(listing).isEmpty(), qPrintable(listing));
        }
        cache().clearCache();
        registry().clearCache();

        std::atomic<int> mismatches{ 0 };
        std::atomic<int> calls{ 0 };
        std::atomic<bool> stop{ false };

        auto worker = [&](int seed) {
            QElapsedTimer timer;
            timer.start();
            int step = seed * 7;
            while (timer.elapsed() < RUN_MILLISECONDS) {
                const QString& id = cssIds.at(step % cssIds.size());
                if (cache().cssString(id) != expectedCss.value(id))
                    ++mismatches;
                const QString& listing = listings.at((step / 3) % listings.size());
                if (cache().styleSheetsIn(QFileInfo(listing)).keys() != expectedTitles.value(listing))
                    ++mismatches;
                const QString sheetId = cssIds.at((step * 13) % cssIds.size());
                if (!sheetId.startsWith(QLatin1String("customColor")) && !registry().document(sheetId).isValid())
                    ++mismatches;
                calls += 3;
                step += seed + 1;
            }
        };
        auto clearer = [&]() {
            while (!stop.load()) {
                cache().clearCache();
                registry().clearCache();
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
            }
        };

        std::thread clearing(clearer);
        std::vector<std::thread> workers;
        for (int i = 0; i < WORKERS; ++i)
            workers.emplace_back(worker, i);
        for (std::thread& thread : workers)
            thread.join();
        stop = true;
        clearing.join();

        qInfo() << "calls:" << calls.load();
        QVERIFY(calls.load() > WORKERS * 3);
        QCOMPARE(mismatches.load(), 0);
        QVERIFY(cache().currentCacheSize() <= cache().maximumCacheSize());
    }
};

QTEST_GUILESS_MAIN(TestCssCache)
#include "test_csscache.moc"
