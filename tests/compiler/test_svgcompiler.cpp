#include "RKTestSupport.h"

#include <RKSVGCompiler.h>
#include <RKSVGCompilerInstructionsFactory.h>
#include <RKXMLParser.h>

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>


namespace {
// Expected pages are written with single quotes, so that they need no escapes.
const QChar QUOTE = QLatin1Char('\'');
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

/// x, y, width and height of `element`; empty for a null element.
QStringList geometry(const QDomElement& element)
{
    if (element.isNull())
        return QStringList();
    return {element.attribute("x"), element.attribute("y"), element.attribute("width"), element.attribute("height")};
}

QString svg(const QString& body)
{
    return QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg'>%1</svg>").arg(body);
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
        QTest::addColumn<QString>("left");
        QTest::newRow("_empty removed with its children") << "<g id='a' class='x_empty'><rect id='b'/></g><rect id='c'/>" << "<rect id='c'/>";
        QTest::newRow("force_keep stays, children visited")
            << "<g id='a' class='x_empty' vako:force_keep='true'><rect id='b' class='y_empty'/><rect id='c'/></g>"
            << "<g class='x_empty' id='a' vako:force_keep='true'><rect id='c'/></g>";
        QTest::newRow("_empty not at the end stays")
            << "<rect id='a' class='x_empty y'/><rect id='b' class='x_empty '/>"
            << "<rect class='x_empty y' id='a'/><rect class='x_empty ' id='b'/>";
        QTest::newRow("force_keep false is removed")
            << "<rect id='a' class='x_empty' vako:force_keep='no'/><rect id='b'/>" << "<rect id='b'/>";
    }
    void removeEmptyElements()
    {
        QFETCH(QString, body);
        QFETCH(QString, left);
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg(body)));
        compiler.removeEmptyElements();
        QCOMPARE(canonicalLine(compiler.domDocument(), QUOTE), svg(left));
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
        // Cell 00 goes; cell 06's marker bounds its rect and image, not the empty holiday slot far outside.
        const QString expected = QStringLiteral(
            "<svg height='100' width='200' xmlns='http://www.w3.org/2000/svg' xmlns:vako='http://www.example.org/vako' "
            "xmlns:xlink='http://www.w3.org/1999/xlink'><style title='old' type='text/css'>.old{fill:red}</style>"
            "<style type='text/css'>.kept{fill:blue}</style><text vako:cal='cm_month_full' x='10' y='15'>unknown</text>"
            "<g class='cm_cal_sunday0' id='Day_2026-03-01' vako:cal='cm_day06_style'><rect height='20' width='20' x='120' y='20'/>"
            "<text vako:cal='cm_day06' x='122' y='35'>1</text><text vako:cal='cm_holiday060' x='300' y='300'></text>"
            "<image height='20' vako:cal='cm_imageholiday06' width='20' x='120' y='40'/>"
            "<rect fill='none' height='40' id='child_Day_2026-03-01' width='20' x='120' y='20'/></g></svg>");
        QCOMPARE(canonicalLine(page, QUOTE), expected);
        compiler.update(); // markers are replaced, not doubled
        QCOMPARE(canonicalLine(page, QUOTE), expected);
    }

    void applyOrder()
    {
        RKSVGCompilerInstructions set(QStringLiteral("vako:cal"));
        set.addInstruction("k", "class", "earliest");
        set.addInstruction("k", "class", "latest");
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg("<rect id='a' vako:cal='k'/><g><rect id='b' vako:cal='k'/><rect id='c' vako:cal='K'/></g>")));
        compiler.setInstructions(set);
        compiler.applyInstructions();
        QCOMPARE(canonicalLine(compiler.domDocument(), QUOTE),
            svg("<rect class='earliest' id='a' vako:cal='k'/><g><rect class='earliest' id='b' vako:cal='k'/><rect id='c' vako:cal='K'/></g>"));
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
        QCOMPARE(geometry(compiler.domDocument().elementsByTagName("image").item(0).toElement()), rect);
    }

    // The titled sheet gives way to the current one (as CDATA, first child, set twice but once
    // in the page) or to nothing without a sheet; the untitled sheet and the rest stay.
    void currentStyle_data()
    {
        QTest::addColumn<QString>("css");
        QTest::addColumn<QString>("custom");
        QTest::addColumn<QString>("current");
        QTest::newRow("page and custom sheet") << testDataPath("compiler/page.css") << "customColor#ff0000.css"
                                               << "<style title='current' type='text/css'><![CDATA[.page{fill:#102030}\n"
                                                  ".vakoCustomFill{fill: #ff0000;}]]></style>";
        QTest::newRow("no sheet") << QString() << QString() << QString();
    }
    void currentStyle()
    {
        QFETCH(QString, css);
        QFETCH(QString, custom);
        QFETCH(QString, current);
        RKSVGCompiler compiler;
        compiler.setDomDocument(loadPage());
        compiler.setCss(css);
        compiler.setCustomCss(custom);
        compiler.update();
        compiler.setCss(css);
        compiler.update();
        const QString old = "<style title='old' type='text/css'>.old{fill:red}</style>";
        QCOMPARE(canonicalLine(compiler.domDocument(), QUOTE), canonicalLine(loadPage(), QUOTE).replace(old, current));
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

    void colorsAndSpotColorOnly()
    {
        RKColorReplacementInstructions blue;
        blue.insert(QColor("#ff0000"), QColor("#0000ff"));
        // The mask keeps "defs" untouched, so a replacement there would show.
        const QString body = "<defs><rect id='d' fill='#ff0000'/></defs><rect id='a' vako:refinement='gold' stroke='#ff0000' fill='none'/>"
                             "<rect id='b' fill='#ff0000'/>";
        const QStringList expected{"<defs><rect fill='#0000ff' id='d'/></defs>"
                                   "<rect fill='none' id='a' stroke='#0000ff' vako:refinement='gold'/><rect fill='#0000ff' id='b'/>",
            "<defs><rect fill='#ff0000' id='d'/></defs><rect fill='none' id='a' stroke='black' vako:refinement='gold'/>"};
        for (bool spotOnly : {false, true}) {
            RKSVGCompiler compiler;
            compiler.setDomDocument(parse(svg(body)));
            compiler.setColorReplacements(blue);
            compiler.setSpotColorOnly(spotOnly);
            compiler.update();
            QCOMPARE(canonicalLine(compiler.domDocument(), QUOTE), svg(expected.at(spotOnly)));
        }
        RKSVGCompiler compiler;
        compiler.setColorReplacements(RKColorReplacementInstructions());
        QVERIFY(!compiler.toDo(RKSVGCompiler::ToDoReplaceColors));
    }

    void dropSpotColor()
    {
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg("<rect id='a' vako:applyRefinement=' TRUE '/><rect id='b' vako:refinement='bronze'/>"
                                          "<rect id='c' vako:refinement='Silver'/><rect id='d' vako:refinement='remove'/>"
                                          "<g id='e'><rect id='f' vako:refinement='gold' vako:applyRefinement='true'/></g>")));
        compiler.setDropSpotColor(true);
        compiler.update();
        QCOMPARE(canonicalLine(compiler.domDocument(), QUOTE), svg("<rect id='b' vako:refinement='bronze'/><rect id='d' vako:refinement='remove'/>"
                                                        "<g id='e'><rect id='f' vako:applyRefinement='true' vako:refinement='gold'/></g>"));
    }

    void spotColorMask()
    {
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg(
            "<defs id='defs'><linearGradient id='grad'/></defs><metadata id='meta'/>"
            "<style>.gold{fill:#d4af37;stroke-width:2} .frame{fill:none;stroke:red !important}</style>"
            "<rect id='plain' fill='red'/>"
            "<g id='group' fill='green'>label<rect id='foil' vako:refinement='gold' fill='url(#grad)'"
            " style='stroke:#123456;stroke-width:3;fill-opacity:0.5'/><rect id='other'/></g>"
            "<text id='cut' vako:refinement='remove' fill='blue'>X</text>"
            "<g id='refined' vako:applyRefinement='true' opacity='0.3'><rect id='inner' fill='none' stroke='red'/>"
            "<text id='innercut' vako:refinement='remove'>Y</text></g>")));
        compiler.setSpotColorOnly(true);
        compiler.update();
        QCOMPARE(canonicalLine(compiler.domDocument(), QUOTE), svg(
            "<defs id='defs'><linearGradient id='grad'/></defs><metadata id='meta'/>"
            "<style>.gold{fill:black;stroke-width:2} .frame{fill:none;stroke:black !important}</style>"
            "<g fill='black' id='group'>"
            "<rect fill='black' id='foil' style='stroke:black;stroke-width:3;fill-opacity:1' vako:refinement='gold'/></g>"
            "<text comp-op='src-out' fill='white' id='cut' vako:refinement='remove'>X</text>"
            "<g id='refined' opacity='1' vako:applyRefinement='true'><rect fill='none' id='inner' stroke='black'/>"
            "<text comp-op='src-out' id='innercut' vako:refinement='remove'>Y</text></g>"));
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
        QCOMPARE(geometry(marker), rect);
        QVERIFY(marker.nextSibling().isNull()); // the cell's last child
    }

    void inheritedAttributes()
    {
        RKSVGCompiler compiler;
        compiler.setDomDocument(parse(svg("<rect id='a'/><rect id='b'/><rect id='c'/>")));
        compiler.setInheritedAttributes(QMap<QString, QString>());
        QVERIFY(!compiler.toDo(RKSVGCompiler::ToDoInheritAttributes));
        compiler.setInheritedAttributes({{"opacity", "0.5"}});
        compiler.update();
        // Moving from a live list moves every second node.
        QCOMPARE(canonicalLine(compiler.domDocument(), QUOTE), svg("<rect id='b'/><g opacity='0.5'><rect id='a'/><rect id='c'/></g>"));
    }
};

// The moon pictures hold no text, so drawing them needs no QGuiApplication (whose offscreen screen
// LeakSanitizer would report at exit).
QTEST_GUILESS_MAIN(TestSVGCompiler)
#include "test_svgcompiler.moc"
