#include "RKTestSupport.h"

#include <RKBackgroundJobManager.h>
#include <RKCalculatedHolidayCache.h>
#include <RKCalendarPageComposer.h>
#include <RKCalendariumHolidayCalculator.h>
#include <RKCssSheetCache.h>
#include <RKDocumentCache.h>
#include <RKSVGCompilerInstructionsCache.h>
#include <RKSVGCompilerInstructionsFactory.h>
#include <RKSVGComposition.h>
#include <RKSVGImage.h>
#include <RKSVGImageCalendar.h>
#include <RKSVGImageRendererCache.h>

#include <QLoggingCategory>
#include <QPainter>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QSvgRenderer>
#include <QThread>

#include <atomic>
#include <memory>
#include <vector>

namespace {

const QSize pageSize(280, 220);

QImage blank(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QImage draw(const RKSVGComposition& composition, int priority, int caching,
    const RKSVGCompositionOptions& options = RKSVGCompositionOptions(), const QSize& size = pageSize)
{
    QImage image = blank(size);
    QPainter painter(&image);
    composition.render(&painter, QRectF(QPointF(0, 0), size), RKBackgroundJobPriority(priority), RKCachingOption(caching), options);
    return image;
}

// `svg` drawn by a renderer of its own, centred in an image of `size` as the cache does.
QImage drawFresh(const QByteArray& svg, const QSize& size = pageSize)
{
    QSvgRenderer renderer(svg);
    QImage image = blank(size);
    QPainter painter(&image);
    const QSizeF scaled = QSizeF(renderer.defaultSize()).scaled(QSizeF(size), Qt::KeepAspectRatio);
    renderer.render(&painter, QRectF(QPointF((size.width() - scaled.width()) / 2, (size.height() - scaled.height()) / 2), scaled));
    return image;
}

// Mean absolute difference over all channels, 0 to 255.
double difference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return 255.0;
    const QImage x = a.convertToFormat(QImage::Format_ARGB32);
    const QImage y = b.convertToFormat(QImage::Format_ARGB32);
    double sum = 0;
    for (int row = 0; row < x.height(); ++row) {
        const uchar* p = x.constScanLine(row);
        const uchar* q = y.constScanLine(row);
        for (int i = 0; i < x.width() * 4; ++i)
            sum += qAbs(p[i] - q[i]);
    }
    return sum / (x.width() * x.height() * 4.0);
}

bool isBlank(const QImage& image)
{
    return difference(image, blank(image.size())) == 0.0;
}

RKCalendariumHolidayConfig configIn(const char* language, const char* country, bool everything = false)
{
    RKCalendariumHolidayConfig config;
    config.setLanguage(RKLocale(language, country));
    return everything ? RKCalendariumHolidayConfig::withEverythingEnabled(config) : config;
}

// Counts how often the document cache parses it.
class CountingItem : public RKDocumentCacheItem
{
public:
    explicit CountingItem(int n) : myNumber(n) {}
    mutable int parses = 0;
    QDomDocument document() const override
    {
        ++parses;
        QDomDocument document;
        document.setContent(QStringLiteral("<svg id=\"%1\"/>").arg(myNumber));
        return document;
    }
    QString uniqueName() const override { return QString::number(myNumber); }
    uint calcHashValue() const override { return static_cast<uint>(myNumber + 1); }

private:
    int myNumber;
};

}

