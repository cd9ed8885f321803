#include "RKTestSupport.h"

#include <RKSVGCompiler.h>
#include <RKSVGCompilerInstructionsFactory.h>
#include <RKXMLParser.h>

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>


namespace {
QDomDocument parse(const QString& text)
{
    QDomDocument document;
    document.setContent(text);
    return document;
}

QDomDocument loadPage()
{
    QFile file(testDataPath(QStringLiteral("compiler/page.svg")));
    file.open(QIODevice::ReadOnly);
    QDomDocument document;
    document.setContent(&file);
    return document;
}

/// The element with `id`, anywhere in the document.
QDomElement byId(const QDomDocument& document, const QString& id)
{
    for (QDomElement e = document.documentElement(); !e.isNull(); e = RKXMLParser::nextElement(e)) {
        if (e.attribute(QStringLiteral("id")) == id)
            return e;
    }
    return QDomElement();
}

/// "tag#id" of the root's child elements, in order.
QStringList childTags(const QDomElement& parent)
{
    QStringList out;
    for (QDomElement e = parent.firstChildElement(); !e.isNull(); e = e.nextSiblingElement())
        out << e.tagName() + (e.hasAttribute("id") ? "#" + e.attribute("id") : QString());
    return out;
}

QString svg(const QString& body)
{
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\">%1</svg>").arg(body);
}
}

