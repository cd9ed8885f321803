#include "RKImageSupport.h"
#include "RKTestSupport.h"

#include <RKSVGNormalizer.h>
#include <RKSVGTransformReader.h>
#include <RKXMLBuilder.h>

#include <QDomDocument>
#include <QPainter>
#include <QSvgRenderer>

#include <functional>

namespace {
using Step = std::function<QDomDocument(QDomDocument)>;

const QString BASE = QStringLiteral("/base/clip");

// Each step as a function from document to document, by name.
const QMap<QString, Step>& stepTable()
{
    static const QMap<QString, Step> table = {
        { "makeAbsoluteHRefs", [](QDomDocument d) { RKSVGNormalizer::makeAbsoluteHRefs(d, QDir(BASE)); return d; } },
        { "removeComments", [](QDomDocument d) { RKSVGNormalizer::removeComments(d.documentElement()); return d; } },
        { "expandUseTags", [](QDomDocument d) { RKSVGNormalizer::expandUseTags(d); return d; } },
        { "removeGsWithoutLayerType", [](QDomDocument d) { RKSVGNormalizer::removeGsWithoutLayerType(d); return d; } },
        { "normalize", [](QDomDocument d) { return RKSVGNormalizer::normalize(d); } },
        { "removeElementsWithoutChilds",
            [](QDomDocument d) { RKSVGNormalizer::removeElementsWithoutChilds(d, { "g" }); return d; } },
        { "mergeLayertypeRenderWithNoCalEmbed",
            [](QDomDocument d) { RKSVGNormalizer::mergeLayertypeRenderWithNoCalEmbed(d); return d; } },
        { "setDefaultFillAttribute", [](QDomDocument d) { RKSVGNormalizer::setDefaultFillAttribute(d); return d; } },
        { "prepareDomDocument",
            [](QDomDocument d) { return RKSVGNormalizer::prepareDomDocument(d, QFileInfo(BASE + "/a.svg"), QDomDocument()); } },
    };
    return table;
}

// Elements named "blank" become white-space-only text (the parser drops such text itself).
QDomDocument parse(const QString& text)
{
    QDomDocument document;
    if (!document.setContent(text))
        qFatal("fixture is not XML: %s", qPrintable(text));
    const QDomNodeList blanks = document.elementsByTagName(QStringLiteral("blank"));
    for (int i = blanks.size() - 1; i >= 0; --i) {
        QDomNode blank = blanks.at(i);
        blank.parentNode().replaceChild(document.createTextNode(QStringLiteral(" \n\t ")), blank);
    }
    return document;
}

QImage render(const QByteArray& svg)
{
    QSvgRenderer renderer(svg);
    QImage image(128, 128, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

}

class TestNormalizer : public QObject
{
    Q_OBJECT

private slots:
    void steps_data()
    {
        QTest::addColumn<QString>("step");
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("expected");

        QTest::newRow("references") << "makeAbsoluteHRefs"
            << "<svg><image xlink:href=\"#pic\"/><use xlink:href=\"#star\"/><use xlink:href=\"star.svg\"/>"
               "<image xlink:href=\"data:image/png;base64,AA==\"/><image class=\"x\" fill-rule=\"evenodd\" xlink:href=\"../img/./a.png\"/>"
               "<rect fill-rule=\"evenodd\"/></svg>"
            << "<svg><image xlink:href=\"/base/clip/#pic\"/><use xlink:href=\"#star\"/><use xlink:href=\"/base/clip/star.svg\"/>"
               "<image xlink:href=\"data:image/png;base64,AA==\"/><image class=\"x\" xlink:href=\"/base/img/a.png\"/>"
               "<rect fill-rule=\"evenodd\"/></svg>";
        QTest::newRow("comments and blank text") << "removeComments"
            << "<svg><!-- a --><blank/><g><!--b--><text> x <blank/></text><blank/></g></svg>"
            << "<svg><g><text> x </text></g></svg>";
        QTest::newRow("use expanded, defs removed") << "expandUseTags"
            << "<svg><defs><g id=\"star\"><path d=\"M0 0\"/><circle r=\"1\"/></g><path id=\"p\"/></defs>"
               "<g><g><use class=\"c\" height=\"3\" transform=\"rotate(3)\" width=\"3\" x=\"5\" xlink:href=\"#star\" y=\"1\"/></g>"
               "<use xlink:href=\"#p\"/></g><use xlink:href=\"#star\"/></svg>"
            << "<svg><g><g><g class=\"c\" transform=\"rotate(3)\"><path d=\"M0 0\"/><circle r=\"1\"/></g></g><g/></g>"
               "<use xlink:href=\"#star\"/></svg>";
        QTest::newRow("layer lifted with transforms") << "removeGsWithoutLayerType"
            << "<svg><g transform=\"translate(1,1)\"><rect/><g transform=\"scale(2)\"><g transform=\"rotate(5)\" vako:layertype=\"render\">"
               "<g vako:layertype=\"transfer\"/></g></g></g><g vako:layertype=\"render\"/><g><g vako:layertype=\"reference\"/></g></svg>"
            << "<svg><g transform=\"translate(1,1) scale(2) rotate(5)\" vako:layertype=\"render\"><g vako:layertype=\"transfer\"/></g>"
               "<g transform=\"translate(1,1)\"><rect/><g transform=\"scale(2)\"/></g><g vako:layertype=\"render\"/>"
               "<g vako:layertype=\"reference\"/><g/></svg>";
        QTest::newRow("calendar-embedded split out") << "normalize"
            << "<svg><g id=\"L\" vako:layertype=\"render\"><g id=\"P\"><rect id=\"a\"/><text id=\"c\" vako:cal_embed=\"yes\">1</text>"
               "<rect id=\"b\"/></g></g><rect id=\"after\"/><text vako:cal_embed=\"0\"/></svg>"
            << "<svg><g id=\"L\" vako:layertype=\"render\"><g id=\"P\"><rect id=\"a\"/></g></g>"
               "<g id=\"L\" vako:layertype=\"render\" vako:mark_cal_embed=\"true\"><g id=\"P\"><text id=\"c\" vako:cal_embed=\"yes\">1</text></g></g>"
               "<g id=\"L\" vako:layertype=\"render\"><g id=\"P\"><rect id=\"b\"/></g></g><rect id=\"after\"/><text vako:cal_embed=\"0\"/></svg>";
        QTest::newRow("instruction named svg before the root") << "normalize"
            << "<?svg x?><svg><g><rect/></g></svg>"
            << "<svg><g><rect/></g></svg>";
        QTest::newRow("calendar-embedded at the top") << "normalize"
            << "<svg><rect vako:cal_embed=\"true\"/><g><rect/></g></svg>"
            << "<svg><rect vako:cal_embed=\"true\"/><g><rect/></g></svg>";
        QTest::newRow("empty groups, innermost first") << "removeElementsWithoutChilds"
            << "<svg><g><g/><rect/></g><g><g><g/></g></g><G/><g>t</g></svg>"
            << "<svg><g><rect/></g><G/><g>t</g></svg>";
        QTest::newRow("render runs merged") << "mergeLayertypeRenderWithNoCalEmbed"
            << "<svg><g id=\"1\" vako:layertype=\"render\"/><blank/><!--c--><g id=\"2\" vako:layertype=\"render\"/>"
               "<g id=\"3\" vako:layertype=\"render\"/><rect/><g id=\"4\" vako:layertype=\"render\"/><g vako:layertype=\"reference\"/>"
               "<g id=\"5\" vako:layertype=\"render\"><g><vako:textarea/></g></g><g id=\"6\" vako:layertype=\"render\"/>"
               "<g id=\"7\" vako:layertype=\"render\" vako:mark_cal_embed=\"true\"/><g id=\"8\" vako:layertype=\"render\"/>"
               "<g id=\"9\" vako:layertype=\"render,reference\"/></svg>"
            << "<svg><g vako:layertype=\"render\" vako:merged=\"3\"><g id=\"1\"/><g id=\"2\"/><g id=\"3\"/></g> \n\t <!--c--><rect/>"
               "<g id=\"4\" vako:layertype=\"render\"/><g vako:layertype=\"reference\"/><g id=\"5\" vako:layertype=\"render\"><g><vako:textarea/></g></g>"
               "<g id=\"6\" vako:layertype=\"render\"/><g id=\"7\" vako:layertype=\"render\" vako:mark_cal_embed=\"true\"/>"
               "<g id=\"8\" vako:layertype=\"render\"/><g id=\"9\" vako:layertype=\"render,reference\"/></svg>";
        QTest::newRow("default fill") << "setDefaultFillAttribute"
            << "<svg><path d=\"M0 0L1 1Z\"/><path d=\"M0 0L1 1\"/><g><RECT/><circle fill=\"\"/></g>"
               "<g style=\"stroke:red;Fill:blue\"><rect/></g><g fill=\"red\"><polygon/></g><line/></svg>"
            << "<svg><path d=\"M0 0L1 1Z\" fill=\"#000000\"/><path d=\"M0 0L1 1\"/><g><RECT fill=\"#000000\"/><circle fill=\"#000000\"/></g>"
               "<g style=\"stroke:red;Fill:blue\"><rect/></g><g fill=\"red\"><polygon/></g><line/></svg>";
    }

    void steps()
    {
        QFETCH(QString, step);
        QFETCH(QString, input);
        QFETCH(QString, expected);
        QCOMPARE(canonicalLine(stepTable().value(step)(parse(input))), expected);
    }

    void notSvgLeftAlone()
    {
        const QString text = QStringLiteral(
            "<html><g vako:layertype=\"render\"><!--c--><g><use xlink:href=\"#a\"/></g></g><g vako:layertype=\"render\"/>"
            "<defs><g id=\"a\"/></defs><image xlink:href=\"x.png\"/><vako:logo width=\"1\" height=\"1\"/><rect/><g/></html>");
        QDomDocument logo = parse(QStringLiteral("<svg width=\"1\" height=\"1\"><rect/></svg>"));
        for (auto it = stepTable().cbegin(); it != stepTable().cend(); ++it) {
            const QDomDocument document = parse(text);
            const QString before = document.toString();
            QCOMPARE(it.value()(document).toString(), before);
            QCOMPARE(document.toString(), before);
        }
        QCOMPARE(RKSVGNormalizer::replaceLogo(parse(text), logo).toString(), parse(text).toString());
        QVERIFY(RKSVGNormalizer::prepareDomDocument(QDomDocument(), QFileInfo(), logo).documentElement().isNull());
    }

    void prologAndArgumentKept()
    {
        const QDomDocument document = parse(QStringLiteral(
            "<?xml-stylesheet href=\"a.css\" type=\"text/css\"?><!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1//EN\" \"svg11.dtd\">"
            "<svg><!--c--><g><rect/></g></svg>"));
        const QString before = document.toString();
        const QDomDocument result = stepTable().value("prepareDomDocument")(document);
        QCOMPARE(document.toString(), before);
        // The canonical writer leaves the prolog out; QDom's own text has no attributes to reorder here.
        QCOMPARE(result.toString(-1), QStringLiteral("<!DOCTYPE svg PUBLIC '-//W3C//DTD SVG 1.1//EN' 'svg11.dtd'>\n"
                                                     "<?xml-stylesheet href=\"a.css\" type=\"text/css\"?>\n<svg><g><rect/></g></svg>"));
    }

    void logoFitsAndCentres_data()
    {
        QTest::addColumn<QString>("logoRoot");
        QTest::addColumn<QString>("transform");

        // The place is x=10 y=20, 100 by 50, its centre 60,45.
        QTest::newRow("square logo, height limits: 50 by 50") << "<svg width=\"200\" height=\"200\">" << "translate(35 20) scale(0.25)";
        QTest::newRow("wide logo, width limits: 100 by 25") << "<svg width=\"400px\" height=\"100px\">"
                                                            << "translate(10 32.5) scale(0.25)";
        QTest::newRow("view box wins, its corner to the origin") << "<svg width=\"10mm\" height=\"10mm\" viewBox=\"-50 -50 100 100\">"
                                                                 << "translate(35 20) scale(0.5) translate(50 50)";
    }

    // The place stays; a new render layer after it holds the background and the logo's content.
    void logoFitsAndCentres()
    {
        QFETCH(QString, logoRoot);
        QFETCH(QString, transform);

        const QString place = QStringLiteral("<g vako:layertype=\"render\"><vako:logo height=\"50\" vako:background_class=\"paper\" "
                                             "vako:background_fill=\"#ffeedd\" width=\"100\" x=\"10\" y=\"20\"/></g>");
        const QDomDocument logo = parse(logoRoot + QStringLiteral("<rect id=\"logo\"/></svg>"));
        const QDomDocument result = RKSVGNormalizer::replaceLogo(parse("<svg>" + place + "</svg>"), logo);
        const QString layer = QStringLiteral("<g vako:layertype=\"render\"><rect class=\"logo_background paper\" fill=\"#ffeedd\" "
                                             "height=\"50\" width=\"100\" x=\"10\" y=\"20\"/>"
                                             "<g class=\"logo_foreground\" transform=\"%1\"><rect id=\"logo\"/></g></g>");
        QCOMPARE(canonicalLine(result), "<svg>" + place + layer.arg(transform) + "</svg>");

        QCOMPARE(RKSVGNormalizer::replaceLogo(parse("<svg/>"), QDomDocument()).toString(), parse("<svg/>").toString());
    }

    // The logo's transform stays a list of finite numbers that the transform reader accepts.
    void logoAtTheEndsOfTheNumberRange_data()
    {
        QTest::addColumn<QString>("place");
        QTest::addColumn<QString>("logoRoot");
        QTest::newRow("place beyond half the range")
            << "x=\"1.7e308\" y=\"-1.7e308\" width=\"1.7e308\" height=\"1.7e308\"" << "<svg width=\"10\" height=\"20\">";
        QTest::newRow("logo too small to measure")
            << "x=\"0\" y=\"0\" width=\"1e300\" height=\"1e300\"" << "<svg viewBox=\"0 0 1e-320 1e-320\">";
    }
    void logoAtTheEndsOfTheNumberRange()
    {
        QFETCH(QString, place);
        QFETCH(QString, logoRoot);
        const QDomDocument result = RKSVGNormalizer::replaceLogo(
            parse(QStringLiteral("<svg><vako:logo %1/></svg>").arg(place)), parse(logoRoot + QStringLiteral("<rect/></svg>")));
        const QString transform = result.documentElement().lastChildElement().firstChildElement("g").attribute("transform");
        QVERIFY2(!RKSVGTransformReader::parseTransformationMatrix(transform + " translate(1)").isIdentity(), qPrintable(transform));
    }

    void fillHelpers_data()
    {
        QTest::addColumn<QString>("element");
        QTest::addColumn<QString>("answers"); // the helpers answering yes: has a fill, is a closed shape, has holiday classes

        QTest::newRow("path closed by z") << "<path d=\"M0 0 L1 1 z\"/>" << "closed";
        QTest::newRow("open path") << "<path d=\"M0 0 L1 1\"/>" << "";
        QTest::newRow("ellipse, any case") << "<Ellipse/>" << "closed";
        QTest::newRow("line") << "<line/>" << "";
        QTest::newRow("fill opacity only") << "<rect style=\"fill-opacity:0.5\"/>" << "closed";
        QTest::newRow("style fill") << "<rect style=\"FILL:red\"/>" << "fill closed";
        QTest::newRow("holiday text inside") << "<g fill=\"red\"><g><text class=\"holidays\"/></g></g>" << "fill holiday";
        QTest::newRow("holiday class not on text") << "<g><tspan class=\"holiday\"/></g>" << "";
    }

    void fillHelpers()
    {
        QFETCH(QString, element);
        QFETCH(QString, answers);
        const QDomElement e = parse(element).documentElement();
        const QStringList found{ RKSVGNormalizer::hasFillInstruction(e) ? "fill" : "",
            RKSVGNormalizer::isClosedShapeGraphicsElement(e) ? "closed" : "", RKSVGNormalizer::hasHolidayClasses(e) ? "holiday" : "" };
        QCOMPARE(found.join(QLatin1Char(' ')).simplified(), answers);
    }

    void shippedClipArt_data()
    {
        QTest::addColumn<QString>("path");
        const QDir directory(shippedDataPath(QStringLiteral("clipart")));
        const QStringList files = directory.entryList({ QStringLiteral("*.svg") }, QDir::Files, QDir::Name);
        QVERIFY(files.size() >= 3);
        for (const QString& file : files)
            QTest::newRow(qPrintable(file)) << directory.filePath(file);
    }

    // Our clip art is drawn so that every step has work to do and the picture stays the same.
    void shippedClipArt()
    {
        QFETCH(QString, path);
        const QByteArray bytes = readTestFile(path);
        QDomDocument document;
        QVERIFY(document.setContent(bytes));

        QDomDocument current = document.cloneNode(true).toDocument();
        for (const char* step : { "makeAbsoluteHRefs", "removeComments", "expandUseTags", "removeGsWithoutLayerType", "normalize",
                 "removeElementsWithoutChilds", "mergeLayertypeRenderWithNoCalEmbed" }) {
            const QString before = canonicalLine(current);
            current = stepTable().value(step)(current);
            QVERIFY2(canonicalLine(current) != before, step);
        }
        const QDomDocument result = RKSVGNormalizer::prepareDomDocument(document, QFileInfo(path), QDomDocument());
        QCOMPARE(canonicalLine(result), canonicalLine(current));
        const double difference = meanDifference(render(bytes), render(RKXMLBuilder::toString(result, 1).toUtf8()));
        QVERIFY2(difference < 0.002, qPrintable(QString::number(difference)));
    }
};

QTEST_MAIN(TestNormalizer)
#include "test_normalizer.moc"
