#include "WordsFileFailure.h"

// The words file cannot be opened (its path is a directory, which even root cannot read as a file).
class TestWordsUnreadableFile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(myData.isValid());
        QVERIFY(QDir(myData.path()).mkpath(QStringLiteral("international/CalendarWeekNames.xml")));
        QVERIFY(QFile::copy(testDataPath(QStringLiteral("words/malformed/international/CalendarLanguages.xml")),
            myData.filePath(QStringLiteral("international/CalendarLanguages.xml"))));
        WordsFileFailure::useOnlyDataDirectory(myData.path());
    }

    void unreadableWordsFileLeavesWordsEmpty()
    {
        QTest::ignoreMessage(QtWarningMsg,
            QRegularExpression(QStringLiteral("^Could not read XML file \".*/international/CalendarWeekNames\\.xml\"")));
        QCOMPARE(WordsFileFailure::createRegistryCountingWarnings(), 1);
        QCOMPARE(RKSingleton<RKCalendarWordsRegistry>::instance().availalbleCalendarLanguages().size(), 1);
        WordsFileFailure::verifyNoWords();
    }

private:
    QTemporaryDir myData;
};

QTEST_GUILESS_MAIN(TestWordsUnreadableFile)
#include "test_wordsunreadablefile.moc"
