#include "RKTestSupport.h"

#include <RKDistanceUnit.h>
#include <RKIntRange.h>
#include <RKXMLBuilder.h>
#include <RKXMLKeywords.h>
#include <RKXMLParser.h>

#include <QPainter>

namespace {

QDomNamedNodeMap attrs(const QString& attributes) { return testElement(QStringLiteral("<e %1/>").arg(attributes)).attributes(); }

}

class TestXMLParser : public QObject
{
    Q_OBJECT
    QDomDocument myDocument;

    // A fresh root element built through the writer, to read back what it wrote.
    QDomElement built()
    {
        myDocument = QDomDocument();
        return RKXMLBuilder::buildRootElement(myDocument, QStringLiteral("e"));
    }

private Q_SLOTS:
    void fastDecodeInt_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value");
        QTest::addColumn<bool>("ok");
        QTest::newRow("tabs and newlines, negative") << QStringLiteral("\t\n-15\r\n") << -15 << true;
        QTest::newRow("inner blank") << QStringLiteral("4 2") << 0 << false;
        QTest::newRow("unit suffix") << QStringLiteral("12px") << 0 << false;
        QTest::newRow("plus sign") << QStringLiteral("+5") << 0 << false;
        QTest::newRow("empty") << QString() << 0 << false;
        QTest::newRow("blanks only") << QStringLiteral("   ") << 0 << true;
        QTest::newRow("sign then blank") << QStringLiteral(" - ") << 0 << true;
        QTest::newRow("int max") << QStringLiteral("2147483647") << 2147483647 << true;
        QTest::newRow("int min") << QStringLiteral("-2147483648") << int(-2147483647 - 1) << true;
        QTest::newRow("wraps to negative") << QStringLiteral("2147483648") << int(-2147483647 - 1) << true;
        QTest::newRow("arabic-indic digits") << QString::fromUtf8("\u0664\u0662") << 42 << true;
        QTest::newRow("no-break space padding") << QString::fromUtf8("\u00a07\u00a0") << 7 << true;
    }
    void fastDecodeInt()
    {
        QFETCH(QString, text);
        QFETCH(int, value);
        QFETCH(bool, ok);
        bool success = !ok;
        QCOMPARE(RKXMLParser::fastDecodeInt(text, &success), value);
        QCOMPARE(success, ok);
        QCOMPARE(RKXMLParser::fastDecodeInt(text, nullptr), value);
    }

    void intAttributeFlavours_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<int>("expected");
        QTest::newRow("absent") << QStringLiteral("<e/>") << 5;
        QTest::newRow("blank") << QStringLiteral("<e n=\"   \"/>") << 5;
        QTest::newRow("not a number gives 0, not the default") << QStringLiteral("<e n=\"abc\"/>") << 0;
        QTest::newRow("padded negative") << QStringLiteral("<e n=\" -3 \"/>") << -3;
    }
    void intAttributeFlavours()
    {
        QFETCH(QString, xml);
        QFETCH(int, expected);
        const QDomElement e = testElement(xml);
        QCOMPARE(RKXMLParser::intAttribute(e, QStringLiteral("n"), 5), expected);
        QCOMPARE(RKXMLParser::intAttribute(e.attributes(), QStringLiteral("n"), 5), expected);
        QCOMPARE(RKXMLParser::intAttribute(e.attributes(), QStringList{QStringLiteral("m"), QStringLiteral("n")}, 5), expected);
        int out = 77;
        const bool found = RKXMLParser::intAttribute(e.attributes(), QStringList{QStringLiteral("n")}, &out);
        QCOMPARE(found, expected != 5);
        QCOMPARE(out, found ? expected : 77);
        QVERIFY(!RKXMLParser::intAttribute(e.attributes(), QStringList(), &out));
    }

    void textsAndAttributeLists()
    {
        QCOMPARE(RKXMLParser::intValue(testElement(QStringLiteral("<e>abc</e>")), 9), 9);
        QDomDocument blanks;
        QDomElement blank = blanks.createElement(QStringLiteral("e"));
        blank.appendChild(blanks.createTextNode(QStringLiteral("  ")));
        QCOMPARE(RKXMLParser::intValue(blank, 9), 0);
        const QDomElement parent = testElement(QStringLiteral("<p><a>12</a><b>x</b><c/><n><name>inner</name></n></p>"));
        QCOMPARE(RKXMLParser::intText(parent, QStringLiteral("a"), 3), 12);
        QCOMPARE(RKXMLParser::intText(parent, QStringLiteral("b"), 3), 0);
        QCOMPARE(RKXMLParser::intText(parent, QStringLiteral("c"), 3), 3);
        QCOMPARE(RKXMLParser::text(parent, QStringLiteral("n"), QStringLiteral("name"), QStringLiteral("d")), QStringLiteral("inner"));
        QCOMPARE(RKXMLParser::text(parent, QStringLiteral("nochild"), QStringLiteral("name"), QStringLiteral("d")), QStringLiteral("d"));
        QCOMPARE(RKXMLParser::intRange(testElement(QStringLiteral("<r from=\"3\"/>")), QStringLiteral("from"), QStringLiteral("to"), 1, 8), RKIntRange(3, 8));

        const QDomElement e = testElement(QStringLiteral("<e a=\" \" b=\" B \" c=\"C\" u=\" MiXed \"/>"));
        const QStringList ab{QStringLiteral("a"), QStringLiteral("b")};
        QCOMPARE(RKXMLParser::attribute(e.attributes(), ab, QStringLiteral("d")), QStringLiteral("B"));
        QCOMPARE(RKXMLParser::attribute(e.attributes(), ab, QStringLiteral("d"), false), QStringLiteral(" "));
        QCOMPARE(RKXMLParser::attribute(e.attributes(), QStringList{QStringLiteral("x")}, QStringLiteral("d")), QStringLiteral("d"));
        QCOMPARE(RKXMLParser::attribute(e, QStringLiteral("a"), QStringLiteral("d")), QString());
        QCOMPARE(RKXMLParser::lowerAttribute(e, QStringLiteral("u")), QStringLiteral("mixed"));
        QCOMPARE(RKXMLParser::lowerAttribute(e.attributes(), QStringLiteral("missing"), QStringLiteral("DEF")), QStringLiteral("def"));
    }

    void booleans_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("defaultValue");
        QTest::addColumn<bool>("expected");
        QTest::newRow("upper case YES") << QStringLiteral("YES") << false << true;
        QTest::newRow("padded On") << QStringLiteral(" On ") << false << true;
        QTest::newRow("0 against default true") << QStringLiteral("0") << true << false;
        QTest::newRow("maybe, default true") << QStringLiteral("maybe") << true << true;
        QTest::newRow("maybe, default false") << QStringLiteral("maybe") << false << false;
    }
    void booleans()
    {
        QFETCH(QString, value);
        QFETCH(bool, defaultValue);
        QFETCH(bool, expected);
        QDomElement e = built();
        e.setAttribute(QStringLiteral("b"), value);
        QCOMPARE(RKXMLParser::boolAttribute(e, QStringLiteral("b"), defaultValue), expected);
        QCOMPARE(RKXMLParser::boolAttribute(e.attributes(), QStringLiteral("b"), defaultValue), expected);
        QCOMPARE(RKXMLParser::boolAttribute(e, QStringLiteral("absent"), defaultValue), defaultValue);
        // booleanValue does not trim.
        QCOMPARE(RKXMLParser::booleanValue(QStringLiteral(" yes"), false), false);
        QCOMPARE(RKXMLParser::booleanValue(QStringLiteral("TRUE"), false), true);
        RKXMLBuilder::addAttribute(e, QStringLiteral("w"), expected);
        QCOMPARE(RKXMLParser::boolAttribute(e, QStringLiteral("w"), !expected), expected);
    }

    void colors()
    {
        QVERIFY(!RKXMLParser::readColor(QString()).isValid());
        QCOMPARE(RKXMLParser::readColor(QStringLiteral("foo")), QColor(0, 0, 0, 0)); // valid: transparent black
        QCOMPARE(RKXMLParser::readColor(QStringLiteral("4278190335")), QColor(0, 0, 255));
        QCOMPARE(RKXMLParser::readColor(QStringLiteral("red")), QColor(255, 0, 0));
        const QDomElement e = testElement(QStringLiteral("<e c=\" #0000ff \" empty=\"\"/>"));
        QCOMPARE(RKXMLParser::colorAttribute(e, QStringLiteral("absent"), QColor()), QColor(Qt::transparent));
        QCOMPARE(RKXMLParser::colorAttribute(e, QStringLiteral("absent"), QColor(Qt::red)), QColor(Qt::red));
        QCOMPARE(RKXMLParser::colorAttribute(e.attributes(), QStringLiteral("c"), QColor()), QColor(0, 0, 255));
        QCOMPARE(RKXMLParser::colorAttribute(e.attributes(), QStringList(), QColor()), QColor(Qt::transparent));
        // The first present name decides, even when its value is empty.
        QCOMPARE(RKXMLParser::colorAttribute(e.attributes(), QStringList{QStringLiteral("x"), QStringLiteral("empty"), QStringLiteral("c")}, QColor(Qt::red)).rgba(), 0u);
        QCOMPARE(RKXMLParser::parseExtendedColor(QStringLiteral("#ff0000,80"), QColor()), QColor(255, 0, 0, 128));
        QCOMPARE(RKXMLParser::parseExtendedColor(QStringLiteral("red,80"), QColor(Qt::green)), QColor(Qt::green));
        // Both writer encodings read back exactly.
        for (const QColor& color : {QColor(255, 0, 0, 128), QColor(1, 2, 3, 5), QColor(10, 20, 30)}) {
            QDomElement b = built();
            RKXMLBuilder::addColorAttributeEx(b, QStringLiteral("ex"), color);
            RKXMLBuilder::addAttribute(b, QStringLiteral("plain"), color);
            QCOMPARE(RKXMLParser::colorAttributeEx(b, QStringLiteral("ex")), color);
            QCOMPARE(RKXMLParser::colorAttribute(b, QStringLiteral("plain")), color);
        }
    }

    void numbers_data()
    {
        // readAngle: -1 marks rows that do not apply (absent attribute, text safeDouble rejects).
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("safeDouble");
        QTest::addColumn<int>("angle");
        QTest::newRow("comma") << QStringLiteral("3,5") << 3.5 << -1;
        QTest::newRow("unit") << QStringLiteral("12mm") << 12.0 << -1;
        QTest::newRow("unit with comma") << QStringLiteral("1,5px") << 1.5 << -1;
        QTest::newRow("letters only") << QStringLiteral("x") << 0.0 << -1;
        QTest::newRow("exponent survives first pass") << QStringLiteral("1e3") << 1000.0 << 280;
        QTest::newRow("absent gives default angle") << QString() << 0.0 << 45;
        QTest::newRow("-90") << QStringLiteral("-90") << -90.0 << 270;
        QTest::newRow("720 is a whole turn") << QStringLiteral("720") << 720.0 << 0;
        QTest::newRow("-360 stays 360") << QStringLiteral("-360") << -360.0 << 360;
        QTest::newRow("2.5 rounds up") << QStringLiteral("2.5") << 2.5 << 3;
        QTest::newRow("-2.5 rounds up") << QStringLiteral("-2.5") << -2.5 << 358;
        QTest::newRow("huge angle does not overflow") << QStringLiteral("1e300") << 1e300 << 2147483647 % 360;
    }
    void numbers()
    {
        QFETCH(QString, text);
        QFETCH(double, safeDouble);
        QFETCH(int, angle);
        QCOMPARE(RKXMLParser::safeDouble(text), safeDouble);
        if (angle < 0)
            return;
        QDomElement e = built();
        if (!text.isNull())
            e.setAttribute(QStringLiteral("r"), text);
        QCOMPARE(RKXMLParser::readAngle(e, QStringLiteral("r"), 45), angle);
        QCOMPARE(RKXMLParser::readAngle(e.attributes(), QStringLiteral("r"), 45), angle);
    }

    void readSegmentPreference_data()
    {
        QTest::addColumn<QString>("attributes");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("length");
        QTest::newRow("start+end wins over all") << QStringLiteral("s=\"10\" e=\"30\" l=\"99\" c=\"99\"") << true << 10 << 20;
        QTest::newRow("start+length over centre") << QStringLiteral("s=\"10\" l=\"4\" c=\"99\"") << true << 10 << 4;
        QTest::newRow("end+length") << QStringLiteral("e=\"30\" l=\"4\" c=\"99\"") << true << 26 << 4;
        QTest::newRow("centre+length, odd length truncates") << QStringLiteral("c=\"10\" l=\"5\"") << true << 8 << 5;
        QTest::newRow("centre+length, negative length") << QStringLiteral("c=\"10\" l=\"-5\"") << true << 12 << -5;
        QTest::newRow("start+centre") << QStringLiteral("s=\"4\" c=\"10\"") << true << 4 << 12;
        QTest::newRow("end+centre") << QStringLiteral("e=\"16\" c=\"10\"") << true << 4 << 12;
        QTest::newRow("centre alone fails") << QStringLiteral("c=\"10\"") << false << 2147483647 << 0;
        QTest::newRow("length alone fails") << QStringLiteral("l=\"10\"") << false << 2147483647 << 0;
        QTest::newRow("blank values count as missing") << QStringLiteral("s=\" \" e=\"30\" l=\"4\"") << true << 26 << 4;
        QTest::newRow("wrapping length") << QStringLiteral("s=\"-2147483648\" e=\"2147483647\"") << true << int(-2147483647 - 1) << -1;
    }
    void readSegmentPreference()
    {
        QFETCH(QString, attributes);
        QFETCH(bool, ok);
        QFETCH(int, start);
        QFETCH(int, length);
        const QDomNamedNodeMap map = attrs(attributes);
        const QStringList s{QStringLiteral("s")}, c{QStringLiteral("c")}, e{QStringLiteral("e")}, l{QStringLiteral("l")};
        int gotStart = 0, gotLength = 0;
        QCOMPARE(RKXMLParser::readSegment(map, s, c, e, l, &gotStart, &gotLength), ok);
        QCOMPARE(gotStart, start);
        QCOMPARE(gotLength, length);
        if (QByteArray(QTest::currentDataTag()) == "wrapping length")
            return; // the floating point flavour does not wrap
        double fStart = 0, fLength = 0;
        QCOMPARE(RKXMLParser::readSegmentF(map, s, c, e, l, &fStart, &fLength), ok);
        QCOMPARE(fLength, ok ? double(length) : 0.0);
        if (ok)
            QVERIFY(qAbs(fStart - start) <= 0.5); // C - L/2 is not truncated here
        else
            QCOMPARE(fStart, 1.7976931348623157e308);
    }

    void readRectAndSize()
    {
        QCOMPARE(RKXMLParser::readRect(attrs(QStringLiteral("left=\"10\" right=\"30\" top=\"5\" height=\"4\""))), QRect(10, 5, 20, 4));
        QVERIFY(RKXMLParser::readRect(attrs(QStringLiteral("centerX=\"10\" centerY=\"5\""))).isNull());
        // "lleft" and "vako:width" are accepted names; the first non-empty name of a list wins.
        QCOMPARE(RKXMLParser::readRect(attrs(QStringLiteral("x=\" \" lleft=\"3\" vako:width=\"7\" y=\"1\" bottom=\"5\""))), QRect(3, 1, 7, 4));
        QCOMPARE(RKXMLParser::readRectF(attrs(QStringLiteral("centerx=\"10\" width=\"5\" top=\"1\" height=\"2\""))), QRectF(7.5, 1, 5, 2));
        QCOMPARE(RKXMLParser::readRectF(QDomNamedNodeMap()), QRectF());
        QCOMPARE(RKXMLParser::readRectF(attrs(QStringLiteral("a=\"2\"")), QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d")), QRectF(2, 1, 1, 1));
        QCOMPARE(RKXMLParser::readSize(testElement(QStringLiteral("<e width=\"bad\"/>"))), QSize(0, 0));
        QCOMPARE(RKXMLParser::readSize(attrs(QStringLiteral("width=\" 4 \" height=\"3\""))), QSize(4, 3));
        QCOMPARE(RKXMLParser::readSizeF(testElement(QStringLiteral("<e width=\"1,5\" height=\"2mm\"/>"))), QSizeF(1.5, 2));
        // Writer and reader agree on rectangles (normalised on writing).
        QDomElement b = built();
        RKXMLBuilder::addRect(b, QRectF(10.5, 20.25, -4, 8));
        QCOMPARE(RKXMLParser::readRectF(b.attributes()), QRectF(6.5, 20.25, 4, 8));
    }

    void readRectFlippedAndAbsurd_data()
    {
        QTest::addColumn<QString>("attributes");
        QTest::addColumn<QRect>("expected");
        QTest::newRow("right edge left of the left edge") << QStringLiteral("left=\"30\" right=\"10\" top=\"0\" height=\"4\"") << QRect(10, 0, 20, 4);
        const int limit = (1 << 30) - 1;
        QTest::newRow("left at INT_MAX, width 3") << QStringLiteral("left=\"2147483647\" width=\"3\" top=\"0\" height=\"1\"") << QRect(limit, 0, 0, 1);
        QTest::newRow("x at INT_MIN, width -1") << QStringLiteral("x=\"-2147483648\" width=\"-1\" y=\"0\" height=\"1\"") << QRect(-limit, 0, 0, 1);
        QTest::newRow("wrapped width") << QStringLiteral("left=\"-2147483648\" right=\"2147483647\" top=\"-5\" bottom=\"-2147483648\"") << QRect(-limit, -limit, 0, limit - 5);
        QTest::newRow("inside the bound, flipped") << QStringLiteral("left=\"1073741824\" width=\"-1073741824\" top=\"0\" height=\"1\"") << QRect(0, 0, limit, 1);
    }
    void readRectFlippedAndAbsurd()
    {
        QFETCH(QString, attributes);
        QFETCH(QRect, expected);
        QCOMPARE(RKXMLParser::readRect(attrs(attributes)), expected);
    }

    void alignmentWords_data()
    {
        QTest::addColumn<QString>("words");
        QTest::addColumn<int>("expected");
        QTest::addColumn<QString>("written"); // single-bit words only
        QTest::newRow("two words, mixed case, blank") << QStringLiteral("AlignTop, alignHCenter") << 36
                                                      << QStringLiteral("alignhcenter,aligntop");
        QTest::newRow("composite") << QStringLiteral("aligncenter") << 132 << QStringLiteral("alignhcenter,alignvcenter");
        QTest::newRow("nonsense means left") << QStringLiteral("nonsense") << 1 << QStringLiteral("alignleft");
        QTest::newRow("unknown part adds left") << QStringLiteral("aligntop,foo") << 33 << QStringLiteral("alignleft,aligntop");
        QTest::newRow("synonyms") << QStringLiteral("alignleading,aligntrailing") << 3 << QStringLiteral("alignleft,alignright");
        QTest::newRow("mask") << QStringLiteral("alignvertical_mask") << 224 << QStringLiteral("aligntop,alignbottom,alignvcenter");
    }
    void alignmentWords()
    {
        QFETCH(QString, words);
        QFETCH(int, expected);
        QFETCH(QString, written);
        const RKXMLKeywords keywords;
        const Qt::Alignment alignment = keywords.alignment(words);
        QCOMPARE(int(alignment), expected);
        // Writing reads back to the same flags.
        QCOMPARE(keywords.alignmentString(alignment), written);
        QCOMPARE(int(keywords.alignment(written)), expected);
    }

    void ranges()
    {
        RKIntRange unset(0, 0), r(0, 0);
        unset.expandTo(-4);
        QCOMPARE(unset, RKIntRange(-4, -4));
        for (int value : {5, 9, 2, 6})
            r.expandTo(value);
        QCOMPARE(r, RKIntRange(2, 9));
        QCOMPARE(RKIntRange(-3, 0).center(), -1);
        QCOMPARE(RKIntRange(2147483647, 2147483647).center(), -1); // 32-bit sum wraps
        const RKIntRange invalid(5, 1);
        QVERIFY(!invalid.isValid());
        // Valid ranges sort before invalid ones, then by lower and upper bound.
        QVERIFY(RKIntRange(9, 9) < invalid);
        QVERIFY(!(invalid < RKIntRange(0, 1)));
        QVERIFY(!(invalid < invalid));
        QVERIFY(RKIntRange(1, 5) < RKIntRange(1, 6));
        QVERIFY(RKIntRange(1, 9) < RKIntRange(2, 3));
        QVERIFY(RKIntRange(1, 9).contains(RKIntRange(1, 9)));
        QVERIFY(!RKIntRange(1, 9).contains(RKIntRange(0, 3)));
        // Either range inside the other, or a shared end, is an intersection.
        QVERIFY(RKIntRange(1, 9).intersects(RKIntRange(3, 4)));
        QVERIFY(RKIntRange(3, 4).intersects(RKIntRange(1, 9)));
        QVERIFY(RKIntRange(1, 3).intersects(RKIntRange(3, 4)));
        QVERIFY(!RKIntRange(1, 2).intersects(RKIntRange(3, 4)));
    }

    void walkingTheTree()
    {
        const QDomElement root = testElement(QStringLiteral("<r><a><a1/><a2><x k=\"2\"/></a2></a><b/><c k=\"2\"><c1/></c></r>"));
        QStringList order;
        for (QDomElement e = root; !e.isNull(); e = RKXMLParser::nextElement(e))
            order << e.tagName();
        QCOMPARE(order.join(QLatin1Char(' ')), QStringLiteral("r a a1 a2 x b c c1"));
        // Starting deep inside "a" continues past it into the rest of the document.
        QCOMPARE(RKXMLParser::nextElement(root.firstChildElement().lastChildElement().firstChildElement()).tagName(), QStringLiteral("b"));
        QVERIFY(RKXMLParser::nextElement(QDomElement()).isNull());
        // Only direct children are searched.
        QCOMPARE(RKXMLParser::findChildWithAttribute(root, QStringLiteral("k"), QStringLiteral("2")).tagName(), QStringLiteral("c"));
        QVERIFY(RKXMLParser::findChildWithAttribute(root, QStringLiteral("k"), QStringLiteral("3")).isNull());
        QVERIFY(RKXMLParser::findChildWithAttribute(root, QStringLiteral("k"), QString()).isNull());
    }

    void imageRoundTrip()
    {
        QImage image(7, 5, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter(&image).fillRect(1, 1, 3, 2, QColor(10, 200, 30, 180));
        QDomElement root = built();
        QDomElement bad = RKXMLBuilder::buildDomElement(root, QStringLiteral("img"), image).cloneNode(true).toElement();
        // Through text and back, as a saved file would be.
        QDomDocument reread;
        QVERIFY(reread.setContent(RKXMLBuilder::toString(myDocument, 4)));
        QCOMPARE(RKXMLParser::readImage(reread.documentElement().firstChildElement()), image); // format included
        // Format_Invalid and a number past the last format Qt knows.
        for (const QString& format : {QStringLiteral("0"), QStringLiteral("9999")}) {
            bad.setAttribute(QStringLiteral("format"), format);
            QVERIFY2(RKXMLParser::readImage(bad).isNull(), qPrintable(format));
        }
        QVERIFY(RKXMLParser::readImage(testElement(QStringLiteral("<img format=\"5\">not base64 png</img>"))).isNull());
        QVERIFY(RKXMLParser::readImage(RKXMLBuilder::buildDomElement(root, QStringLiteral("none"), QImage())).isNull());
    }

    void fontRoundTrip_data()
    {
        // "bold" is yes or no: a weight above Medium is saved as bold and read back as Bold.
        QTest::addColumn<int>("weight");
        QTest::addColumn<bool>("italic");
        QTest::addColumn<int>("readWeight");
        QTest::newRow("medium is not bold") << int(QFont::Medium) << false << int(QFont::Normal);
        QTest::newRow("just above medium is bold, italic") << int(QFont::Medium) + 1 << true << int(QFont::Bold);
    }
    void fontRoundTrip()
    {
        QFETCH(int, weight);
        QFETCH(bool, italic);
        QFETCH(int, readWeight);
        QFont font(QStringLiteral("Serif"));
        font.setPointSize(17);
        font.setWeight(weight);
        font.setItalic(italic);
        QDomElement e = built();
        RKXMLBuilder::addAttribute(e, font);
        QCOMPARE(RKXMLParser::readFont(e).toString(), QFont(QStringLiteral("Serif"), 17, readWeight, italic).toString());
        // "fontsize" wins over "size", and a size below 1 keeps the default 12 points.
        e.setAttribute(QStringLiteral("fontsize"), 0);
        QCOMPARE(RKXMLParser::readFont(e).pointSize(), 12);
    }

    void distanceUnits_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("expected");
        QTest::newRow("internal") << 1 << 3.0 << 3.0;
        QTest::newRow("millimetre") << 2 << 3.0 << 30.0;
        QTest::newRow("inch") << 4 << 1.0 << 254.0;
        QTest::newRow("centimetre") << 8 << 2.0 << 200.0;
        QTest::newRow("point") << 16 << 72.0 << 254.0;
    }
    void distanceUnits()
    {
        QFETCH(int, code);
        QFETCH(double, value);
        QFETCH(double, expected);
        const RKDistanceUnit unit(code);
        QCOMPARE(unit.units2Pixels(value), expected);
        QCOMPARE(unit.pixels2Units(expected), value);
        QDomElement e = built();
        RKXMLBuilder::addAttribute(e, QStringLiteral("len"), RKDistance(expected), unit);
        QCOMPARE(RKXMLParser::readDistance(e, QStringLiteral("len"), 0.0, unit).value(), expected);
        QCOMPARE(RKXMLParser::readDistance(e, QStringLiteral("absent"), value, unit).value(), expected);
        if (code == 16) {
            QTest::ignoreMessage(QtWarningMsg, "distance not supported! 3");
            QCOMPARE(RKDistanceUnit(3).units2Pixels(value), value);
        }
    }
};

QTEST_GUILESS_MAIN(TestXMLParser)
#include "test_xmlparser.moc"
