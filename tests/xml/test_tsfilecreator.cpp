#include "RKTestSupport.h"

#include <RKApplicationLocale.h>
#include <RKTSFileCreator.h>

using Table = QHash<QString, QString>;

class TestTSFileCreator : public QObject
{
    Q_OBJECT
    QScopedPointer<QTemporaryDir> myDir;
    const RKTSFileCreator myCreator; // stateless
    QFileInfo file(const QString& name) const { return QFileInfo(myDir->filePath(name)); }

private Q_SLOTS:
    void initTestCase()
    {
        isolateUserFiles();
        RKApplicationLocale::instance().setLocale(QLocale(QStringLiteral("de_DE")));
    }
    void init()
    {
        myDir.reset(new QTemporaryDir());
        QVERIFY(myDir->isValid());
    }

    void layoutAndRoundTrip()
    {
        const QFileInfo one = file(QStringLiteral("one.ts"));
        myCreator.save(one, {{QStringLiteral("Monday"), QStringLiteral("Montag")}});
        QCOMPARE(readTestFile(one.absoluteFilePath()),
            QByteArray("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n"
                       "<TS version=\"2.1\" language=\"de\">\n<context>\n    <name>Translations</name>\n"
                       "    <message>\n        <source>Monday</source>\n        <translation>Montag</translation>\n    </message>\n"
                       "</context>\n</TS>\n"));

        const Table table{{QStringLiteral("a < b & c"), QStringLiteral("\"x\" > y")}, {QStringLiteral("Neujahr"), QString::fromUtf8("元旦")},
            {QStringLiteral("Tom's"), QStringLiteral("d'Artagnan")}};
        const QFileInfo ts = file(QStringLiteral("round.ts"));
        myCreator.save(ts, table);
        const QByteArray bytes = readTestFile(ts.absoluteFilePath());
        // Any escaping mistake breaks the round trip: the file would not parse, or read back changed.
        QCOMPARE(myCreator.readTranslations(ts), table);
        QVERIFY(!myCreator.merge(ts, table));
        QCOMPARE(readTestFile(ts.absoluteFilePath()), bytes);
    }

    void readingSkipsEmptyAndSimplifies()
    {
        const QFileInfo ts = file(QStringLiteral("hand.ts"));
        writeTestFile(ts.absoluteFilePath(),
            "<?xml version=\"1.0\"?><TS><context><name>Translations</name>"
            "<message><source>empty</source><translation></translation></message>"
            "<message><source>  two\n   lines  </source><translation> zwei\tZeilen </translation></message>"
            "<message><source>dup</source><translation>first</translation></message>"
            "<message><source>dup</source><translation>second</translation></message>"
            "<message><translation>no source</translation></message>"
            "</context><context><message><source>other</source><translation>ignored</translation></message></context></TS>");
        Table expected{{QStringLiteral("two lines"), QStringLiteral("zwei Zeilen")}, {QStringLiteral("dup"), QStringLiteral("second")}};
        QCOMPARE(myCreator.readTranslations(ts), expected);
        // The skipped message comes back through a merge (padded so that the new text is longer
        // than the hand-written file, whose tail would otherwise stay behind).
        const Table additions{{QStringLiteral("empty"), QStringLiteral("leer")},
            {QStringLiteral("padding"), QString(400, QLatin1Char('p'))}};
        QVERIFY(myCreator.merge(ts, additions));
        expected.insert(additions);
        QCOMPARE(myCreator.readTranslations(ts), expected);
        // The unsimplified source is a different key: a change.
        QVERIFY(myCreator.merge(ts, {{QStringLiteral("  two\n   lines  "), QStringLiteral("zwei Zeilen")}}));
    }

