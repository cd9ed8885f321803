// The SVG commands of rkcalendar (normalize, cut), run as a separate process: output,
// files written, and the exit code and message of every kind of bad input.

#include "RKToolSupport.h"

#include <QDomDocument>

namespace {

const char* const CUT_SVG =
    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100\" height=\"100\">"
    "<g transform=\"translate(10 20)\"><rect id=\"a\" class=\"cut\" width=\"5\" height=\"4\"/></g>"
    "<circle id=\"b\" class=\"cut\" cx=\"50\" cy=\"50\" r=\"5\"/><rect id=\"b2\" class=\"cut\" width=\"1\" height=\"1\"/></svg>";

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

class TestRkcalendarSvg : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        QVERIFY(myDir.isValid());
        writeFile(path("cut.svg"), CUT_SVG);
        writeFile(path("dup.svg"), QByteArray(CUT_SVG).replace("id=\"b2\"", "id=\"a\""));
        writeFile(path("noid.svg"), QByteArray(CUT_SVG).replace("id=\"b2\" ", ""));
        writeFile(path("badid.svg"), QByteArray(CUT_SVG).replace("id=\"b2\"", "id=\"../x\""));
        writeFile(path("html.xml"), "<html><body/></html>");
        writeFile(path("broken.svg"), "<svg><g></svg>");
        writeFile(path("clip.svg"),
            "<svg><!--c--><g transform=\"scale(2)\"><g vako:layertype=\"render\"><rect width=\"1\" height=\"1\"/></g></g>"
            "<vako:logo width=\"10\" height=\"10\"/></svg>");
        writeFile(path("logo.svg"), "<svg width=\"5\" height=\"5\"><circle r=\"2\"/></svg>");
        writeFile(path("afile"), "x");
        writeFile(path("deep.svg"), "<svg>" + QByteArray("<g>").repeated(40000) + QByteArray("</g>").repeated(40000) + "</svg>");
    }

    void badInput_data()
    {
        QTest::addColumn<QString>("commandLine"); // %1 is the fixture directory
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");

        QTest::newRow("not XML") << "normalize %1/broken.svg -o %1/out/n.svg" << 2 << "is not XML (line 1";
        QTest::newRow("not SVG") << "normalize %1/html.xml -o %1/out/n.svg" << 2 << "is not an SVG document (its root element is \"html\"";
        QTest::newRow("logo not SVG") << "normalize %1/clip.svg --logo %1/html.xml -o %1/out/n.svg" << 2 << "html.xml\" is not an SVG";
        QTest::newRow("missing file") << "normalize %1/missing.svg" << 1 << "cannot read";
        QTest::newRow("directory as input") << "normalize %1 -o %1/out/n.svg" << 1 << "not a file";
        QTest::newRow("unwritable output") << "normalize %1/clip.svg -o %1/afile/n.svg" << 1 << "cannot write";
        QTest::newRow("nested too deep") << "normalize %1/deep.svg -o %1/out/n.svg" << 2 << "more than 5000 levels deep";
        QTest::newRow("no input") << "normalize" << 2 << "";
        QTest::newRow("cut without value") << "cut %1/cut.svg --out-dir %1/out" << 2 << "--value is required";
        QTest::newRow("cut not SVG") << "cut %1/html.xml --value cut --out-dir %1/out" << 2 << "is not an SVG";
        QTest::newRow("duplicate ids") << "cut %1/dup.svg --value cut --out-dir %1/out" << 2 << "used by 2 marked elements; nothing written";
        QTest::newRow("mark without id") << "cut %1/noid.svg --value cut --out-dir %1/out" << 2 << "has no \"id\"";
        QTest::newRow("id not a file name") << "cut %1/badid.svg --value cut --out-dir %1/out" << 2 << "cannot name a file";
        QTest::newRow("out-dir is a file") << "cut %1/cut.svg --value cut --out-dir %1/afile" << 1 << "is not a directory";
    }

    // Nothing is written on failure: the output directory stays empty.
    void badInput()
    {
        QFETCH(QString, commandLine);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        QDir(path("out")).removeRecursively();
        QVERIFY(QDir().mkpath(path("out")));
        const RKToolResult result = runRkcalendar(commandWords(commandLine.arg(myDir.path())));
        QCOMPARE(result.exitCode, exitCode);
        QVERIFY2(result.err.contains(message), qPrintable(result.err));
        QVERIFY(result.err.isEmpty() || result.err.startsWith(commandLine.section(' ', 0, 0) == "cut" ? "rkcalendar cut:" : "rkcalendar normalize:"));
        QCOMPARE(QDir(path("out")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
    }

    void normalizeWritesCanonically()
    {
        const RKToolResult toFile = runRkcalendar({ "normalize", path("clip.svg"), "--logo", path("logo.svg"), "--fill", "-o", path("n.svg") });
        QCOMPARE(toFile.exitCode, 0);
        const RKToolResult toStdout = runRkcalendar({ "normalize", path("clip.svg"), "--logo", path("logo.svg"), "--fill" });
        QCOMPARE(toStdout.exitCode, 0);
        QFile file(path("n.svg"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(file.readAll()), toStdout.out);
        QVERIFY(toStdout.out.contains("<g transform=\"scale(2)\" vako:layertype=\"render\">"));
        QVERIFY(toStdout.out.contains("<rect fill=\"#000000\" height=\"1\" width=\"1\"/>"));
        QVERIFY(toStdout.out.contains("class=\"logo_foreground\""));
        QVERIFY(!toStdout.out.contains("<!--"));
    }

    void cutWritesFilesAndIndex()
    {
        QDir(path("pieces")).removeRecursively();
        const RKToolResult result = runRkcalendar({ "cut", path("cut.svg"), "--attribute", "class", "--value", "cut", "--out-dir", path("pieces") });
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.lines(), QStringList({ "a\t0\t0\t5\t4\t1\t0\t0\t1\t10\t20", "b\t45\t45\t10\t10\t1\t0\t0\t1\t0\t0",
                                     "b2\t0\t0\t1\t1\t1\t0\t0\t1\t0\t0" }));
        QCOMPARE(QDir(path("pieces")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList({ "a.svg", "b.svg", "b2.svg" }));
        QFile piece(path("pieces/b.svg"));
        QVERIFY(piece.open(QIODevice::ReadOnly));
        QDomDocument document;
        QVERIFY(document.setContent(&piece));
        QCOMPARE(document.documentElement().attribute("viewBox"), QStringLiteral("45 45 10 10"));
        QCOMPARE(document.documentElement().firstChildElement().attribute("id"), QStringLiteral("b"));
    }

private:
    QString path(const QString& name) const { return myDir.filePath(name); }
    QTemporaryDir myDir;
};

QTEST_MAIN(TestRkcalendarSvg)
#include "test_rkcalendar_svg.moc"
