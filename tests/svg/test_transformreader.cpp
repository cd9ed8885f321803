#include "RKTestSupport.h"

#include <RKSVGTransformReader.h>

#include <QDomDocument>
#include <QSvgRenderer>

namespace {
// What Qt's own renderer makes of `list` on a group around a rectangle.
QTransform qtTransform(const QString& list)
{
    QString escaped = list.toHtmlEscaped();
    for (int code : { 9, 10, 13, 133, 160 })
        escaped.replace(QChar(code), QStringLiteral("&#%1;").arg(code));
    const QString svg = QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"10\">"
                                       "<g transform=\"%1\"><rect id=\"r\" width=\"1\" height=\"1\"/></g></svg>")
                            .arg(escaped);
    QSvgRenderer renderer(svg.toUtf8());
    return renderer.transformForElement(QStringLiteral("r"));
}

bool fuzzyEqual(const QTransform& a, const QTransform& b)
{
    const qreal left[] = { a.m11(), a.m12(), a.m21(), a.m22(), a.dx(), a.dy(), a.m13(), a.m23(), a.m33() };
    const qreal right[] = { b.m11(), b.m12(), b.m21(), b.m22(), b.dx(), b.dy(), b.m13(), b.m23(), b.m33() };
    for (int i = 0; i < 9; ++i) {
        if (qAbs(left[i] - right[i]) > 1e-9)
            return false;
    }
    return true;
}
}

class TestTransformReader : public QObject
{
    Q_OBJECT

private slots:
    void sameAsQtRenderer_data()
    {
        QTest::addColumn<QString>("list");
        const char* const lists[] = {
            "translate(10)", "translate(10,20)", "scale(2)", "scale(2 -3)", "rotate(90)", "rotate(30 10 20)", "skewX(30)",
            "skewY(-15)", "matrix(1 2 3 4 5 6)", "translate(1,2) scale(3) rotate(45)", "translate(1,2),scale(3)",
            "translate(1)scale(2)", "  translate( 1 , 2 )  ", "translate(-1.5e1,.5)", "translate(1.5.5)", "scale(1-2)",
            "translate(1E+2 -2e-1)", "",
        };
        for (const char* list : lists)
            QTest::newRow(list) << QString::fromLatin1(list);
        QTest::newRow("tab, line feed, return") << QStringLiteral("translate(1\t2)\nscale(3)\r,rotate(4)");
        QTest::newRow("codes 133 and 160") << QStringLiteral("rotate(45\u00a010\u008520)\u00a0scale(2)");
    }

    void sameAsQtRenderer()
    {
        QFETCH(QString, list);
        const QTransform ours = RKSVGTransformReader::parseTransformationMatrix(list);
        const QTransform qt = qtTransform(list);
        QVERIFY2(fuzzyEqual(ours, qt), qPrintable(QStringLiteral("ours %1 %2 %3 %4 %5 %6, Qt %7 %8 %9 %10 %11 %12")
                                                    .arg(ours.m11()).arg(ours.m12()).arg(ours.m21()).arg(ours.m22())
                                                    .arg(ours.dx()).arg(ours.dy()).arg(qt.m11()).arg(qt.m12())
                                                    .arg(qt.m21()).arg(qt.m22()).arg(qt.dx()).arg(qt.dy())));
    }

    // A list in error is ignored as a whole, also where Qt keeps the functions read before the error
    // (a list cut short: cutShortIsIdentity).
    void inError_data()
    {
        QTest::addColumn<QString>("list");
        const char* const lists[] = {
            "translate(1,)", "translate(,1)", "translate(1 2 3)", "rotate(1 2)", "scale()", "foo(1)", "Translate(1)",
            "translate(1) garbage", "translate(1),", ",translate(1)", "translate(1 ,, 2)", "translate(1e999)", "scale(1e200) scale(1e200)",
            "translate 1", "translate(1e)", "skewX(+)",
        };
        for (const char* list : lists)
            QTest::newRow(list) << QString::fromLatin1(list);
    }

    void inError()
    {
        QFETCH(QString, list);
        QVERIFY(RKSVGTransformReader::parseTransformationMatrix(list).isIdentity());
    }

    // Every proper prefix of a list ends in error, and reading it stops at the end of the text
    // (the prefixes are separate strings, so a sanitizer build sees any read beyond them).
    void cutShortIsIdentity()
    {
        const QString full = QStringLiteral("rotate(-12.5e0, 3 4)");
        QVERIFY(!RKSVGTransformReader::parseTransformationMatrix(full).isIdentity());
        for (int length = 1; length < full.size(); ++length) {
            const QString prefix = full.left(length);
            QVERIFY2(RKSVGTransformReader::parseTransformationMatrix(prefix).isIdentity(), qPrintable(prefix));
        }
    }

    void numbersArray_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected"); // the answer, the numbers read, where reading stopped

        QTest::newRow("commas and blanks") << " 1, 2 3)" << "ok [1 2 3] stop 7";
        QTest::newRow("signs separate") << "1-2+3" << "ok [1 -2 3] stop 5";
        QTest::newRow("exponent without digits") << "1e)" << "ok [1] stop 1";
        QTest::newRow("trailing comma") << "1, )" << "error [1] stop 3";
        QTest::newRow("nothing") << "  )" << "ok [] stop 2";
        QTest::newRow("end of text") << "4 " << "ok [4] stop 1";
    }

    void numbersArray()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);

        const QChar* position = text.constData();
        RKSVGTransformReader::Numbers read;
        const bool ok = RKSVGTransformReader::parseNumbersArray(position, text.constData() + text.size(), read);
        QStringList written;
        for (double value : read)
            written << QString::number(value);
        const QString answer = ok ? QStringLiteral("ok") : QStringLiteral("error");
        QCOMPARE(QStringLiteral("%1 [%2] stop %3").arg(answer, written.join(QLatin1Char(' '))).arg(position - text.constData()), expected);
    }

    void points()
    {
        QCOMPARE(RKSVGTransformReader::parseTransformationMatrix(QStringLiteral("rotate(90, 10, 10)")).map(QPointF(20, 10)),
            QPointF(10, 20));
        QDomDocument document;
        document.setContent(QStringLiteral("<svg transform=\"translate(0 5)\"><g transform=\"scale(2)\">"
                                           "<rect transform=\"translate(10,0)\"/></g></svg>"));
        const QDomElement rect = document.documentElement().firstChildElement().firstChildElement();
        QCOMPARE(RKSVGTransformReader::transformMatrix(rect).map(QPointF(0, 0)), QPointF(20, 5));
        QVERIFY(RKSVGTransformReader::transformMatrix(QDomElement()).isIdentity());
        // Each list is finite; their product is not.
        document.setContent(QStringLiteral("<g transform=\"scale(1e200)\"><rect transform=\"scale(1e200)\"/></g>"));
        QVERIFY(RKSVGTransformReader::transformMatrix(document.documentElement().firstChildElement()).isIdentity());
    }
};

QTEST_MAIN(TestTransformReader)
#include "test_transformreader.moc"
