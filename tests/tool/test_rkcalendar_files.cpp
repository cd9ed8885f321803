// The commands of rkcalendar that write files, run as a separate process with the shipped
// data: "compile" (an SVG page: the golden page of tests/templates/test_templates) and the
// "templates" it takes, "render" (page count and sizes of PDF files read back with pdfinfo,
// a PNG page against a reference picture), "normalize" and "cut" (SVG files); and the exit
// code and message of every kind of bad input and unwritable output, which leave no file behind.

#include "RKToolSupport.h"
#include "RKImageSupport.h"

#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

const QString MARCH = QStringLiteral("--template wall-month --month 2024-03 --locale de_DE --province BY");

const char* const CUT_SVG =
    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100\" height=\"100\">"
    "<g transform=\"translate(10 20)\"><rect id=\"a\" class=\"cut\" width=\"5\" height=\"4\"/></g>"
    "<circle id=\"b\" class=\"cut\" cx=\"50\" cy=\"50\" r=\"5\"/><rect id=\"b2\" class=\"cut\" width=\"1\" height=\"1\"/></svg>";

QStringList entries(const QString& directory)
{
    return QDir(directory).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

// Page sizes in whole points, "595x842", as pdfinfo reads them.
QStringList pdfPageSizes(const QString& path)
{
    QProcess process;
    process.start(QStringLiteral("pdfinfo"), {"-f", "1", "-l", "999", path});
    process.waitForFinished(60000);
    QStringList sizes;
    static const QRegularExpression pageSize(QStringLiteral("^Page\\s+\\d+ size:\\s+([\\d.]+) x ([\\d.]+) pts"),
        QRegularExpression::MultilineOption);
    for (auto it = pageSize.globalMatch(QString::fromUtf8(process.readAllStandardOutput())); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        sizes << QStringLiteral("%1x%2").arg(qRound(match.captured(1).toDouble())).arg(qRound(match.captured(2).toDouble()));
    }
    return sizes;
}

} // namespace

