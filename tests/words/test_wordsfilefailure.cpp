#include "RKTestSupport.h"

#include <RKCalendarDayNames.h>
#include <RKCalendarWordsRegistry.h>

#include <QProcess>

namespace {

int warnings = 0;
QtMessageHandler forwardTo = nullptr;

// Counts warnings and hands every message on to QtTest, so ignoreMessage still applies.
void countingHandler(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg)
        ++warnings;
    forwardTo(type, context, message);
}

}

// Runs in a child process over one broken data directory: the registry reads its files only once per process.
class WordsFileFailureChild : public QObject
{
    Q_OBJECT

private slots:
    void brokenFileLeavesNoWords()
    {
        isolateUserFiles();
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(qEnvironmentVariable("WORDS_FAILURE_WARNING")));
        forwardTo = qInstallMessageHandler(countingHandler);
        const RKCalendarWordsRegistry& registry = RKSingleton<RKCalendarWordsRegistry>::instance();
        qInstallMessageHandler(forwardTo);
        QCOMPARE(warnings, 1);
        const QList<RKLocale> languages = registry.availalbleCalendarLanguages();
        QCOMPARE(languages.size(), qEnvironmentVariableIntValue("WORDS_FAILURE_LANGUAGES"));
        if (!languages.isEmpty())
            QCOMPARE(languages.first(), RKLocale(QStringLiteral("de"), QStringLiteral("DE")));
        // Every look-up shows the placeholders; snapshots too.
        const RKLocale de(QStringLiteral("de"), QStringLiteral("DE"));
        const RKCalendarDayNames names(de);
        QVERIFY(!registry.words(de).isValid());
        QVERIFY(!registry.words(de).language().isValid());
        QCOMPARE((QStringList{registry.monthNameLong(de, 1), registry.dayNameLong(de, 1), registry.weekLong(de), names.monthLong(12)}).join(QLatin1Char('|')), QStringLiteral("unknown|unknown|unknown|unknown"));
        QCOMPARE((QStringList{registry.monthNameShort(de, 1), registry.dayNameShort(de, 7), names.dayOfWeekShort(1)}).join(QLatin1Char('|')), QStringLiteral("nn|nn|nn"));
        QCOMPARE(registry.monthNamesLong(de, {2, 1}), QStringLiteral("unknown, unknown"));
    }
};

class TestWordsFileFailure : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // A words file that cannot be opened: its path is a directory, which even root cannot read as a file.
        QVERIFY(myUnreadable.isValid());
        QVERIFY(QDir(myUnreadable.path()).mkpath(QStringLiteral("international/CalendarWeekNames.xml")));
        QVERIFY(QFile::copy(testDataPath(QStringLiteral("words/malformed/international/CalendarLanguages.xml")),
            myUnreadable.filePath(QStringLiteral("international/CalendarLanguages.xml"))));
    }

    void brokenFileLeavesNoWords_data()
    {
        QTest::addColumn<QString>("dataDir");
        QTest::addColumn<QString>("warning");
        QTest::addColumn<int>("languages");
        // The languages are read, the words are not.
        QTest::newRow("words file malformed") << testDataPath(QStringLiteral("words/malformed"))
            << "^XML parse error in \".*/international/CalendarWeekNames\\.xml\" at line \\d+" << 1;
        QTest::newRow("words file unreadable") << myUnreadable.path()
            << "^Could not read XML file \".*/international/CalendarWeekNames\\.xml\"" << 1;
        // Without languages every entry of the words file is dropped.
        QTest::newRow("languages file missing") << testDataPath(QStringLiteral("words/missing-languages"))
            << "^Could not read XML file \".*/international/CalendarLanguages\\.xml\"" << 0;
    }

    void brokenFileLeavesNoWords()
    {
        QFETCH(QString, dataDir);
        QFETCH(QString, warning);
        QFETCH(int, languages);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("RKXML_RESOURCE_PATH"), QString());
        env.insert(QStringLiteral("RKXML_DATA_DIR"), dataDir);
        env.insert(QStringLiteral("WORDS_FAILURE_WARNING"), warning);
        env.insert(QStringLiteral("WORDS_FAILURE_LANGUAGES"), QString::number(languages));
        QProcess child;
        child.setProcessEnvironment(env);
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(QCoreApplication::applicationFilePath(), QStringList());
        QVERIFY(child.waitForFinished(60000));
        const QByteArray output = child.readAll();
        QVERIFY2(child.exitStatus() == QProcess::NormalExit, output.constData());
        QVERIFY2(child.exitCode() == 0, output.constData());
        QVERIFY2(output.contains("Totals: 3 passed, 0 failed"), output.constData());
    }

private:
    QTemporaryDir myUnreadable;
};

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (qEnvironmentVariableIsSet("WORDS_FAILURE_WARNING")) {
        WordsFileFailureChild child;
        return QTest::qExec(&child, argc, argv);
    }
    TestWordsFileFailure test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_wordsfilefailure.moc"
