#include "WordsFileFailure.h"

// The words file does not parse: the languages are read, the words are not.
class TestWordsMalformedFile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        WordsFileFailure::useOnlyDataDirectory(testDataPath(QStringLiteral("words/malformed")));
    }

    void malformedWordsFileLeavesWordsEmpty()
    {
        QTest::ignoreMessage(QtWarningMsg,
            QRegularExpression(QStringLiteral("^XML parse error in \".*/international/CalendarWeekNames\\.xml\" at line \\d+")));
        QCOMPARE(WordsFileFailure::createRegistryCountingWarnings(), 1);
        const QList<RKLocale> languages{RKLocale(QStringLiteral("de"), QStringLiteral("DE"))};
        QCOMPARE(RKSingleton<RKCalendarWordsRegistry>::instance().availalbleCalendarLanguages(), languages);
        WordsFileFailure::verifyNoWords();
    }
};

QTEST_GUILESS_MAIN(TestWordsMalformedFile)
#include "test_wordsmalformedfile.moc"
