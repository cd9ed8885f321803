#include "RKTestSupport.h"

#include <RKCssSheetCache.h>
#include <RKDocumentCache.h>
#include <RKFileEncoder.h>
#include <RKSVGComposition.h>
#include <RKSVGCompositionRenderSituation.h>
#include <RKSVGImage.h>
#include <RKSVGImageCalendar.h>
#include <RKSVGImageRendererCache.h>
#include <RKXMLLoader.h>

#include <QSvgRenderer>

#include <functional>

/// Changes a composition for one test row.
using Change = std::function<void(RKSVGComposition&)>;
Q_DECLARE_METATYPE(Change)

namespace {

QDomDocument parse(const QString& text)
{
    QDomDocument document;
    document.setContent(text);
    return document;
}

RKSVGImage imageOf(const QString& path, bool encoded = false, bool normalizeFill = false)
{
    return RKSVGImage(QFileInfo(path), RKCssSheetTitleIdMap(), QMap<QString, QString>(), encoded, normalizeFill);
}

// The renderer cache never deletes what it is given; the list keeps the renderers
// reachable so that leak checking sees them owned.
QSvgRenderer* someRenderer()
{
    static auto* handedToTheCache = new QList<QSvgRenderer*>; // never destroyed: reachable at exit
    *handedToTheCache << new QSvgRenderer(QByteArray("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"4\" height=\"4\"/>"));
    return handedToTheCache->last();
}

}