class TestRkcalendarFiles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        QVERIFY(myInputs.isValid());
        writeTestFile(input("cut.svg"), CUT_SVG);
        writeTestFile(input("dup.svg"), QByteArray(CUT_SVG).replace("id=\"b2\"", "id=\"a\""));
        writeTestFile(input("noid.svg"), QByteArray(CUT_SVG).replace("id=\"b2\" ", ""));
        writeTestFile(input("badid.svg"), QByteArray(CUT_SVG).replace("id=\"b2\"", "id=\"../x\""));
        writeTestFile(input("html.xml"), "<html><body/></html>");
        writeTestFile(input("broken.svg"), "<svg><g></svg>");
        writeTestFile(input("clip.svg"),
            "<svg><!--c--><g transform=\"scale(2)\"><g vako:layertype=\"render\"><rect width=\"1\" height=\"1\"/></g></g>"
            "<vako:logo width=\"10\" height=\"10\"/></svg>");
        writeTestFile(input("logo.svg"), "<svg width=\"5\" height=\"5\"><circle r=\"2\"/></svg>");
        writeTestFile(input("afile"), "x");
        writeTestFile(input("deep.svg"), "<svg>" + QByteArray("<g>").repeated(40000) + QByteArray("</g>").repeated(40000) + "</svg>");
    }

    void listsTemplates()
    {
        const RKToolResult result = runRkcalendar({"templates"});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out, QStringLiteral(
            "planner-month\tPlanner month page (A4 portrait): one line per day with weekday, holidays, week numbers and room to write\n"
            "wall-cover\tWall calendar cover page (A4 portrait): picture, the calendar's year or years, months\n"
            "wall-month\tWall calendar month page (A4 portrait): picture, month grid with week numbers, holidays, moon phases and "
            "school vacations\n"
            "year-overview\tYear overview (A4 landscape): twelve month grids with week numbers and holidays\n"));
    }

    // The file holds what standard output gets, the library's golden page (red, #c0392b);
    // another style changes only the colours.
    void compileWritesFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("page.svg");
        QCOMPARE(runRkcalendar(commandWords("compile " + MARCH + " -o " + path)).exitCode, 0);
        const RKToolResult toStdout = runRkcalendar(commandWords("compile " + MARCH));
        QCOMPARE(toStdout.exitCode, 0);
        QCOMPARE(readTestFile(path), toStdout.out.toUtf8());
        QCOMPARE(QString(toStdout.out).replace(QDir::cleanPath(shippedDataPath(QString())), "@DATA@"),
            QString::fromUtf8(readTestFile(testDataPath("templates/golden/wall-month-de_DE-BY-2024-03.svg"))));

        QCOMPARE(runRkcalendar(commandWords("compile " + MARCH + " --style blue -o " + path)).exitCode, 0);
        const QByteArray blue = readTestFile(path);
        QVERIFY(blue.contains("#1f4e9c"));
        QVERIFY(!blue.contains("#c0392b"));
        // Replaced in place: no backup or temporary file beside it.
        QCOMPARE(entries(dir.path()), QStringList{"page.svg"});
    }

    void pdfPages_data()
    {
        QTest::addColumn<QString>("pages");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("size");
        QTest::newRow("year") << QStringLiteral("--year 2027") << 13 << QStringLiteral("595x842");
        // 3 mm bleed on each side: 2 x 8.5 points more.
        QTest::newRow("bleed") << QStringLiteral("--month 2027-03 --bleed 3") << 1 << QStringLiteral("612x859");
        QTest::newRow("Letter") << QStringLiteral("--month 2027-03 --paper Letter") << 1 << QStringLiteral("612x792");
    }
    void pdfPages()
    {
        QFETCH(QString, pages);
        QFETCH(int, count);
        QFETCH(QString, size);
        if (QStandardPaths::findExecutable(QStringLiteral("pdfinfo")).isEmpty())
            QSKIP("pdfinfo (poppler-utils) is not installed");
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("cal.pdf"));
        const RKToolResult result = runRkcalendar(
            commandWords(QStringLiteral("render --locale de_DE --province BY --quiet -o ") + path + QLatin1Char(' ') + pages));
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.lines(), QStringList{path});
        QCOMPARE(pdfPageSizes(path), QVector<QString>(count, size).toList());
    }

    void renderMonthPng()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("march.png"));
        const RKToolResult result = runRkcalendar(commandWords(
            QStringLiteral("render --month 2024-03 --locale de_DE --province BY --dpi 50 -o ") + path));
        QCOMPARE(result.exitCode, 0);
        const QString page = dir.filePath(QStringLiteral("march-01.png"));
        QCOMPARE(result.lines(), QStringList{page});
        const QImage rendered(page);
        const QImage reference(testDataPath(QStringLiteral("render/wall-month-de_DE-BY-2024-03.png")));
        QVERIFY(!reference.isNull());
        QCOMPARE(rendered.size(), reference.size());
        const double difference = meanDifference(rendered, reference);
        if (qEnvironmentVariableIsSet("RKXML_KEEP_RENDERED"))
            rendered.save(QStringLiteral("render-march-2024.png"));
        QVERIFY2(difference <= 0.01, qPrintable(QString::number(difference)));
    }

    void normalizeWritesCanonically()
    {
        QTemporaryDir dir;
        const QStringList args = {"normalize", input("clip.svg"), "--logo", input("logo.svg"), "--fill"};
        QCOMPARE(runRkcalendar(args + QStringList{"-o", dir.filePath("n.svg")}).exitCode, 0);
        const RKToolResult toStdout = runRkcalendar(args);
        QCOMPARE(toStdout.exitCode, 0);
        QCOMPARE(readTestFile(dir.filePath("n.svg")), toStdout.out.toUtf8());
        QCOMPARE(toStdout.out.toUtf8(), readTestFile(testDataPath("tool/golden/normalize-clip.svg")));
    }

    void cutWritesFilesAndIndex()
    {
        QTemporaryDir dir;
        const RKToolResult result = runRkcalendar({"cut", input("cut.svg"), "--attribute", "class", "--value", "cut", "--out-dir", dir.path()});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.lines(), QStringList({"a\t0\t0\t5\t4\t1\t0\t0\t1\t10\t20", "b\t45\t45\t10\t10\t1\t0\t0\t1\t0\t0",
                                     "b2\t0\t0\t1\t1\t1\t0\t0\t1\t0\t0"}));
        QCOMPARE(entries(dir.path()), QStringList({"a.svg", "b.svg", "b2.svg"}));
        QCOMPARE(readTestFile(dir.filePath("b.svg")),
            QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg height=\"10\" viewBox=\"45 45 10 10\" width=\"10\" "
                       "xmlns=\"http://www.w3.org/2000/svg\">\n    <circle class=\"cut\" cx=\"50\" cy=\"50\" id=\"b\" r=\"5\"/>\n"
                       "</svg>\n"));
    }

    // Nothing is written on failure: the output directory keeps only its empty "existing",
    // and the inputs stay as they were.
    void errors_data()
    {
        QTest::addColumn<QString>("commandLine"); // %1: the inputs, with "afile" a regular file; %2: the output directory
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        // The valid page of `command` with `from` replaced by `to`, or with `to` added when `from` is empty.
        const auto with = [](const QString& command, const QString& from, const QString& to) {
            QString line = command + ' ' + MARCH + (command == "compile" ? " -o %2/page.svg" : " -o %2/out.pdf");
            return from.isEmpty() ? line + ' ' + to : line.replace(from, to);
        };
        const int usage = 2;
        QTest::newRow("compile: unknown template") << with("compile", "wall-month", "poster") << usage
                                                   << "unknown template \"poster\" (valid: planner-month, ";
        QTest::newRow("compile: path as template") << with("compile", "wall-month", "../templates/wall-month") << usage
                                                   << "unknown template";
        QTest::newRow("compile: month text") << with("compile", "2024-03", "March") << usage << "is not a month";
        QTest::newRow("compile: unknown locale") << with("compile", "de_DE", "xx_YY") << usage << "unknown locale \"xx_YY\"";
        QTest::newRow("compile: unknown province") << with("compile", "BY", "ZZ") << usage << "unknown province \"ZZ\"";
        QTest::newRow("compile: unknown style") << with("compile", "", "--style Purple") << usage
                                                << "unknown style \"Purple\" for template wall-month (valid: Blue, Green, Standard)";
        QTest::newRow("compile: no month") << with("compile", "--month 2024-03 ", "") << usage << "--month is required";
        QTest::newRow("compile: unknown feature") << with("compile", "", "--features holidays,zodiac") << usage << "zodiac";
        QTest::newRow("compile: missing directory") << with("compile", "%2/page.svg", "%2/missing/page.svg") << 1
                                                    << "cannot write";
        QTest::newRow("compile: a directory") << with("compile", "%2/page.svg", "%2/existing") << 1 << "cannot write";
        QTest::newRow("render: template") << with("render", "wall-month", "wall-day") << usage << "valid: planner-month";
        QTest::newRow("render: locale") << with("render", "de_DE", "xx_XX") << usage << "unknown locale";
        QTest::newRow("render: province") << with("render", "--province BY", "--province ZZ") << usage << "BY";
        QTest::newRow("render: style") << with("render", "", "--style Purple") << usage << "Blue, Green, Standard";
        QTest::newRow("render: feature") << with("render", "", "--features holidays,tides") << usage << "tides";
        QTest::newRow("render: colour") << with("render", "", "--color #c0392b") << usage << "SOURCE=TARGET";
        QTest::newRow("render: month") << with("render", "2024-03", "2027-13") << usage << "2027-13";
        QTest::newRow("render: year") << with("render", "--month 2024-03", "--year 1200") << usage << "1583";
        QTest::newRow("render: paper") << with("render", "", "--paper B5") << usage << "A4, A3, Letter, Tabloid";
        QTest::newRow("render: format") << with("render", "", "--format tiff") << usage << "pdf, png, svg";
        QTest::newRow("render: bleed") << with("render", "", "--bleed -1") << usage << "--bleed";
        // A directory that cannot exist: its parent is a regular file.
        QTest::newRow("render: unwritable") << with("render", "%2/out.pdf", "%1/afile/sub/out.pdf") << 1 << "cannot write";
        QTest::newRow("render: unwritable png") << with("render", "%2/out.pdf", "%1/afile/sub/out.png") << 1
                                                << "cannot write";
        QTest::newRow("normalize: not XML") << "normalize %1/broken.svg -o %2/n.svg" << usage << "is not XML (line 1";
        QTest::newRow("normalize: not SVG") << "normalize %1/html.xml -o %2/n.svg" << usage
                                            << "is not an SVG document (its root element is \"html\"";
        QTest::newRow("normalize: logo not SVG") << "normalize %1/clip.svg --logo %1/html.xml -o %2/n.svg" << usage
                                                 << "html.xml\" is not an SVG";
        QTest::newRow("normalize: missing file") << "normalize %1/missing.svg" << 1 << "cannot read";
        QTest::newRow("normalize: directory as input") << "normalize %1 -o %2/n.svg" << 1 << "not a file";
        QTest::newRow("normalize: unwritable output") << "normalize %1/clip.svg -o %1/afile/n.svg" << 1 << "cannot write";
        QTest::newRow("normalize: nested too deep") << "normalize %1/deep.svg -o %2/n.svg" << usage << "more than 5000 levels deep";
        QTest::newRow("normalize: no input") << "normalize" << usage << "";
        QTest::newRow("cut: without value") << "cut %1/cut.svg --out-dir %2/existing" << usage << "--value is required";
        QTest::newRow("cut: not SVG") << "cut %1/html.xml --value cut --out-dir %2/existing" << usage << "is not an SVG";
        QTest::newRow("cut: duplicate ids") << "cut %1/dup.svg --value cut --out-dir %2/existing" << usage
                                            << "used by 2 marked elements; nothing written";
        QTest::newRow("cut: mark without id") << "cut %1/noid.svg --value cut --out-dir %2/existing" << usage << "has no \"id\"";
        QTest::newRow("cut: id not a file name") << "cut %1/badid.svg --value cut --out-dir %2/existing" << usage << "cannot name a file";
        QTest::newRow("cut: out-dir is a file") << "cut %1/cut.svg --value cut --out-dir %1/afile" << 1 << "is not a directory";
    }
    void errors()
    {
        QFETCH(QString, commandLine);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        const QStringList inputs = entries(myInputs.path());
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("existing")));
        commandLine.replace("%1", myInputs.path()).replace("%2", dir.path());
        const RKToolResult result = runRkcalendar(commandWords(commandLine), {}, dir.path());
        QCOMPARE(result.exitCode, exitCode);
        QVERIFY2(result.err.startsWith("rkcalendar " + commandLine.section(' ', 0, 0) + ": "), qPrintable(result.err));
        QVERIFY2(result.err.contains(message), qPrintable(result.err));
        QCOMPARE(entries(dir.path()), QStringList{"existing"});
        QVERIFY(QDir(dir.filePath(QStringLiteral("existing"))).isEmpty());
        QCOMPARE(entries(myInputs.path()), inputs);
    }

private:
    QString input(const QString& name) const { return myInputs.filePath(name); }
    QTemporaryDir myInputs;
};

QTEST_MAIN(TestRkcalendarFiles)
#include "test_rkcalendar_files.moc"
