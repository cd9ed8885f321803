// The command line as a whole: help and version, parse errors, the data directory,
// hidden diagnostics, and write errors on standard output.

#include "RKToolSupport.h"

#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

class TestRkcalendarCli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    void outcomes_data()
    {
        QTest::addColumn<QString>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("outText"); // empty: nothing on stdout
        QTest::addColumn<QString>("errText"); // empty: nothing on stderr
        QTest::newRow("no arguments") << "" << 2 << "" << "Usage: rkcalendar <command>";
        QTest::newRow("--help") << "--help" << 0 << "  holidays    marked days" << "";
        QTest::newRow("--version") << "--version" << 0 << "rkcalendar 0." << "";
        QTest::newRow("help on a command") << "help month" << 0 << "Usage: rkcalendar month [options] [YYYY-MM]" << "";
        QTest::newRow("a command's --help") << "month --help" << 0 << "  --color <when>" << "";
        QTest::newRow("help on nothing known") << "help moon" << 2 << "" << "rkcalendar help: unknown command \"moon\"";
        QTest::newRow("unknown command") << "calendar" << 2 << "" << "rkcalendar: unknown command \"calendar\"";
        QTest::newRow("repeated option") << "provinces --locale de_DE --locale fr_FR" << 2 << ""
                                         << "rkcalendar provinces: --locale given more than once";
        QTest::newRow("unknown option") << "locales --all" << 2 << "" << "rkcalendar locales: unknown option --all";
        QTest::newRow("diagnostics hidden") << "holidays --locale fr_FR --province C --year 2026 --features vacations"
                                            << 0 << "\tschool\t" << "";
        QTest::newRow("--verbose shows them") << "holidays --verbose --locale fr_FR --province C --year 2026 --features vacations"
                                              << 0 << "\tschool\t" << "days long";
        // Years the data does not fully cover are named on stderr; the days that are known still print.
        QTest::newRow("Easter rule year") << "holidays --locale de_DE --province BY --year 2049" << 0 << "\t"
                                          << "warning: Easter-based days in 2049 follow the data's Easter rule";
        QTest::newRow("before the dated days") << "holidays --locale de_DE --year 1990" << 0 << "\t"
                                               << "known only for 2000-2100; they are missing in 1990";
        QTest::newRow("Spain's yearly regional days") << "holidays --locale es_ES --province MD --year 2030" << 0 << "\t"
                                                      << "only for 2020-2026; they are missing in 2030";
        QTest::newRow("no moon phases") << "holidays --locale de_DE --year 1850 --features moonphases" << 0 << ""
                                        << "no moon phases known for 1850";
        QTest::newRow("covered year") << "holidays --locale de_DE --province BY --year 2026 --features "
                                         "holidays,vacations,moonphases" << 0 << "\t" << "";
    }
    void outcomes()
    {
        QFETCH(QString, args);
        QFETCH(int, exitCode);
        QFETCH(QString, outText);
        QFETCH(QString, errText);
        const RKToolResult result = runRkcalendar(commandWords(args));
        QCOMPARE(result.exitCode, exitCode);
        if (outText.isEmpty())
            QCOMPARE(result.out, QString());
        else
            QVERIFY2(result.out.contains(outText), qPrintable(result.out));
        if (errText.isEmpty())
            QCOMPARE(result.err, QString());
        else
            QVERIFY2(result.err.contains(errText), qPrintable(result.err));
    }

    void dataDirectoryMissingOrUnreadable_data()
    {
        QTest::addColumn<bool>("present");
        QTest::newRow("missing") << false;
        QTest::newRow("words file unreadable") << true;
    }
    void dataDirectoryMissingOrUnreadable()
    {
        QFETCH(bool, present);
        QTemporaryDir dir;
        QString dataDir = dir.filePath("nothing-here");
        if (present) {
            // A directory where the words file should be cannot be read, even by root.
            dataDir = dir.path();
            QVERIFY(QDir(dataDir).mkpath("international/CalendarLanguages.xml"));
        }
        QProcessEnvironment env;
        env.insert("RKXML_DATA_DIR", dataDir);
        const RKToolResult result = runRkcalendar({"locales"}, env);
        QCOMPARE(result.exitCode, 1);
        QCOMPARE(result.out, QString());
        QCOMPARE(result.err, QStringLiteral("rkcalendar locales: the data directory is missing or unreadable: looked for "
                                            "international/CalendarLanguages.xml in %1 (set RKXML_DATA_DIR)\n").arg(dataDir));
    }

    // A full disk, or a reader that has gone before the tool writes: a message and exit
    // code 1, not death by SIGPIPE.
    void writeErrorOnStandardOutput_data()
    {
        QTest::addColumn<bool>("closedPipe");
        QTest::newRow("full disk") << false;
        QTest::newRow("closed pipe") << true;
    }
    void writeErrorOnStandardOutput()
    {
        QFETCH(bool, closedPipe);
        int fds[2];
        QCOMPARE(pipe(fds), 0);
        ::close(fds[0]);
        const int outFd = closedPipe ? fds[1] : open("/dev/full", O_WRONLY);
        QVERIFY(outFd >= 0);
        QTemporaryDir dir;
        const QByteArray errPath = dir.filePath("err").toLocal8Bit();
        const pid_t child = fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            dup2(outFd, STDOUT_FILENO);
            const int errFd = open(errPath.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            dup2(errFd, STDERR_FILENO);
            execl(RKXML_RKCALENDAR_BINARY, "rkcalendar", "locales", static_cast<char*>(nullptr));
            _exit(127);
        }
        ::close(fds[1]);
        if (outFd != fds[1])
            ::close(outFd);
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QVERIFY2(WIFEXITED(status), "killed by a signal");
        QCOMPARE(WEXITSTATUS(status), 1);
        const QByteArray err = readTestFile(QString::fromLocal8Bit(errPath));
        QVERIFY2(err.startsWith("rkcalendar locales: cannot write to standard output"), err.constData());
    }
};

QTEST_GUILESS_MAIN(TestRkcalendarCli)
#include "test_rkcalendar_cli.moc"
