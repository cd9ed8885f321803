#include "WordsFileFailure.h"

// The languages file is missing: every entry of the words file is dropped.
class TestWordsMissingFile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        WordsFileFailure::useOnlyDataDirectory(testDataPath(QStringLiteral("words/missing-languages")));
    }

    void missingLanguagesFileLeavesRegistryEmpty()
    {
        QTest::ignoreMessage(QtWarningMsg,
            QRegularExpression(QStringLiteral("^Could not read XML file \".*/international/CalendarLanguages\\.xml\"")));
        QCOMPARE(WordsFileFailure::createRegistryCountingWarnings(), 1);
        QVERIFY(RKSingleton<RKCalendarWordsRegistry>::instance().availalbleCalendarLanguages().isEmpty());
        WordsFileFailure::verifyNoWords();
    }
};

QTEST_GUILESS_MAIN(TestWordsMissingFile)
#include "test_wordsmissingfile.moc"