    void mergeReportsChanges()
    {
        const QFileInfo ts = file(QStringLiteral("merge.ts"));
        QVERIFY(myCreator.merge(ts, {{QStringLiteral("a"), QStringLiteral("1")}}));
        const Table changed{{QStringLiteral("a"), QStringLiteral("2")}, {QStringLiteral("b"), QStringLiteral("3")}};
        QVERIFY(myCreator.merge(ts, changed));
        QCOMPARE(myCreator.readTranslations(ts), changed);
        QVERIFY(!myCreator.merge(ts, {}));
    }

    void saveKeepsAnOldLongerTail()
    {
        const QFileInfo ts = file(QStringLiteral("tail.ts")), fresh = file(QStringLiteral("fresh.ts"));
        Table big;
        for (int i = 0; i < 20; ++i)
            big.insert(QStringLiteral("source %1").arg(i), QStringLiteral("translation %1").arg(i));
        myCreator.save(ts, big);
        const QByteArray before = readTestFile(ts.absoluteFilePath());
        for (const QFileInfo& target : {ts, fresh})
            myCreator.save(target, {{QStringLiteral("x"), QStringLiteral("y")}});
        // The new text, then the rest of the old one.
        const QByteArray written = readTestFile(fresh.absoluteFilePath());
        QCOMPARE(readTestFile(ts.absoluteFilePath()), written + before.mid(written.size()));
    }

    void charactersXmlCannotHoldReadBack()
    {
        // Bad characters in a source and in a translation must not make the file unreadable
        // (which characters are bad: test_xmlbuilder's charactersXmlCannotHold).
        const Table additions = {
            {QStringLiteral("plain"), QStringLiteral("einfach")},
            {QStringLiteral("bad") + QChar(0xFFFE), QStringLiteral("x") + QChar(0x01)},
        };
        const QFileInfo target = file(QStringLiteral("bad.ts"));
        QTest::ignoreMessage(QtWarningMsg, "Characters that XML cannot hold were written as U+FFFD.");
        QVERIFY(myCreator.merge(target, additions));
        Table expected{{QStringLiteral("plain"), QStringLiteral("einfach")}, {QStringLiteral("bad\uFFFD"), QStringLiteral("x\uFFFD")}};
        QCOMPARE(myCreator.readTranslations(target), expected);
        // A later merge adds to the file instead of writing into an unreadable one.
        QVERIFY(myCreator.merge(target, {{QStringLiteral("more"), QStringLiteral("mehr")}}));
        expected.insert(QStringLiteral("more"), QStringLiteral("mehr"));
        QCOMPARE(myCreator.readTranslations(target), expected);
    }

    void saveFailuresLeaveFilesAlone()
    {
        // A directory in the file's place: nothing written, the directory stays.
        const QFileInfo directory = file(QStringLiteral("dir.ts"));
        QVERIFY(QDir().mkpath(directory.absoluteFilePath()));
        QVERIFY(myCreator.merge(directory, {{QStringLiteral("a"), QStringLiteral("b")}}));
        QVERIFY(directory.isDir());
        // A file inside a missing directory cannot be opened: nothing is written, nothing crashes.
        const QFileInfo unreachable = file(QStringLiteral("missing/dir/x.ts"));
        myCreator.save(unreachable, {{QStringLiteral("a"), QStringLiteral("b")}});
        QVERIFY(!QFileInfo::exists(unreachable.absoluteFilePath()));
    }

    void missingAndBrokenFiles()
    {
        QVERIFY(myCreator.readTranslations(file(QStringLiteral("none.ts"))).isEmpty());
        writeTestFile(file(QStringLiteral("broken.ts")).absoluteFilePath(), "<TS><context>");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^XML parse error in .*broken\\.ts")));
        QVERIFY(myCreator.readTranslations(file(QStringLiteral("broken.ts"))).isEmpty());
        writeTestFile(file(QStringLiteral("nocontext.ts")).absoluteFilePath(), "<TS><message><source>a</source><translation>b</translation></message></TS>");
        QVERIFY(myCreator.readTranslations(file(QStringLiteral("nocontext.ts"))).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestTSFileCreator)
#include "test_tsfilecreator.moc"