class TestSVGCompiler : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    // The shipped moon pictures draw in Qt at their natural size: the lit half is light, the other dark.
    void moonPictures_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("leftLit");
        QTest::addColumn<bool>("rightLit");
        QTest::newRow("new moon") << "new_moon" << false << false;
        QTest::newRow("first quarter") << "growing_crescent" << false << true;
        QTest::newRow("full moon") << "full_moon" << true << true;
        QTest::newRow("last quarter") << "waning_crescent" << true << false;
    }
    void moonPictures()
    {
        QFETCH(QString, file);
        QFETCH(bool, leftLit);
        QFETCH(bool, rightLit);
        QSvgRenderer renderer(shippedDataPath(QStringLiteral("moonphases/%1.svg").arg(file)));
        QVERIFY(renderer.isValid());
        QCOMPARE(renderer.defaultSize(), QSize(64, 64));
        QImage image(renderer.defaultSize(), QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter);
        painter.end();
        QCOMPARE(qGray(image.pixel(18, 32)) > 128, leftLit);
        QCOMPARE(qGray(image.pixel(46, 32)) > 128, rightLit);
        QCOMPARE(qAlpha(image.pixel(1, 1)), 0);
    }

    void removeEmptyElements_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<QStringList>("left");
        QTest::newRow("_empty removed with its children") << "<g id=\"a\" class=\"x_empty\"><rect id=\"b\"/></g><rect id=\"c\"/>" << QStringList{"rect#c"};
        QTest::newRow("force_keep stays, children visited")
            << "<g id=\"a\" class=\"x_empty\" vako:force_keep=\"true\"><rect id=\"b\" class=\"y_empty\"/><rect id=\"c\"/></g>" << QStringList{"g#a", "rect#c"};
        QTest::newRow("_empty not at the end stays") << "<rect id=\"a\" class=\"x_empty y\"/><rect id=\"b\" class=\"x_empty \"/>" << QStringList{"rect#a", "rect#b"};
        QTest::newRow("force_keep false is removed") << "<rect id=\"a\" class=\"x_empty\" vako:force_keep=\"no\"/>" << QStringList();
    }
    void removeEmptyElements()
    {
        QFETCH(QString, body);
        QFETCH(QStringList, left);
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg(body)));
        compiler.removeEmptyElements();
        QStringList all;
        for (QDomElement e = compiler.domDocument().documentElement().firstChildElement(); !e.isNull(); e = RKXMLParser::nextElement(e))
            all << e.tagName() + "#" + e.attribute("id");
        QCOMPARE(all, left);
    }

    // The factory's set on the fixture page: March 2026 starts on a Sunday, so cell 00 is empty and cell 06 is the 1st.
    void compilePage()
    {
        RKSVGCompiler compiler;
        compiler.setInstructions(RKSingleton<RKSVGCompilerInstructionsFactory>::instance().createInstructions(
            RKCalendariumContentKey(RKCalendariumContentConfig(QDate(2026, 3, 1), RKCalendariumHolidayConfig()), RKProjectIdentifier())));
        QDomDocument page = loadPage();
        compiler.setDomDocument(page, false);
        QVERIFY(compiler.toDo(RKSVGCompiler::ToDoApplyInstructions));
        compiler.update();
        QVERIFY(!compiler.toDo(RKSVGCompiler::ToDoApplyInstructions));
        // Edited in place: the caller's document is the compiled one.
        QCOMPARE(page.toString(-1), compiler.resultString());
        const QDomElement root = page.documentElement();
        QCOMPARE(childTags(root), (QStringList{"style", "style", "text", "g#Day_2026-03-01"}));
        const QDomElement day = byId(page, "Day_2026-03-01");
        // The empty holiday slot far outside does not count; the image does.
        const QDomElement marker = byId(page, "child_Day_2026-03-01");
        QCOMPARE(QStringList({marker.attribute("x"), marker.attribute("y"), marker.attribute("width"), marker.attribute("height"), marker.attribute("fill")}),
            (QStringList{"120", "20", "20", "40", "none"}));
        compiler.update(); // markers are replaced, not doubled
        QCOMPARE(day.elementsByTagName("rect").size(), 2);
    }

    void applyOrder()
    {
        RKSVGCompilerInstructions set(QStringLiteral("vako:cal"));
        set.addInstruction("k", "class", "earliest");
        set.addInstruction("k", "class", "latest");
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg("<rect id=\"a\" vako:cal=\"k\"/><g><rect id=\"b\" vako:cal=\"k\"/><rect id=\"c\" vako:cal=\"K\"/></g>")));
        compiler.setInstructions(set);
        compiler.applyInstructions();
        const QDomDocument result = compiler.domDocument();
        QCOMPARE(byId(result, "a").attribute("class"), QStringLiteral("earliest"));
        QCOMPARE(byId(result, "b").attribute("class"), QStringLiteral("earliest"));
        QVERIFY(!byId(result, "c").hasAttribute("class"));
    }

    void fitImages_data()
    {
        QTest::addColumn<QString>("image");
        QTest::addColumn<QStringList>("rect");
        QTest::newRow("wide picture") << "<image vako:imagewidth=\"30\" vako:imageheight=\"20\" x=\"0\" y=\"0\" width=\"60\" height=\"60\"/>" << QStringList{"0", "10", "60", "40"};
        QTest::newRow("tall picture, offset frame") << "<image vako:imagewidth=\"1\" vako:imageheight=\"2\" x=\"10\" y=\"20\" width=\"40\" height=\"20\"/>" << QStringList{"25", "20", "10", "20"};
        QTest::newRow("no natural size: frame kept") << "<image x=\"1.5\" y=\"2\" width=\"3\" height=\"4\"/>" << QStringList{"1.5", "2", "3", "4"};
        QTest::newRow("zero width: frame kept") << "<image vako:imagewidth=\"0\" vako:imageheight=\"5\" x=\"1\" y=\"2\" width=\"3\" height=\"4\"/>" << QStringList{"1", "2", "3", "4"};
        QTest::newRow("centre beyond the number range: frame kept")
            << "<image vako:imagewidth=\"1e-300\" vako:imageheight=\"1\" x=\"1.7e308\" y=\"0\" width=\"1.7e308\" height=\"10\"/>"
            << QStringList{"1.7e308", "0", "1.7e308", "10"};
        QTest::newRow("nested, missing frame") << "<g><image vako:imagewidth=\"3\" vako:imageheight=\"2\"/></g>" << QStringList{"0", "0", "0", "0"};
    }
    void fitImages()
    {
        QFETCH(QString, image);
        QFETCH(QStringList, rect);
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg(image)));
        compiler.fixImageTags();
        const QDomElement fitted = compiler.domDocument().elementsByTagName("image").item(0).toElement();
        QCOMPARE(QStringList({fitted.attribute("x"), fitted.attribute("y"), fitted.attribute("width"), fitted.attribute("height")}), rect);
    }

    void currentStyle()
    {
        const QString page = testDataPath("compiler/page.css");
        RKSVGCompiler compiler;
        compiler.setDomDocument(loadPage());
        compiler.setCss(page);
        compiler.setCustomCss(QStringLiteral("customColor#ff0000.css"));
        compiler.update();
        compiler.setCss(page);
        compiler.update();
        const QDomElement root = compiler.domDocument().documentElement();
        QCOMPARE(childTags(root).mid(0, 2), (QStringList{"style", "style"}));
        QCOMPARE(root.firstChildElement().attribute("title"), QStringLiteral("current"));
        QVERIFY(root.firstChildElement().firstChild().isCDATASection());
        QCOMPARE(root.firstChildElement().text(), QStringLiteral(".page{fill:#102030}\n.vakoCustomFill{fill: #ff0000;}"));
        QVERIFY(!root.firstChildElement().nextSiblingElement().hasAttribute("title")); // the untitled sheet stays
        QCOMPARE(root.elementsByTagName("style").size(), 2);
    }

    void standardSheetPatched()
    {
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg("")));
        compiler.setCss(testDataPath("compiler/page.css"));
        const QString missing = testDataPath("compiler/standard-missing.css");
        compiler.setStandardCss(missing);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("file with CSSId=.*standard-missing.css not found"));
        QTest::ignoreMessage(QtWarningMsg, qPrintable("patching missing css path to: " + testDataPath("compiler/page.css")));
        compiler.update();
        QCOMPARE(compiler.domDocument().documentElement().text(), QStringLiteral(".page{fill:#102030}\n.page{fill:#102030}\n"));
    }

    void emptySheets()
    {
        RKSVGCompiler compiler;
        compiler.setDomDocument(loadPage());
        compiler.setCss(QString());
        compiler.update();
        const QDomElement root = compiler.domDocument().documentElement();
        QCOMPARE(root.elementsByTagName("style").size(), 1);
        QVERIFY(!root.firstChildElement("style").hasAttribute("title"));
    }

    void colorsAndSpotColorOnly()
    {
        RKColorReplacementInstructions blue;
        blue.insert(QColor("#ff0000"), QColor("#0000ff"));
        const QString body = "<rect id=\"a\" vako:refinement=\"gold\" stroke=\"#ff0000\" fill=\"none\"/><rect id=\"b\" fill=\"#ff0000\"/>";
        for (bool spotOnly : {false, true}) {
            RKSVGCompiler compiler;
            compiler.setDomDocument(parse(svg(body)));
            compiler.setColorReplacements(blue);
            compiler.setSpotColorOnly(spotOnly);
            compiler.update();
            QCOMPARE(compiler.resultString().contains("#0000ff"), !spotOnly);
        }
        RKSVGCompiler compiler;
        compiler.setColorReplacements(RKColorReplacementInstructions());
        QVERIFY(!compiler.toDo(RKSVGCompiler::ToDoReplaceColors));
    }

    void dropSpotColor()
    {
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg("<rect id=\"a\" vako:applyRefinement=\" TRUE \"/><rect id=\"b\" vako:refinement=\"bronze\"/>"
                                          "<rect id=\"c\" vako:refinement=\"Silver\"/><rect id=\"d\" vako:refinement=\"remove\"/>"
                                          "<g id=\"e\"><rect id=\"f\" vako:refinement=\"gold\" vako:applyRefinement=\"true\"/></g>")));
        compiler.setDropSpotColor(true);
        compiler.update();
        QCOMPARE(childTags(compiler.domDocument().documentElement()), (QStringList{"rect#b", "rect#d", "g#e"}));
        QVERIFY(!byId(compiler.domDocument(), "f").isNull());
    }

    void spotColorMask()
    {
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg(
            "<defs id=\"defs\"><linearGradient id=\"grad\"/></defs><metadata id=\"meta\"/>"
            "<style>.gold{fill:#d4af37;stroke-width:2} .frame{fill:none;stroke:red !important}</style>"
            "<rect id=\"plain\" fill=\"red\"/>"
            "<g id=\"group\" fill=\"green\">label<rect id=\"foil\" vako:refinement=\"gold\" fill=\"url(#grad)\" style=\"stroke:#123456;stroke-width:3;fill-opacity:0.5\"/><rect id=\"other\"/></g>"
            "<text id=\"cut\" vako:refinement=\"remove\" fill=\"blue\">X</text>"
            "<g id=\"refined\" vako:applyRefinement=\"true\" opacity=\"0.3\"><rect id=\"inner\" fill=\"none\" stroke=\"red\"/><text id=\"innercut\" vako:refinement=\"remove\">Y</text></g>")));
        compiler.setSpotColorOnly(true);
        compiler.update();
        const QDomDocument mask = compiler.domDocument();
        QCOMPARE(childTags(mask.documentElement()), (QStringList{"defs#defs", "metadata#meta", "style", "g#group", "text#cut", "g#refined"}));
        QCOMPARE(mask.documentElement().firstChildElement("style").text(), QStringLiteral(".gold{fill:black;stroke-width:2} .frame{fill:none;stroke:black !important}"));
        QCOMPARE(childTags(byId(mask, "group")), QStringList{"rect#foil"});
        QCOMPARE(byId(mask, "group").text(), QString());
        QCOMPARE(byId(mask, "group").attribute("fill"), QStringLiteral("black"));
        QCOMPARE(byId(mask, "foil").attribute("fill"), QStringLiteral("black"));
        QCOMPARE(byId(mask, "foil").attribute("style"), QStringLiteral("stroke:black;stroke-width:3;fill-opacity:1"));
        QCOMPARE(byId(mask, "cut").attribute("fill"), QStringLiteral("white"));
        QCOMPARE(byId(mask, "cut").attribute("comp-op"), QStringLiteral("src-out"));
        QCOMPARE(byId(mask, "refined").attribute("opacity"), QStringLiteral("1"));
        QCOMPARE(byId(mask, "inner").attribute("fill"), QStringLiteral("none"));
        QCOMPARE(byId(mask, "inner").attribute("stroke"), QStringLiteral("black"));
        QCOMPARE(byId(mask, "innercut").attribute("comp-op"), QStringLiteral("src-out"));
        QVERIFY(!byId(mask, "grad").isNull());
    }

    void dayMarker_data()
    {
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QStringList>("rect");
        QTest::newRow("rect and text; sides below 1 count as 1") << "<rect x=\"10\" y=\"10\" width=\"20\" height=\"0.5\"/><text x=\"40\" y=\"30\">1</text>" << QStringList{"10", "10", "31", "21"};
        QTest::newRow("holiday slot with text counts") << "<rect x=\"0\" y=\"0\" width=\"10\" height=\"10\"/><text vako:cal=\"cm_holiday000\" x=\"0\" y=\"50\">Neujahr</text>" << QStringList{"0", "0", "10", "51"};
        QTest::newRow("shaded holiday style counts") << "<rect x=\"0\" y=\"0\" width=\"10\" height=\"10\"/><rect vako:cal=\"cm_holiday000_style\" class=\"other_event\" x=\"0\" y=\"0\" width=\"50\" height=\"10\"/>" << QStringList{"0", "0", "50", "10"};
        QTest::newRow("unused holiday slots do not") << "<rect x=\"0\" y=\"0\" width=\"10\" height=\"10\"/><rect vako:cal=\"cm_holiday001_style\" class=\"no_event\" x=\"90\" y=\"0\" width=\"5\" height=\"5\"/><text vako:cal=\"cm_holiday001\" x=\"90\" y=\"90\"></text>" << QStringList{"0", "0", "10", "10"};
        QTest::newRow("stroked line counts") << "<rect x=\"0\" y=\"0\" width=\"10\" height=\"10\"/><line x1=\"30\" y1=\"5\" x2=\"0\" y2=\"5\" stroke=\"black\"/>" << QStringList{"0", "0", "30", "10"};
        QTest::newRow("line without stroke does not") << "<rect x=\"0\" y=\"0\" width=\"10\" height=\"10\"/><line x1=\"0\" y1=\"0\" x2=\"90\" y2=\"90\" style=\"stroke: none\"/>" << QStringList{"0", "0", "10", "10"};
        QTest::newRow("pieces at both ends of the number range") << "<rect x=\"-1.7e308\" y=\"0\" width=\"10\" height=\"10\"/><rect x=\"1.7e308\" y=\"0\" width=\"1.7e308\" height=\"10\"/>" << QStringList{"-1.7e+308", "0", "1.79769e+308", "10"};
        QTest::newRow("pieces not finite do not count") << "<rect x=\"0\" y=\"0\" width=\"10\" height=\"10\"/><text x=\"nan\" y=\"5\">1</text><line x1=\"0\" y1=\"0\" x2=\"inf\" y2=\"5\" stroke=\"red\"/>" << QStringList{"0", "0", "10", "10"};
        QTest::newRow("nothing to bound: no marker") << "<circle r=\"5\"/>" << QStringList();
    }
    void dayMarker()
    {
        QFETCH(QString, cell);
        QFETCH(QStringList, rect);
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg("<g id=\"Day_2024-01-01\">" + cell + "</g>")));
        compiler.update();
        const QDomElement marker = byId(compiler.domDocument(), "child_Day_2024-01-01");
        QCOMPARE(marker.isNull(), rect.isEmpty());
        if (!marker.isNull()) {
            QCOMPARE(QStringList({marker.attribute("x"), marker.attribute("y"), marker.attribute("width"), marker.attribute("height")}), rect);
            QVERIFY(marker.nextSibling().isNull());
        }
    }

    void inheritedAttributes()
    {
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg("<rect id=\"a\"/><rect id=\"b\"/><rect id=\"c\"/>")));
        compiler.setInheritedAttributes(QMap<QString, QString>());
        QVERIFY(!compiler.toDo(RKSVGCompiler::ToDoInheritAttributes));
        compiler.setInheritedAttributes({{"opacity", "0.5"}});
        compiler.update();
        // Moving from a live list moves every second node.
        const QDomElement root = compiler.domDocument().documentElement();
        QCOMPARE(childTags(root), (QStringList{"rect#b", "g"}));
        QCOMPARE(childTags(root.firstChildElement("g")), (QStringList{"rect#a", "rect#c"}));
        QCOMPARE(root.firstChildElement("g").attribute("opacity"), QStringLiteral("0.5"));
    }
};

// The moon pictures hold no text, so drawing them needs no QGuiApplication (whose offscreen screen
// LeakSanitizer would report at exit).
QTEST_GUILESS_MAIN(TestSVGCompiler)
#include "test_svgcompiler.moc"
