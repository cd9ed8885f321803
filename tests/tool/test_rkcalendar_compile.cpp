// "rkcalendar compile" and "rkcalendar templates" run as a separate process with the
// shipped data: exit codes of bad input and of unwritable output, and no file left behind.
// The golden page is the one of tests/templates/test_templates.

#include "RKToolSupport.h"

#include <QTemporaryDir>

namespace {

const QStringList MARCH = {"compile", "--template", "wall-month", "--month", "2024-03", "--locale", "de_DE", "--province", "BY"};

QStringList entries(const QString& directory)
{
    return QDir(directory).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

} // namespace

class TestRkcalendarCompile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    void listsTemplates()
    {
        const RKToolResult result = runRkcalendar({"templates"});
        QCOMPARE(result.exitCode, 0);
        QStringList names;
        for (const QString& line : result.lines()) {
            names << line.section('\t', 0, 0);
            QVERIFY2(!line.section('\t', 1).trimmed().isEmpty(), qPrintable("no description: " + line));
        }
        QCOMPARE(names, (QStringList{"planner-month", "wall-cover", "wall-month", "year-overview"}));
    }

    // Nothing is written on failure: the directory keeps only its empty subdirectory.
    void errors_data()
    {
        QTest::addColumn<QStringList>("args"); // %1 is the output directory
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        const QStringList march = MARCH + QStringList{"-o", "%1/page.svg"};
        auto with = [&march](int index, const QString& value) {
            QStringList args = march;
            args[index] = value;
            return args;
        };
        QTest::newRow("unknown template") << with(2, "poster") << 2 << "unknown template \"poster\" (valid: planner-month, ";
        QTest::newRow("path as template") << with(2, "../templates/wall-month") << 2 << "unknown template";
        QTest::newRow("month 13") << with(4, "2024-13") << 2 << "\"2024-13\" is not a month";
        QTest::newRow("month text") << with(4, "March") << 2 << "is not a month";
        QTest::newRow("unknown locale") << with(6, "xx_YY") << 2 << "unknown locale \"xx_YY\"";
        QTest::newRow("unknown province") << with(8, "ZZ") << 2 << "unknown province \"ZZ\"";
        QTest::newRow("unknown style") << march + QStringList{"--style", "Purple"} << 2
                                       << "unknown style \"Purple\" for template wall-month (valid: Blue, Green, Standard)";
        QTest::newRow("no month") << QStringList(march.mid(0, 3) + march.mid(5)) << 2 << "--month is required";
        QTest::newRow("unknown feature") << march + QStringList{"--features", "holidays,zodiac"} << 2 << "zodiac";
        QTest::newRow("missing directory") << with(10, "%1/missing/page.svg") << 1 << "cannot write";
        QTest::newRow("a directory") << with(10, "%1/existing") << 1 << "cannot write";
    }
    void errors()
    {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir("existing"));
        const RKToolResult result = runRkcalendar(args.replaceInStrings("%1", dir.path()));
        QCOMPARE(result.exitCode, exitCode);
        QVERIFY2(result.err.startsWith("rkcalendar compile: "), qPrintable(result.err));
        QVERIFY2(result.err.contains(message), qPrintable(result.err));
        QCOMPARE(entries(dir.path()), QStringList{"existing"});
        QVERIFY(QDir(dir.filePath("existing")).isEmpty());
    }

    // The file holds what standard output gets, the library's golden page; another style
    // changes only the colours.
    void writesFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("page.svg");
        auto contents = [&path] {
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        };
        QCOMPARE(runRkcalendar(MARCH + QStringList{"-o", path}).exitCode, 0);
        const RKToolResult toStdout = runRkcalendar(MARCH);
        QCOMPARE(toStdout.exitCode, 0);
        QCOMPARE(contents(), toStdout.out);
        QFile golden(testDataPath("templates/golden/wall-month-de_DE-BY-2024-03.svg"));
        QVERIFY(golden.open(QIODevice::ReadOnly));
        QCOMPARE(QString(toStdout.out).replace(QDir::cleanPath(shippedDataPath(QString())), "@DATA@"),
            QString::fromUtf8(golden.readAll()));

        QCOMPARE(runRkcalendar(MARCH + QStringList{"--style", "blue", "-o", path}).exitCode, 0);
        const QString blue = contents();
        QVERIFY(toStdout.out.contains("#c0392b"));
        QVERIFY(blue.contains("#1f4e9c"));
        QVERIFY(!blue.contains("#c0392b"));
        // Replaced in place: no backup or temporary file beside it.
        QCOMPARE(entries(dir.path()), QStringList{"page.svg"});
    }
};

QTEST_GUILESS_MAIN(TestRkcalendarCompile)
#include "test_rkcalendar_compile.moc"
