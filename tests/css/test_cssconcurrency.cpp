#include "RKTestSupport.h"

#include <RKCssSheetCache.h>
#include <RKCssSheetRegistry.h>
#include <RKDirectoryConfig.h>

#include <QElapsedTimer>
#include <QFile>

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

QString fileText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}
}

class TestCssConcurrency : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void hammerCachesWhileClearing();
};

void TestCssConcurrency::initTestCase()
{
    isolateUserFiles();
    RKDirectoryConfig::instance().reload();
}

void TestCssConcurrency::hammerCachesWhileClearing()
{
    // Expected answers, computed on this thread before any sharing.
    QHash<QString, QString> expectedCss;
    for (const char* id : { "css/default.css", "css/blue.css", "css/green.css" })
        expectedCss.insert(QLatin1String(id), fileText(shippedDataPath(QLatin1String(id))));
    for (const char* name : { "alpha.css", "beta.css", "gamma.css" })
        expectedCss.insert(fixture(QLatin1String(name)), fileText(fixture(QLatin1String(name))));
    // More generated sheets than the cache holds, so that eviction runs concurrently too.
    for (int i = 0; i < 150; ++i) {
        const QString color = QStringLiteral("#%1").arg(i * 101, 6, 16, QLatin1Char('0'));
        expectedCss.insert(QStringLiteral("customColor%1.css").arg(color), QStringLiteral(".vakoCustomFill{fill: %1;}").arg(color));
    }
    const QStringList cssIds = expectedCss.keys();

    QHash<QString, QStringList> expectedTitles;
    const QStringList listings{ shippedDataPath(QStringLiteral("css/calendar-sheets.xml")), fixture(QStringLiteral("list.xml")),
        fixture(QStringLiteral("includer.svg")), fixture(QStringLiteral("template.svg")) };
    RKCssSheetCache& cache = RKSingleton<RKCssSheetCache>::instance();
    RKCssSheetRegistry& registry = RKSingleton<RKCssSheetRegistry>::instance();
    for (const QString& listing : listings)
        expectedTitles.insert(listing, cache.styleSheetsIn(QFileInfo(listing)).keys());
    QCOMPARE(expectedTitles.value(listings.at(2)), (QStringList{ "Alpha", "Beta", "Gamma" }));
    for (const QString& id : cssIds)
        QCOMPARE(cache.cssString(id), expectedCss.value(id));
    cache.clearCache();
    registry.clearCache();

    std::atomic<int> mismatches{ 0 };
    std::atomic<int> calls{ 0 };
    std::atomic<bool> stop{ false };

    auto worker = [&](int seed) {
        QElapsedTimer timer;
        timer.start();
        int step = seed * 7;
        while (timer.elapsed() < RUN_MILLISECONDS) {
            const QString& id = cssIds.at(step % cssIds.size());
            if (cache.cssString(id) != expectedCss.value(id))
                ++mismatches;
            const QString& listing = listings.at((step / 3) % listings.size());
            if (cache.styleSheetsIn(QFileInfo(listing)).keys() != expectedTitles.value(listing))
                ++mismatches;
            const QString sheetId = cssIds.at((step * 13) % cssIds.size());
            if (!sheetId.startsWith(QLatin1String("customColor")) && !registry.document(sheetId).isValid())
                ++mismatches;
            calls += 3;
            step += seed + 1;
        }
    };
    auto clearer = [&]() {
        while (!stop.load()) {
            cache.clearCache();
            registry.clearCache();
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
    QVERIFY(cache.currentCacheSize() <= cache.maximumCacheSize());
}

QTEST_GUILESS_MAIN(TestCssConcurrency)
#include "test_cssconcurrency.moc"
