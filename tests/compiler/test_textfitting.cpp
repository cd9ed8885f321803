// Fitted texts ("vako:fitblock" ...) are wrapped and shrunk by the compiler into the room
// the template gives them; texts that fit stay exactly as the template has them.
#include "RKTestSupport.h"

#include <RKSVGCompiler.h>
#include <RKXMLBuilder.h>

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QtTest>

namespace {
// One day cell: two name slots at baselines 40 and 46, lines up to 60 wide, the top line no higher than 20.
QString cell(const QString& first, const QString& second)
{
    const QString slot = QStringLiteral(
        "<text class=\"holiday\" x=\"2\" y=\"%1\" vako:cal=\"%2\" id=\"%2\" vako:fitblock=\"c\" vako:fitwidth=\"60\" "
        "vako:fittop=\"20\" vako:fitsize=\"4\" vako:fitfont=\"DejaVu Sans\">%3</text>");
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:vako=\"http://example.invalid/vako\">"
                          "<g>%1%2</g></svg>")
        .arg(slot.arg("40", "h0", first.toHtmlEscaped()), slot.arg("46", "h1", second.toHtmlEscaped()));
}

double width(const QString& text, double size)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(100);
    return QFontMetricsF(font).horizontalAdvance(text) * size / 100;
}
}

class TestTextFitting : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { isolateUserFiles(); }

    void fit_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<int>("minLines"); // lines drawn, at least
        QTest::addColumn<bool>("shrunk");
        QTest::addColumn<bool>("cut"); // ends in an ellipsis
        QTest::newRow("both fit: untouched") << "Neujahr" << "Ferien" << 0 << false << false;
        QTest::newRow("long name wraps at full size")
            << "Ευαγγελισμός της Θεοτόκου και Εθνική Επέτειος" << QString() << 2 << false << false;
        QTest::newRow("two names, the first wrapped")
            << "Dia de Portugal, de Camões e das Comunidades Portuguesas" << "Férias de verão" << 3 << false << false;
        QTest::newRow("one endless word is broken") << QString(60, QLatin1Char('W')) << QString() << 2 << false << false;
        QTest::newRow("too much: smaller, then cut")
            << QString("sehr lange Namen ").repeated(30) << QString("noch ein Name ").repeated(6) << 6 << true << true;
    }
    void fit()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(int, minLines);
        QFETCH(bool, shrunk);
        QFETCH(bool, cut);
        QDomDocument document;
        QVERIFY(document.setContent(cell(first, second)));
        const QString before = RKXMLBuilder::toString(document, 0); // canonical: QDom's attribute order varies
        RKSVGCompiler compiler;
        compiler.setDomDocument(document, false);
        compiler.addToDo(RKSVGCompiler::ToDoApplyInstructions);
        compiler.update();
        const QDomNodeList texts = document.elementsByTagName("text");
        if (minLines == 0) {
            QCOMPARE(RKXMLBuilder::toString(document, 0), before);
            return;
        }
        QStringList drawn;
        double lastY = 0;
        for (int n = 0; n < texts.size(); ++n) {
            const QDomElement line = texts.at(n).toElement();
            if (line.text().isEmpty())
                continue;
            const double y = line.attribute("y").toDouble();
            const QRegularExpressionMatch set = QRegularExpression("font-size:([0-9.]+)px").match(line.attribute("style"));
            const bool small = set.hasMatch();
            const double size = small ? set.captured(1).toDouble() : 4;
            QVERIFY(size >= 2.4 && size <= 4); // never below 60 %
            QVERIFY2(y >= 20 && y <= 46, qPrintable(line.text()));
            QVERIFY2(y > lastY, "lines go down the cell in order");
            QVERIFY2(width(line.text(), size) <= 60.5, qPrintable(line.text()));
            QCOMPARE(line.attribute("class"), QStringLiteral("holiday"));
            if (line.attribute("vako:cal").isEmpty())
                QVERIFY(!line.hasAttribute("id"));
            QCOMPARE(small, shrunk);
            lastY = y;
            drawn << line.text();
        }
        QCOMPARE(lastY, 46.0); // the last line sits on the block's lowest baseline
        QVERIFY(drawn.size() >= minLines);
        QCOMPARE(drawn.last().endsWith(QChar(0x2026)), cut);
        if (!cut) {
            // Every line but a name's first is an added element.
            QCOMPARE(texts.size() - 2, drawn.size() - (second.isEmpty() ? 1 : 2));
            const QString words = drawn.join(QLatin1Char(' ')).remove(QLatin1Char(' '));
            QCOMPARE(words, QString(first + second).remove(QLatin1Char(' ')));
        }
    }
};

QTEST_MAIN(TestTextFitting)
#include "test_textfitting.moc"