class TestRendererCache : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        // Images live as long as the caches may hold their addresses.
        myMonth = new RKSVGImage(QFileInfo(testDataPath("images/month.svg")),
            RKCssSheetCache::instance().styleSheetsIn(QFileInfo(testDataPath("images/month.svg"))), {}, false, false);
        myClipArt = new RKSVGImage(QFileInfo(testDataPath("images/clipart.svg")), {}, {}, false, true);
        myMissing = new RKSVGImage(QFileInfo(testDataPath("images/absent.svg")), {}, {}, false, false);
        mySandGlass = drawFresh(readTestFile(shippedDataPath("icons/symb_sandglass_400.svg")));
        QVERIFY(!isBlank(mySandGlass));
    }
    void init()
    {
        QVERIFY(RKBackgroundJobManager::instance().waitForIdle(30000));
        RKSVGImageRendererCache::instance().clearCache();
    }

    void firstDrawShowsTheSandGlassThenThePage()
    {
        const RKSVGComposition composition = monthPage(9);
        QSignalSpy loaded(&RKSVGImageRendererCache::instance(), &RKSVGImageRendererCache::compositionLoaded);
        QImage first = draw(composition, 0, RKCachingOption::UseCache);
        QVERIFY(difference(first, mySandGlass) < 0.5);
        for (int i = 0; i < 20; ++i) // while it loads, the same work is not scheduled again
            draw(composition, 0, RKCachingOption::UseCache);
        QVERIFY(RKBackgroundJobManager::instance().waitForIdle(30000));
        QCOMPARE(loaded.count(), 1);
        QVERIFY(loaded.at(0).at(0).value<RKSVGComposition>() == composition);

        const QByteArray compiled = composition.compileAsByteArray();
        QVERIFY(compiled.contains(">September<"));
        const QImage page = draw(composition, 0, RKCachingOption::UseCache);
        page.save(QDir::temp().filePath("rkxml-month-page.png"));
        QVERIFY(difference(page, drawFresh(compiled)) < 0.5);
        QVERIFY(difference(page, mySandGlass) > 5);
        QCOMPARE(loaded.count(), 1);
    }

    void spotColorOnlyDrawsNothingWhileLoading()
    {
        RKSVGComposition composition = monthPage(10);
        composition.setVariant(RKSVGComposition::SpotColorOnly);
        QVERIFY(isBlank(draw(composition, 0, RKCachingOption::UseCache)));
    }

    void immediateWithoutCacheLeavesTheCacheEmpty()
    {
        const RKSVGComposition composition = monthPage(11);
        QSignalSpy loaded(&RKSVGImageRendererCache::instance(), &RKSVGImageRendererCache::compositionLoaded);
        const QImage page = draw(composition, RKBackgroundJobPriority::Immediately, RKCachingOption::NoCache);
        QVERIFY(difference(page, drawFresh(composition.compileAsByteArray())) < 0.5);
        QVERIFY(RKSVGImageRendererCache::instance().isEmpty());
        QCOMPARE(RKBackgroundJobManager::instance().pendingJobCount(), 0);
        QCOMPARE(loaded.count(), 0);
    }

    void clipArtWithColorReplacements()
    {
        RKSVGComposition composition(myClipArt, QString());
        RKColorReplacementInstructions replacements;
        replacements.insert(QColor("#ff0000"), QColor("#123456"));
        composition.setColorReplacements(replacements);
        const QSize size(240, 160);
        const QImage picture = draw(composition, RKBackgroundJobPriority::Immediately, RKCachingOption::UseCache, {}, size);
        picture.save(QDir::temp().filePath("rkxml-clipart.png"));
        QVERIFY(difference(picture, drawFresh(composition.compileAsByteArray(), size)) < 0.5);
        QVERIFY(RKSVGImageRendererCache::instance().findRenderer(composition));
    }

    void brokenSVGIsNotCached()
    {
        const RKSVGComposition composition(myMissing, QString());
        for (int round = 0; round < 2; ++round) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^Could not read file \".*absent.svg\""));
            QTest::ignoreMessage(QtWarningMsg, qPrintable("result is not valid. myCacheKey=" + myMissing->absoluteFilePath()));
            QVERIFY(difference(draw(composition, 0, RKCachingOption::UseCache), mySandGlass) < 0.5);
            QVERIFY(RKBackgroundJobManager::instance().waitForIdle(30000));
            QVERIFY(RKSVGImageRendererCache::instance().isEmpty());
            RKDocumentCache::instance().clearCache();
        }
        QTest::ignoreMessage(QtWarningMsg,
            qPrintable(" konnte QSvgRenderer für key " + myMissing->absoluteFilePath() + " nicht erzeugen (SVG defekt!)"));
        static QSvgRenderer broken(QByteArray("<svg")); // abandoned by the cache, so kept here
        RKSVGImageRendererCache::instance().updateCacheData(composition, &broken);
        QVERIFY(RKSVGImageRendererCache::instance().isEmpty());
    }

    void mirroring_data()
    {
        QTest::addColumn<int>("rule");
        QTest::addColumn<QRectF>("target");
        QTest::addColumn<QRect>("covered"); // whole pixels fully inside the drawing
        QTest::addColumn<QPoint>("partial"); // a pixel that the drawing covers in part
        // 2 * 10.3 + 50 = 70.6 is truncated to 70: the drawing lands at 9.7 to 59.7.
        QTest::newRow("horizontal") << 2 << QRectF(10.3, 0, 50, 50) << QRect(10, 0, 49, 50) << QPoint(9, 25);
        QTest::newRow("vertical") << 1 << QRectF(0, 10.3, 50, 50) << QRect(0, 10, 50, 49) << QPoint(25, 9);
        QTest::newRow("none") << 0 << QRectF(10.3, 0, 50, 50) << QRect(11, 0, 49, 50) << QPoint(60, 25);
    }
    void mirroring()
    {
        QFETCH(int, rule);
        QFETCH(QRectF, target);
        QFETCH(QRect, covered);
        QFETCH(QPoint, partial);
        // A square that is black on the left and top, so that mirroring shows.
        QSvgRenderer renderer(QByteArray("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"50\" height=\"50\">"
                                         "<rect width=\"50\" height=\"50\" fill=\"#808080\"/>"
                                         "<rect width=\"25\" height=\"25\" fill=\"#000000\"/></svg>"));
        QImage image = blank(QSize(80, 80));
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        RKSVGImageRendererCache::instance().doRendering(&renderer, &painter, target,
            RKSVGCompositionOptions(RKMirrorRule(rule), Qt::KeepAspectRatio));
        painter.end();
        for (int y = covered.top(); y <= covered.bottom(); ++y)
            for (int x = covered.left(); x <= covered.right(); ++x)
                QCOMPARE(qAlpha(image.pixel(x, y)), 255);
        const int alpha = qAlpha(image.pixel(partial));
        QVERIFY2(alpha > 40 && alpha < 120, qPrintable(QString::number(alpha)));
        // The black quarter sits where the mirror puts it.
        const QPoint black = QPoint(rule & 2 ? covered.right() - 2 : covered.left() + 2, rule & 1 ? covered.bottom() - 2 : covered.top() + 2);
        QCOMPARE(QColor(image.pixel(black)), QColor(Qt::black));
    }

    void documentCacheDropsTheLeastRecentlyUsed()
    {
        RKDocumentCache& documents = RKDocumentCache::instance();
        documents.clearCache();
        std::vector<std::unique_ptr<CountingItem>> items;
        for (int i = 0; i <= 100; ++i)
            items.push_back(std::make_unique<CountingItem>(i));
        for (int i = 0; i < 100; ++i)
            documents.document(items[i].get());
        documents.document(items[0].get()); // now the most recently used
        QCOMPARE(documents.currentCacheSize(), 100);
        QDomDocument copy = documents.document(items[100].get());
        QCOMPARE(documents.currentCacheSize(), 100);
        copy.documentElement().setAttribute("id", "changed"); // callers get private copies
        QCOMPARE(documents.document(items[100].get()).documentElement().attribute("id"), QStringLiteral("100"));
        documents.document(items[0].get());
        documents.document(items[1].get());
        QCOMPARE((QList<int>{items[0]->parses, items[1]->parses, items[100]->parses}), (QList<int>{1, 2, 1}));
        QTest::ignoreMessage(QtWarningMsg, "has theSVG==nullptr");
        QVERIFY(documents.document(nullptr).isNull());
        documents.clearCache();
    }

    void composerForTools()
    {
        const RKCalendarPageComposer composer(QFileInfo(testDataPath("images/month.svg")));
        QCOMPARE(QFileInfo(composer.colorCssSheet()).fileName(), QStringLiteral("month.css"));
        const RKSVGComposition page = composer.page(monthPage(2).calendariumContent());
        const QSize size = RKCalendarPageComposer::sizeForWidth(page, 560);
        QCOMPARE(size, QSize(560, 440));
        const QImage background = RKCalendarPageComposer::renderImage(page, size, true, 30000);
        QVERIFY(!background.isNull());
        RKSVGImageRendererCache::instance().clearCache();
        const QImage synchronous = RKCalendarPageComposer::renderImage(page, size, false);
        QVERIFY(difference(background, synchronous) < 0.5);
        QVERIFY(difference(background, drawFresh(page.compileAsByteArray(), size)) < 2);

        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^include fails: file not found: .*absent.svg"));
        const RKCalendarPageComposer missing(QFileInfo(testDataPath("images/absent.svg")));
        QVERIFY(!missing.isValid());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^Could not read file \".*absent.svg\""));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^result is not valid. myCacheKey="));
        QVERIFY(RKCalendarPageComposer::renderImage(missing.page(RKCalendariumContentKey()), size, true, 30000).isNull());
    }

    // Eight threads draw, recolour and invalidate calendar pages and clip art through the
    // caches while another clears every cache and reloads the holiday data. Meant for the
    // ThreadSanitizer build; in a normal build it checks that nothing crashes or deadlocks
    // and that the pages still come out right afterwards.
    void drawWhileCachesAreCleared()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); // holiday-image traces
        static RKCalculatedHolidayCache holidays; // reachable while the factory may use it
        RKSingleton<RKSVGCompilerInstructionsFactory>::instance().addHolidayCache(&holidays);
        const int seconds = qEnvironmentVariableIntValue("RKXML_STRESS_SECONDS") > 0
            ? qEnvironmentVariableIntValue("RKXML_STRESS_SECONDS") : 3;
        std::atomic<bool> stop{false};
        std::atomic<int> draws{0};
        std::atomic<int> clears{0};
        std::vector<std::unique_ptr<QThread>> threads;
        for (int t = 0; t < 8; ++t)
            threads.emplace_back(QThread::create([this, t, &stop, &draws] { drawPages(t, stop, draws); }));
        threads.emplace_back(QThread::create([&stop, &clears] {
            while (!stop) {
                RKSVGImageRendererCache::instance().clearCache();
                RKDocumentCache::instance().clearCache();
                RKSVGCompilerInstructionsCache::instance().clear();
                RKCssSheetCache::instance().clearCache();
                holidays.clear();
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
        const RKSVGComposition page = monthPage(3, configIn("en", "GB", true), RKProjectIdentifier("project-0", true));
        const QImage cached = draw(page, RKBackgroundJobPriority::Immediately, RKCachingOption::UseCache);
        QVERIFY(difference(cached, drawFresh(page.compileAsByteArray())) < 0.5);
        RKSingleton<RKSVGCompilerInstructionsFactory>::instance().removeHolidayCache(&holidays);
    }

private:
    /// The fixture month page for `month` of 2027.
    RKSVGComposition monthPage(int month, const RKCalendariumHolidayConfig& config = configIn("en", "GB"),
        const RKProjectIdentifier& project = RKProjectIdentifier()) const
    {
        RKSVGComposition composition(myMonth, testDataPath("images/month.css"));
        composition.setContent(RKCalendariumContentKey(RKCalendariumContentConfig(QDate(2027, month, 1), config), project));
        return composition;
    }

    // One stress thread: random pages, colours, variants and invalidations, small and fast.
    void drawPages(int thread, const std::atomic<bool>& stop, std::atomic<int>& draws) const
    {
        QRandomGenerator random(static_cast<quint32>(thread + 1));
        const RKCalendariumHolidayConfig config = thread % 2 ? configIn("de", "DE", true) : configIn("en", "GB", true);
        const RKProjectIdentifier project(QStringLiteral("project-%1").arg(thread % 3), thread % 2 == 0);
        while (!stop) {
            RKSVGComposition composition = random.bounded(4) == 0 ? RKSVGComposition(myClipArt, QString())
                                                                    : monthPage(1 + random.bounded(12), config, project);
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
            draw(composition, random.bounded(3) == 0 ? RKBackgroundJobPriority::Immediately : 0, RKCachingOption::UseCache, {}, QSize(140, 110));
            if (random.bounded(3) == 0)
                composition.invalidateMeInCache();
            ++draws;
        }
    }

    static inline RKSVGImage* myMonth = nullptr; // static: reachable until exit, as the caches need
    static inline RKSVGImage* myClipArt = nullptr;
    static inline RKSVGImage* myMissing = nullptr;
    QImage mySandGlass;
};

QTEST_MAIN(TestRendererCache)
#include "test_renderercache.moc"
