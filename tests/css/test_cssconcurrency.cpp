#include "RKTestSupport.h"

#include <RKCssSheetCache.h>
#include <RKCssSheetRegistry.h>
#include <RKDirectoryConfig.h>

#include <QElapsedTimer>

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
}

class TestCssConcurrency : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        RKDirectoryConfig::instance().reload();
    }

    void hammerCachesWhileClearing()
    {
        // Expected answers, computed on this thread before any sharing (test_csscache checks them).
        QStringList cssIds{ "css/default.css", "css/blue.css", "css/green.css" };
        for (const char* name : { "alpha.css", "beta.css", "gamma.css" })
            cssIds << fixture(QLatin1String(name));
        // More generated sheets than the cache holds, so that eviction runs concurrently too.
        for (int i = 0; i < 150; ++i)
            cssIds << QStringLiteral("customColor#%1.css").arg(i * 101, 6, 16, QLatin1Char('0'));
        const QStringList listings{ shippedDataPath(QStringLiteral("css/calendar-sheets.xml")), fixture(QStringLiteral("list.xml")),
            fixture(QStringLiteral("includer.svg")), fixture(QStringLiteral("template.svg")) };
        RKCssSheetCache& cache = RKSingleton<RKCssSheetCache>::instance();
        RKCssSheetRegistry& registry = RKSingleton<RKCssSheetRegistry>::instance();
        QHash<QString, QString> expectedCss;
        for (const QString& id : qAsConst(cssIds)) {
            expectedCss.insert(id, cache.cssString(id));
            QVERIFY2(!expectedCss.value(id).isEmpty(), qPrintable(id));
        }
        QHash<QString, QStringList> expectedTitles;
        for (const QString& listing : listings) {
            expectedTitles.insert(listing, cache.styleSheetsIn(QFileInfo(listing)).keys());
            QVERIFY2(!expectedTitles.value(listing).isEmpty(), qPrintable(listing));
        }
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
};

QTEST_GUILESS_MAIN(TestCssConcurrency)
#include "test_cssconcurrency.moc"
