#include "RKTestSupport.h"

#include <RKRelativePinAnchorPoint.h>

#include <QDomDocument>

#include <limits>

class TestRelativePinAnchor : public QObject
{
    Q_OBJECT

private slots:
    void decode_data()
    {
        QTest::addColumn<QString>("attributes");
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<bool>("valid");
        QTest::newRow("none") << "" << QPointF(-1, -1) << false;
        QTest::newRow("0,1") << "anchor_x=\"0\" anchor_y=\"1\"" << QPointF(0, 1) << true;
        QTest::newRow("1,0") << "anchor_x=\"1.0\" anchor_y=\"0.0\"" << QPointF(1, 0) << true;
        QTest::newRow("just above 1") << "anchor_x=\"1.0000001\" anchor_y=\"0.5\"" << QPointF(1.0000001, 0.5) << false;
        QTest::newRow("just below 0") << "anchor_x=\"0.5\" anchor_y=\"-0.0000001\"" << QPointF(0.5, -0.0000001) << false;
        QTest::newRow("only x") << "anchor_x=\"0.5\"" << QPointF(0.5, -1) << false;
        QTest::newRow("only y") << "anchor_y=\"0.5\"" << QPointF(-1, 0.5) << false;
        QTest::newRow("padded") << "anchor_x=\" 0.25 \" anchor_y=\"0.75\"" << QPointF(0.25, 0.75) << true;
        // Malformed text reads as 0.0, which is a valid coordinate.
        QTest::newRow("malformed") << "anchor_x=\"left\" anchor_y=\"0,5\"" << QPointF(0, 0) << true;
        QTest::newRow("empty") << "anchor_x=\"\" anchor_y=\"\"" << QPointF(0, 0) << true;
        QTest::newRow("exponent") << "anchor_x=\"5e-1\" anchor_y=\"1e0\"" << QPointF(0.5, 1) << true;
    }

    void decode()
    {
        QFETCH(QString, attributes);
        QFETCH(QPointF, point);
        QFETCH(bool, valid);
        QDomDocument document;
        QVERIFY(document.setContent(QStringLiteral("<svg %1/>").arg(attributes)));
        const RKRelativePinAnchorPoint anchor = RKRelativePinAnchorPoint::decode(document.documentElement());
        QCOMPARE(anchor.point(), point);
        QCOMPARE(anchor.isValid(), valid);
    }

    void overflowingTextIsInvalid()
    {
        // Out of double's range reads as infinity, never as a coordinate on the image.
        QDomDocument document;
        QVERIFY(document.setContent(QStringLiteral("<svg anchor_x=\"1e400\" anchor_y=\"0.5\"/>")));
        QVERIFY(!RKRelativePinAnchorPoint::decode(document.documentElement()).isValid());
    }

    void nonFiniteCoordinatesAreInvalid_data()
    {
        QTest::addColumn<QPointF>("point");
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double inf = std::numeric_limits<double>::infinity();
        QTest::newRow("NaN x") << QPointF(nan, 0.5);
        QTest::newRow("NaN y") << QPointF(0.5, nan);
        QTest::newRow("+inf") << QPointF(inf, 0.5);
        QTest::newRow("-inf") << QPointF(0.5, -inf);
    }

    void nonFiniteCoordinatesAreInvalid()
    {
        QFETCH(QPointF, point);
        QVERIFY(!RKRelativePinAnchorPoint(point).isValid());
    }

    void defaultIsInvalid()
    {
        const RKRelativePinAnchorPoint anchor;
        QCOMPARE(anchor.point(), QPointF(-1, -1));
        QVERIFY(!anchor.isValid());
    }

    void namedPoints_data()
    {
        QTest::addColumn<QPointF>("named");
        QTest::addColumn<QPointF>("expected");
        QTest::newRow("topLeft") << RKRelativePinAnchorPoint::topLeft().point() << QPointF(0, 0);
        QTest::newRow("center") << RKRelativePinAnchorPoint::center().point() << QPointF(0.5, 0.5);
        QTest::newRow("bottomCenter") << RKRelativePinAnchorPoint::bottomCenter().point() << QPointF(0.5, 1);
        QTest::newRow("bottomRight") << RKRelativePinAnchorPoint::bottomRight().point() << QPointF(1, 1);
    }

    void namedPoints()
    {
        QFETCH(QPointF, named);
        QFETCH(QPointF, expected);
        QCOMPARE(named, expected);
        QVERIFY(RKRelativePinAnchorPoint(named).isValid());
    }

    void expanded()
    {
        QCOMPARE(RKRelativePinAnchorPoint::bottomCenter().expanded(QSizeF(200, 100)), QPointF(100, 100));
        QCOMPARE(RKRelativePinAnchorPoint::bottomRight().expanded(QSizeF(30, 40)), QPointF(30, 40));
        QCOMPARE(RKRelativePinAnchorPoint::topLeft().expanded(QSizeF(30, 40)), QPointF(0, 0));
        QCOMPARE(RKRelativePinAnchorPoint(QPointF(0.25, 0.75)).expanded(QSizeF(80, 40)), QPointF(20, 30));
        QCOMPARE(RKRelativePinAnchorPoint::center().expanded(QSizeF()), QPointF(-0.5, -0.5));
    }
};

QTEST_GUILESS_MAIN(TestRelativePinAnchor)
#include "test_relativepinanchor.moc"
