// "rkcalendar compile" and "rkcalendar templates" run as a separate process with the
// shipped data: exit codes of bad input and of unwritable output, and no file left behind.
// The golden page is the one of tests/templates/test_templates.

#include "RKTestSupport.h"

#include <QProcess>
#include <QTemporaryDir>

namespace {

struct Result {
    int exitCode = -1;
    QByteArray out;
    QString err;
};

Result runTool(const QStringList& args)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("RKXML_RESOURCE_PATH", QString());
    env.insert("RKXML_DATA_DIR", shippedDataPath(QString()));
    env.insert("RKXML_WRITABLE_DIR", QString::fromLocal8Bit(qgetenv("RKXML_WRITABLE_DIR")));
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(RKXML_RKCALENDAR_BINARY), args);
    Result result;
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return result;
    result.exitCode = process.exitCode();
    result.out = process.readAllStandardOutput();
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

const QStringList MARCH = {"compile", "--template", "wall-month", "--month", "2024-03", "--locale", "de_DE", "--province", "BY"};

} // namespace

class TestRkcalendarCompile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        QVERIFY(QFileInfo::exists(QStringLiteral(RKXML_RKCALENDAR_BINARY)));
    }

    void listsTemplates()
    {
        const Result result = runTool({"templates"});
        QCOMPARE(result.exitCode, 0);
        const QStringList lines = QString::fromUtf8(result.out).split('\n', Qt::SkipEmptyParts);
        QStringList names;
        for (const QString& line : lines) {
            names << line.section('\t', 0, 0);
            QVERIFY2(!line.section('\t', 1).trimmed().isEmpty(), qPrintable("no description: " + line));
        }
        QCOMPARE(names, (QStringList{"planner-month", "wall-cover", "wall-month", "year-overview"}));
    }

    void badInput_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("message");
        auto with = [](int index, const QString& value) {
            QStringList args = MARCH;
            args[index] = value;
            return args;
        };
        QTest::newRow("unknown template") << with(2, "poster") << "unknown template \"poster\" (valid: planner-month, ";
        QTest::newRow("path as template") << with(2, "../templates/wall-month") << "unknown template";
        QTest::newRow("month 13") << with(4, "2024-13") << "\"2024-13\" is not a month";
        QTest::newRow("month text") << with(4, "March") << "is not a month";
        QTest::newRow("unknown locale") << with(6, "xx_YY") << "unknown locale \"xx_YY\"";
        QTest::newRow("unknown province") << with(8, "ZZ") << "unknown province \"ZZ\"";
        QTest::newRow("unknown style") << MARCH + QStringList{"--style", "Purple"}
                                       << "unknown style \"Purple\" for template wall-month (valid: Blue, Green, Standard)";
        QTest::newRow("no month") << QStringList(MARCH.mid(0, 3) + MARCH.mid(5)) << "--month is required";
        QTest::newRow("unknown feature") << MARCH + QStringList{"--features", "holidays,zodiac"} << "zodiac";
    }

    void badInput()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, message);
        QTemporaryDir dir;
        const Result result = runTool(args + QStringList{"-o", dir.filePath("page.svg")});
        QCOMPARE(result.exitCode, 2);
        QVERIFY2(result.err.startsWith("rkcalendar compile: ") && result.err.contains(message), qPrintable(result.err));
        QVERIFY(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).isEmpty());
    }

    // The file holds what standard output gets; another style changes only the colours.
    void writesFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("page.svg");
        QCOMPARE(runTool(MARCH + QStringList{"-o", path}).exitCode, 0);
        const Result stdoutResult = runTool(MARCH);
        QCOMPARE(stdoutResult.exitCode, 0);
        auto contents = [&path] {
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        QCOMPARE(contents(), stdoutResult.out);
        // The same page as the library's golden file.
        QFile golden(testDataPath("templates/golden/wall-month-de_DE-BY-2024-03.svg"));
        QVERIFY(golden.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(stdoutResult.out).replace(QDir::cleanPath(shippedDataPath(QString())), "@DATA@"),
            QString::fromUtf8(golden.readAll()));
        QVERIFY(stdoutResult.out.contains("id=\"Day_2024-03-31\""));
        QVERIFY(stdoutResult.out.contains("#c0392b"));

        QCOMPARE(runTool(MARCH + QStringList{"--style", "blue", "-o", path}).exitCode, 0);
        const QByteArray blue = contents();
        QVERIFY(blue.contains("#1f4e9c"));
        QVERIFY(!blue.contains("#c0392b"));
        // Replaced in place: no backup or temporary file beside it.
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"page.svg"});
    }

    void unwritableOutput_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("missing directory") << "missing/page.svg";
        QTest::newRow("a directory") << "existing";
    }

    void unwritableOutput()
    {
        QFETCH(QString, target);
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir("existing"));
        const Result result = runTool(MARCH + QStringList{"-o", dir.filePath(target)});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.startsWith("rkcalendar compile: cannot write"), qPrintable(result.err));
        QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList{"existing"});
        QVERIFY(QDir(dir.filePath("existing")).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestRkcalendarCompile)
#include "test_rkcalendar_compile.moc"