class TestSVGImages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }
    // The document cache keys on addresses, and the images of these tests live on the stack.
    void init() { RKDocumentCache::instance().clearCache(); }

    void imageId_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("id");
        QTest::newRow("last segment") << "/a/glintora/b/glintora/c/x.svg" << "c/x.svg";
        QTest::newRow("no segment") << "/a/b/x.svg" << "/a/b/x.svg";
        QTest::newRow("case-sensitive") << "/a/Glintora/x.svg" << "/a/Glintora/x.svg";
    }
    void imageId()
    {
        QFETCH(QString, path);
        QFETCH(QString, id);
        QCOMPARE(imageOf(path).id(), id);
    }

    void calendarHashIsStructural()
    {
        const RKSVGImageCalendar a(parse("<svg><g class=\"x\"><text>1</text></g><rect/></svg>"), RKCssSheetTitleIdMap());
        const RKSVGImageCalendar b(parse("<svg width=\"9\"><g><text>2</text></g><rect x=\"1\"/></svg>"), RKCssSheetTitleIdMap());
        // The same tags in another breadth-first order.
        const RKSVGImageCalendar c(parse("<svg><g><rect/></g><text/></svg>"), RKCssSheetTitleIdMap());
        // The unique name holds the hash: equal names mean equal hashes, other names other hashes.
        QCOMPARE(a.uniqueName(), b.uniqueName());
        QVERIFY(static_cast<const RKDocumentCacheItem&>(a) == b);
        QVERIFY(a.uniqueName() != c.uniqueName());
    }

    void holidayFields_data()
    {
        QTest::addColumn<QString>("svg");
        QTest::addColumn<bool>("holidays");
        QTest::newRow("grandchild") << "<svg><g><text vako:cal=\"cm_holidayText\"/></g></svg>" << true;
        QTest::newRow("capital") << "<svg><g><text vako:cal=\"Holiday\"/></g></svg>" << false;
        QTest::newRow("after a sibling") << "<svg><g/><g><g vako:cal=\"x\"/><text vako:cal=\"m00_holiday001\"/></g></svg>" << true;
        QTest::newRow("other attribute") << "<svg><text class=\"holiday\"/></svg>" << false;
    }
    void holidayFields()
    {
        QFETCH(QString, svg);
        QFETCH(bool, holidays);
        RKSVGImageCalendar image(parse(svg), RKCssSheetTitleIdMap());
        QCOMPARE(image.canDoCalendariumHolidays(), holidays);
        QCOMPARE(RKSVGComposition(&image, QString()).canDoCalendariumHolidays(), holidays);
    }

    void brokenFilesGiveEmptyDocuments_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("warning");
        QTest::newRow("parse error") << "broken.svg" << "^XML parse error in \".*broken.svg\" at line 3";
        QTest::newRow("missing") << "absent.svg" << "^Could not read file \".*absent.svg\"";
    }
    void brokenFilesGiveEmptyDocuments()
    {
        QFETCH(QString, file);
        QFETCH(QString, warning);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(warning));
        const RKSVGImage image = imageOf(testDataPath("images/" + file));
        const QDomDocument document = image.document();
        QVERIFY(document.documentElement().isNull());
        QCOMPARE(image.isValid(), QFileInfo::exists(testDataPath("images/" + file)));
    }

    void encodedFileWithFillNormalisation()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("clip.svg");
        writeTestFile(path, RKFileEncoder::encode(readTestFile(testDataPath("images/clipart.svg"))));

        const QDomElement path0 = imageOf(path, true, true).document().documentElement()
                                      .firstChildElement("g").firstChildElement("path");
        QCOMPARE(path0.attribute("fill"), QStringLiteral("#000000"));
        QVERIFY(imageOf(path, true, false).document().documentElement()
                    .firstChildElement("g").firstChildElement("path").attribute("fill").isEmpty());
    }

    void imagesRoundTripThroughXML()
    {
        QDomDocument project;
        QDomElement root = project.createElement("project");
        project.appendChild(root);
        RKCssSheetTitleIdMap sheets;
        sheets.insert("Standard", testDataPath("images/month.css"));
        QMap<QString, QString> inherited{{"font-family", "serif"}, {"fill", "#123456"}};
        const RKSVGImage file(QFileInfo(testDataPath("images/clipart.svg")), sheets, inherited, false, false);
        const QDomElement saved = file.buildXML(root);
        QCOMPARE(saved.tagName(), QStringLiteral("SVG_IMAGE"));
        const RKSVGImage reread(saved, false, false);
        QCOMPARE(reread.absoluteFilePath(), file.absoluteFilePath());
        QCOMPARE(reread.inheritedAttributes(), inherited);
        QCOMPARE(reread.cssSheets().keys(), QStringList{"Standard"});

        const QString svg = "<svg xmlns=\"http://www.w3.org/2000/svg\"><text vako:cal=\"cm_year\">&lt;2027&gt;</text></svg>";
        const RKSVGImageCalendar calendar(parse(svg), sheets);
        const QDomElement savedCalendar = calendar.buildXML(root);
        QCOMPARE(savedCalendar.tagName(), QStringLiteral("SVG_IMAGE_CALENDAR"));
        QVERIFY(savedCalendar.firstChildElement("inheritAttributes").attributes().isEmpty());
        const RKSVGImageCalendar rereadCalendar(savedCalendar);
        QCOMPARE(rereadCalendar.document().toString(1), calendar.document().toString(1));

        QDomElement bare = project.createElement("SVG_IMAGE_CALENDAR");
        bare.appendChild(project.createElement("cssSheetTitleIdMap"));
        QTest::ignoreMessage(QtWarningMsg, "could not find element svgDocument");
        QVERIFY(RKSVGImageCalendar(bare).document().isNull());
    }

    void defaultColorSheet()
    {
        RKSVGImage plain = imageOf(testDataPath("images/clipart.svg"));
        QVERIFY(RKSVGComposition(&plain, QString()).currentColorCssSheet().isEmpty());
        RKCssSheetTitleIdMap sheets;
        sheets.insert("Blue", "blue.css");
        sheets.setCustomCssSheet("customColor#102030.css");
        RKSVGImage styled(QFileInfo(testDataPath("images/clipart.svg")), sheets, {}, false, false);
        QCOMPARE(RKSVGComposition(&styled, QString()).currentColorCssSheet(), QStringLiteral("customColor#102030.css"));
        QCOMPARE(RKSVGComposition(&styled, "green.css").currentColorCssSheet(), QStringLiteral("green.css"));
        QVERIFY(!RKSVGComposition().isValid());
        QVERIFY(RKSVGComposition().cssSheets().isEmpty());
    }

    // The custom sheet goes on to the image as well.
    void settersInvalidateTheOldEntry_data()
    {
        QTest::addColumn<Change>("change");
        QTest::addColumn<bool>("forgotten");
        QTest::addColumn<QString>("custom");
        const QString red = QStringLiteral("customColor#ff0000.css");
        RKColorReplacementInstructions replacements;
        replacements.insert(Qt::red, Qt::blue);
        QTest::newRow("same colour sheet") << Change([](RKSVGComposition& c) { c.setColorCssSheet("a.css"); }) << false << red;
        QTest::newRow("new colour sheet") << Change([](RKSVGComposition& c) { c.setColorCssSheet("b.css"); }) << true << red;
        QTest::newRow("same custom sheet") << Change([red](RKSVGComposition& c) { c.setCustomCssSheet(red); }) << false << red;
        QTest::newRow("new custom sheet") << Change([](RKSVGComposition& c) { c.setCustomCssSheet("customColor#00ff00.css"); }) << true
                                          << "customColor#00ff00.css";
        QTest::newRow("content") << Change([](RKSVGComposition& c) { c.setContent(RKCalendariumContentKey()); }) << true << red;
        QTest::newRow("replacements") << Change([replacements](RKSVGComposition& c) { c.setColorReplacements(replacements); }) << false << red;
    }
    void settersInvalidateTheOldEntry()
    {
        QFETCH(Change, change);
        QFETCH(bool, forgotten);
        QFETCH(QString, custom);
        RKSVGImage image = imageOf(testDataPath("images/clipart.svg"));
        RKSVGComposition composition(&image, "a.css");
        composition.setCustomCssSheet("customColor#ff0000.css");
        const RKSVGComposition before(composition);
        RKSVGImageRendererCache& cache = RKSVGImageRendererCache::instance();
        cache.registerRenderer(before, someRenderer());
        change(composition);
        QCOMPARE(cache.findRenderer(before) == nullptr, forgotten);
        QCOMPARE(image.cssSheets().customCssSheet(), custom);
        cache.clearCache();
    }

    void equalityAndHash()
    {
        RKSVGImage image = imageOf(testDataPath("images/month.svg"));
        RKSVGComposition a(&image, "a.css");
        RKSVGComposition b(a);
        b.setCustomCssSheet("customColor#ff0000.css");
        QCOMPARE(a.hashValue(), b.hashValue());
        QVERIFY(a != b);
        QVERIFY(!a.equalsIgnoringConfiguration(b));

        RKSVGComposition c(a);
        c.setVariant(RKSVGComposition::DropSpotColor);
        QVERIFY(a != c);
        QVERIFY(a.equalsIgnoringConfiguration(c));

        RKSVGComposition d(a);
        QCOMPARE(d.spotColor().toInt(), 1); // "gold"
        QVERIFY(a != d); // only d has read its spot colour
    }

    void sizeRange_data()
    {
        QTest::addColumn<QString>("refinement");
        QTest::addColumn<QSizeF>("minimum");
        QTest::addColumn<QSizeF>("maximum");
        QTest::newRow("absent") << QString() << QSizeF(1, 1) << QSizeF(-1, -1);
        QTest::newRow("zero by zero") << "maxWidth=\"0\" maxHeight=\"0\" minWidth=\"5\"" << QSizeF(5, 1) << QSizeF(-1, -1);
        QTest::newRow("one side") << "maxWidth=\"300\"" << QSizeF(1, 1) << QSizeF(300, 0);
        QTest::newRow("negative") << "maxWidth=\"300\" maxHeight=\"-2\"" << QSizeF(1, 1) << QSizeF(-1, -1);
        QTest::newRow("both") << "minWidth=\"10\" minHeight=\"20\" maxWidth=\"30\" maxHeight=\"40\"" << QSizeF(10, 20) << QSizeF(30, 40);
    }
    void sizeRange()
    {
        QFETCH(QString, refinement);
        QFETCH(QSizeF, minimum);
        QFETCH(QSizeF, maximum);
        const QString metadata = refinement.isNull() ? QString() : "<metadata><vako:refinement " + refinement + "/></metadata>";
        RKSVGImageCalendar image(parse("<svg>" + metadata + "<rect/></svg>"), RKCssSheetTitleIdMap());
        const RKSVGComposition composition(&image, QString());
        QCOMPARE(composition.minimumSize(), minimum);
        QCOMPARE(composition.maximumSize(), maximum);
    }

    void compileWithoutContentKeepsSheetsAndReplacements()
    {
        RKSVGImage image = imageOf(testDataPath("images/clipart.svg"));
        RKSVGComposition composition(&image, testDataPath("images/month.css"));
        RKColorReplacementInstructions replacements;
        replacements.insert(QColor("#ff0000"), QColor("#123456"));
        composition.setColorReplacements(replacements);
        const QDomElement root = composition.compileAsDomDocument().documentElement();
        const QDomElement style = root.firstChildElement();
        QCOMPARE(style.tagName(), QStringLiteral("style"));
        QCOMPARE(style.attribute("title"), QStringLiteral("current"));
        QVERIFY(style.text().contains(".cell"));
        QCOMPARE(root.firstChildElement("g").firstChildElement("circle").attribute("fill"), QStringLiteral("#123456"));
        QVERIFY(RKSVGComposition().compileAsDomDocument().documentElement().isNull());
    }

    void variantForSituation_data()
    {
        QTest::addColumn<int>("rules");
        QTest::addColumn<int>("spot");
        QTest::addColumn<bool>("active");
        QTest::addColumn<bool>("split");
        QTest::addColumn<int>("variant");
        QTest::newRow("no spot colour ignores flags") << 0 << 0 << true << true << 1;
        QTest::newRow("no spot colour, full-colour rule") << 0x8000 << 0 << true << true << 0;
        QTest::newRow("inactive") << 0 << 1 << false << true << 1;
        QTest::newRow("active, not split") << 0 << 1 << true << false << 1;
        QTest::newRow("split, full-colour rule") << 0x8000 << 1 << true << true << 2;
        QTest::newRow("split") << 0 << 1 << true << true << 3;
    }
    void variantForSituation()
    {
        QFETCH(int, rules);
        QFETCH(int, spot);
        QFETCH(bool, active);
        QFETCH(bool, split);
        QFETCH(int, variant);
        const RKSVGCompositionRenderSituation situation(RKRenderingRule(rules), RKSpotColor(spot), active, split);
        QCOMPARE(static_cast<int>(situation.variantForSituation()), variant);
    }

    void thumbnailSituation()
    {
        const auto gold = RKSVGCompositionRenderSituation::createForThumbnail(RKSpotColor(1), RKRenderingRule(0x8000));
        QCOMPARE(gold.renderingRules().value(), 0x88000);
        QVERIFY(gold.spotColorActive());
        QVERIFY(gold.splitSpotColor());
        const auto none = RKSVGCompositionRenderSituation::createForThumbnail(RKSpotColor(0), RKRenderingRule(0));
        QVERIFY(!none.spotColorActive());
        QVERIFY(!none.splitSpotColor());
    }
};

QTEST_MAIN(TestSVGImages)
#include "test_svgimages.moc"
