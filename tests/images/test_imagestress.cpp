#include "RKTestSupport.h"

#include <RKBackgroundJobManager.h>
#include <RKCalculatedHolidayCache.h>
#include <RKCalendariumHolidayCalculator.h>
#include <RKCssSheetCache.h>
#include <RKDocumentCache.h>
#include <RKSVGCompilerInstructionsCache.h>
#include <RKSVGCompilerInstructionsFactory.h>
#include <RKSVGComposition.h>
#include <RKSVGImage.h>
#include <RKSVGImageRendererCache.h>

#include <QLoggingCategory>
#include <QPainter>
#include <QRandomGenerator>
#include <QSvgRenderer>
#include <QThread>

#include <atomic>
#include <memory>
#include <vector>

// Eight threads draw, recolour and invalidate calendar pages and clip art through the
// caches while another clears every cache and reloads the holiday data. Meant for the
// ThreadSanitizer build; in a normal build it checks that nothing crashes or deadlocks
// and that the pages still come out right afterwards.
class TestImageStress : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); // holiday-image traces
        RKSingleton<RKSVGCompilerInstructionsFactory>::instance().addHolidayCache(&myHolidays);
        const QFileInfo month(testDataPath("images/month.svg"));
        myMonth = std::make_unique<RKSVGImage>(month, RKCssSheetCache::instance().styleSheetsIn(month),
            QMap<QString, QString>(), false, false);
        myClipArt = std::make_unique<RKSVGImage>(QFileInfo(testDataPath("images/clipart.svg")),
            RKCssSheetTitleIdMap(), QMap<QString, QString>(), false, true);
    }

    void drawWhileCachesAreCleared()
    {
        const int seconds = qEnvironmentVariableIntValue("RKXML_STRESS_SECONDS") > 0
            ? qEnvironmentVariableIntValue("RKXML_STRESS_SECONDS") : 3;
        std::atomic<bool> stop{false};
        std::atomic<int> draws{0};
        std::atomic<int> clears{0};
        std::vector<std::unique_ptr<QThread>> threads;
        for (int t = 0; t < 8; ++t)
            threads.emplace_back(QThread::create([this, t, &stop, &draws] { drawPages(t, stop, draws); }));
        threads.emplace_back(QThread::create([this, &stop, &clears] {
            while (!stop) {
                RKSVGImageRendererCache::instance().clearCache();
                RKDocumentCache::instance().clearCache();
                RKSVGCompilerInstructionsCache::instance().clear();
                RKCssSheetCache::instance().clearCache();
                myHolidays.clear();
                RKCalendariumHolidayCalculator::instance().reloadData();
                ++clears;
                QThread::msleep(20);
            }
        }));
        for (auto& thread : threads)
            thread->start();
        QThread::sleep(static_cast<unsigned long>(seconds));
        // A few rounds of clearing must have met the drawing.
        for (int i = 0; i < 2400 && clears < 2; ++i)
            QThread::msleep(50);
        stop = true;
        for (auto& thread : threads)
            QVERIFY(thread->wait(60000));
        QVERIFY(RKBackgroundJobManager::instance().waitForIdle(60000));
        qInfo("%d draws, %d clears", draws.load(), clears.load());
        QVERIFY(draws > 8);
        QVERIFY(clears >= 2);

        // The caches still give the right pages.
        const RKSVGComposition page = monthPage(3, 0);
        const QImage cached = draw(page, RKBackgroundJobPriority::Immediately);
        QSvgRenderer fresh(page.compileAsByteArray());
        QImage expected(cached.size(), QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::transparent);
        QPainter painter(&expected);
        fresh.render(&painter, QRectF(QPointF(0, 0), QSizeF(cached.size())));
        painter.end();
        QCOMPARE(cached, expected);
    }

private:
    RKSVGComposition monthPage(int month, int thread) const
    {
        RKCalendariumHolidayConfig config;
        config.setLanguage(thread % 2 ? RKLocale("de", "DE") : RKLocale("en", "GB"));
        config = RKCalendariumHolidayConfig::withEverythingEnabled(config);
        RKSVGComposition composition(myMonth.get(), testDataPath("images/month.css"));
        composition.setContent(RKCalendariumContentKey(RKCalendariumContentConfig(QDate(2027, month, 1), config),
            RKProjectIdentifier(QStringLiteral("project-%1").arg(thread % 3), thread % 2 == 0)));
        return composition;
    }

    static QImage draw(const RKSVGComposition& composition, int priority)
    {
        QImage image(140, 110, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        composition.render(&painter, QRectF(0, 0, 140, 110), RKBackgroundJobPriority(priority),
            RKCachingOption(RKCachingOption::UseCache), RKSVGCompositionOptions());
        return image;
    }

    void drawPages(int thread, const std::atomic<bool>& stop, std::atomic<int>& draws) const
    {
        QRandomGenerator random(static_cast<quint32>(thread + 1));
        while (!stop) {
            RKSVGComposition composition = random.bounded(4) == 0 ? RKSVGComposition(myClipArt.get(), QString())
                                                                    : monthPage(1 + random.bounded(12), thread);
            switch (random.bounded(5)) {
            case 0: composition.setColorCssSheet(testDataPath("images/month-blue.css")); break;
            case 1: composition.setCustomCssSheet(QStringLiteral("customColor#%1.css").arg(random.bounded(4) * 0x111111, 6, 16, QLatin1Char('0'))); break;
            case 2: {
                RKColorReplacementInstructions replacements;
                replacements.insert(QColor("#ff0000"), QColor::fromRgb(random.generate() | 0xff000000));
                composition.setColorReplacements(replacements);
                break;
            }
            case 3: composition.setVariant(RKSVGComposition::DropSpotColor); break;
            default: break;
            }
            draw(composition, random.bounded(3) == 0 ? RKBackgroundJobPriority::Immediately : 0);
            if (random.bounded(3) == 0)
                composition.invalidateMeInCache();
            ++draws;
        }
    }

    RKCalculatedHolidayCache myHolidays;
    std::unique_ptr<RKSVGImage> myMonth;
    std::unique_ptr<RKSVGImage> myClipArt;
};

QTEST_MAIN(TestImageStress)
#include "test_imagestress.moc"
