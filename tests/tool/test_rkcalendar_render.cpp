// rkcalendar render: page count and sizes of a year PDF read back with Poppler, a month
// page against a reference picture, and error paths that leave no file behind.

#include "RKToolSupport.h"
#include "RKImageSupport.h"

#include <QDir>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

// Page sizes in whole points, "595x842", as pdfinfo reads them.
QStringList pdfPageSizes(const QString& path)
{
    QProcess process;
    process.start(QStringLiteral("pdfinfo"), {QStringLiteral("-f"), QStringLiteral("1"), QStringLiteral("-l"),
                                                 QStringLiteral("999"), path});
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

class TestRkcalendarRender : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        if (QStandardPaths::findExecutable(QStringLiteral("pdfinfo")).isEmpty())
            QSKIP("pdfinfo (poppler-utils) is not installed");
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
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("cal.pdf"));
        const RKToolResult result = runRkcalendar(
            commandWords(QStringLiteral("render --locale de_DE --province BY --quiet -o ") + path + QLatin1Char(' ') + pages));
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.lines(), QStringList{path});
        QCOMPARE(pdfPageSizes(path), QVector<QString>(count, size).toList());
    }

    void monthPng()
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

    void errors_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        const int usage = 2;
        QTest::newRow("template") << QStringLiteral("--template wall-day") << usage << QStringLiteral("valid: planner-month");
        QTest::newRow("locale") << QStringLiteral("--locale xx_XX") << usage << QStringLiteral("unknown locale");
        QTest::newRow("province") << QStringLiteral("--province ZZ") << usage << QStringLiteral("BY");
        QTest::newRow("style") << QStringLiteral("--style Purple") << usage << QStringLiteral("Blue, Green, Standard");
        QTest::newRow("feature") << QStringLiteral("--features holidays,tides") << usage << QStringLiteral("tides");
        QTest::newRow("colour") << QStringLiteral("--color #c0392b") << usage << QStringLiteral("SOURCE=TARGET");
        QTest::newRow("month") << QStringLiteral("--month 2027-13") << usage << QStringLiteral("2027-13");
        QTest::newRow("year") << QStringLiteral("--year 1200") << usage << QStringLiteral("1583");
        QTest::newRow("paper") << QStringLiteral("--paper B5") << usage << QStringLiteral("A4, A3, Letter, Tabloid");
        QTest::newRow("format") << QStringLiteral("--format tiff") << usage << QStringLiteral("pdf, png, svg");
        QTest::newRow("bleed") << QStringLiteral("--bleed -1") << usage << QStringLiteral("--bleed");
        // A directory that cannot exist: its parent is a regular file.
        QTest::newRow("unwritable") << QStringLiteral("-o FILE/sub/out.pdf") << 1 << QStringLiteral("cannot write");
        QTest::newRow("unwritable png") << QStringLiteral("-o FILE/sub/out.png") << 1 << QStringLiteral("cannot write");
    }

    void errors()
    {
        QFETCH(QString, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        QTemporaryDir dir;
        const QString blocker = dir.filePath(QStringLiteral("FILE"));
        QFile file(blocker);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        QStringList args = commandWords(QStringLiteral("render --quiet ") + arguments.replace(QStringLiteral("FILE"), blocker));
        // A valid one-page run apart from the row's option.
        const QStringList defaults = commandWords(
            QStringLiteral("--month 2027-01 --locale de_DE --province BY -o ") + dir.filePath(QStringLiteral("out.pdf")));
        for (int i = 0; i < defaults.size(); i += 2) {
            const bool monthOrYear = defaults.at(i) == QLatin1String("--month") && args.contains(QStringLiteral("--year"));
            if (!args.contains(defaults.at(i)) && !monthOrYear)
                args << defaults.at(i) << defaults.at(i + 1);
        }
        const RKToolResult result = runRkcalendar(args, {}, dir.path());
        QCOMPARE(result.exitCode, exitCode);
        QVERIFY2(result.err.startsWith(QStringLiteral("rkcalendar render: ")), qPrintable(result.err));
        QVERIFY2(result.err.contains(message), qPrintable(result.err));
        QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), QStringList{"FILE"});
    }
};

QTEST_MAIN(TestRkcalendarRender)
#include "test_rkcalendar_render.moc"
