#include "RKTestSupport.h"

#include <RKSVGCutter.h>

#include <QDomDocument>

namespace {
QDomDocument parse(const QString& text)
{
    QDomDocument document;
    if (!document.setContent(text))
        qFatal("fixture is not XML: %s", qPrintable(text));
    return document;
}

// "id:x,y,w,h:m11,m12,m21,m22,dx,dy" per snippet, joined by " | ". The matrix is that of the mark's parent.
QString describe(const QList<RKSVGSnippet>& snippets)
{
    QStringList fields;
    for (const RKSVGSnippet& s : snippets) {
        const QRectF b = s.boundingBox();
        const QTransform m = s.matrix();
        fields << QStringLiteral("%1:%2,%3,%4,%5:%6,%7,%8,%9,%10,%11")
                     .arg(s.ID()).arg(b.x()).arg(b.y()).arg(b.width()).arg(b.height())
                     .arg(m.m11()).arg(m.m12()).arg(m.m21()).arg(m.m22()).arg(m.dx()).arg(m.dy());
    }
    return fields.join(QStringLiteral(" | "));
}
}

class TestCutter : public QObject
{
    Q_OBJECT

private slots:
    void cut_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<QString>("expected");

        QTest::newRow("box with own transform, matrix of ancestors")
            << "<g transform=\"translate(10,20)\"><g transform=\"scale(3)\"><rect id=\"a\" class=\"cut\" width=\"5\" height=\"4\" "
               "transform=\"scale(2)\"/></g></g>"
            << "a:0,0,10,8:3,0,0,3,10,20";
        QTest::newRow("outer mark only, document order")
            << "<g id=\"outer\" class=\"cut\"><rect id=\"inner\" class=\"cut\" x=\"1\" y=\"2\" width=\"3\" height=\"4\"/></g>"
               "<circle id=\"c\" class=\"cut\" cx=\"50\" cy=\"50\" r=\"5\"/>"
            << "outer:1,2,3,4:1,0,0,1,0,0 | c:45,45,10,10:1,0,0,1,0,0";
        QTest::newRow("value compared exactly") << "<rect id=\"a\" class=\"Cut\"/><rect id=\"b\" class=\"cut x\"/>" << "";
        QTest::newRow("no id, unknown element: empty box, identity")
            << "<g transform=\"scale(2)\"><rect class=\"cut\" width=\"5\" height=\"5\"/><foo id=\"f\" class=\"cut\"/></g>"
            << ":0,0,0,0:1,0,0,1,0,0 | f:0,0,0,0:1,0,0,1,0,0";
    }

    void cut()
    {
        QFETCH(QString, body);
        QFETCH(QString, expected);
        const QDomDocument document = parse(
            QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100\" height=\"100\">%1</svg>").arg(body));
        const QString before = document.toString();
        const RKSVGCutter cutter(QStringLiteral("class"), QStringLiteral("cut"));
        const QList<RKSVGSnippet> snippets = cutter.cut(document.documentElement());
        QCOMPARE(describe(snippets), expected);
        QCOMPARE(document.toString(), before);
    }

    void snippetContent()
    {
        // One attribute each: QDom writes attributes in an order that changes from run to run.
        const QDomDocument document = parse(QStringLiteral("<svg><g class=\"cut\"><rect id=\"r\"/></g></svg>"));
        const RKSVGCutter cutter(QStringLiteral("id"), QStringLiteral("r"));
        const QDomElement rect = document.documentElement().firstChildElement().firstChildElement();
        QCOMPARE(cutter.createSubTree(rect), QStringLiteral("<svg> <rect id=\"r\"/>\n</svg>"));
        const QList<RKSVGSnippet> snippets = cutter.cut(document.documentElement());
        QCOMPARE(snippets.size(), 1);
        QCOMPARE(snippets.first(), RKSVGSnippet(cutter.createSubTree(rect), QStringLiteral("r"), QRectF(0, 0, 0, 0), QTransform()));
        QVERIFY(snippets.first() != RKSVGSnippet(cutter.createSubTree(rect), QStringLiteral("r"), QRectF(0, 0, 1, 0), QTransform()));
    }
};

QTEST_MAIN(TestCutter)
#include "test_cutter.moc"
