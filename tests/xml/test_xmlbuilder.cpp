#include "RKTestSupport.h"

#include <RKErrorHistory.h>
#include <RKPlatformIndependent.h>
#include <RKXMLBuilder.h>
#include <RKXMLLoader.h>

#include <QBuffer>
#include <QDirIterator>
#include <QSignalSpy>

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// What the writer puts before the root element.
const QString xmlDeclaration = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");

// Text outside ASCII, so that every save also shows the file is written as UTF-8.
QDomDocument sampleDocument(const QString& rootText = QString::fromUtf8("new content — ü 元旦"))
{
    QDomDocument document;
    QDomElement root = RKXMLBuilder::buildRootElement(document, QStringLiteral("settings"));
    RKXMLBuilder::addAttribute(root, QStringLiteral("version"), 3);
    RKXMLBuilder::buildDomElement(root, QStringLiteral("entry"), rootText);
    return document;
}

// Everything below `dir` in name order, hidden entries included (a save's temporary files are
// ".{uuid}"): "name/" for a folder, "name: content" for a file.
QStringList entriesBelow(const QString& dir)
{
    QMap<QString, QString> entries;
    QDirIterator it(dir, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString name = QDir(dir).relativeFilePath(it.next());
        if (it.fileInfo().isDir())
            entries.insert(name, name + QLatin1Char('/'));
        else
            entries.insert(name, name + QStringLiteral(": ") + QString::fromUtf8(readTestFile(it.filePath())));
    }
    return entries.values();
}

// Runs `work` in a child process; its exit code, or -1 when the child did not exit normally.
int exitCodeInChild(const std::function<int()>& work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work());
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

}

class TestXMLBuilder : public QObject
{
    Q_OBJECT
    QTemporaryDir* myDir = nullptr;
    QString path(const QString& name) const { return myDir->filePath(name); }

private Q_SLOTS:
    void initTestCase() { isolateUserFiles(); }

    void init()
    {
        delete myDir;
        myDir = new QTemporaryDir();
        QVERIFY(myDir->isValid());
        RKPlatformIndependent::instance().setAllowsInPlaceWriteFallback(false);
    }

    void fixtureWritesItsCanonicalForm()
    {
        // The golden file keeps every element, text (a character outside the BMP included), CDATA
        // section and comment of the fixture, the comment after the root too, in UTF-8 with the
        // attributes sorted by UTF-16 code unit (upper case, "_", lower case; a prefixed name by its
        // whole text); what precedes the root (declaration, instruction, comment, doctype) and the
        // instruction inside go, and the declaration is written anew.
        const QDomDocument original = RKXMLLoader::loadDocument(testDataPath(QStringLiteral("xml/calendar_page.svg")));
        const QString first = RKXMLBuilder::toString(original, 4);
        QCOMPARE(first, QString::fromUtf8(readTestFile(testDataPath(QStringLiteral("xml/calendar_page.canonical.svg")))));
        // Canonical: writing what was read back gives the same bytes.
        const QDomDocument reread = RKXMLLoader::parse(first.toUtf8(), QStringLiteral("first save"));
        QCOMPARE(RKXMLBuilder::toString(reread, 4), first);
    }

    void cdataSplitsAtItsEndMarker_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("no end marker") << QStringLiteral("a < b & c");
        QTest::newRow("end marker inside") << QStringLiteral("x]]>y");
        QTest::newRow("at both ends") << QStringLiteral("]]>a]]>");
        QTest::newRow("brackets run into it") << QStringLiteral("]]]]>>");
    }
    void cdataSplitsAtItsEndMarker()
    {
        // QDom writes sections as they are: the document it writes must stay well-formed and
        // read back the same text.
        QFETCH(QString, text);
        QDomDocument document;
        QDomElement root = RKXMLBuilder::buildRootElement(document, QStringLiteral("style"));
        RKXMLBuilder::appendCData(root, text);
        QDomDocument reread;
        QVERIFY(reread.setContent(document.toString()));
        QCOMPARE(reread.documentElement().text(), text);
        QVERIFY(reread.documentElement().firstChild().isCDATASection());
    }

    void toStringStopsAtWriterOutput()
    {
        QDomDocument empty;
        QCOMPARE(RKXMLBuilder::toString(empty, 4), xmlDeclaration);
        QVERIFY(!RKXMLBuilder::saveCanonicalXML(empty, nullptr, 4));

        // A device that refuses writes makes the writer fail.
        QBuffer readOnly;
        readOnly.open(QIODevice::ReadOnly);
        QTest::ignoreMessage(QtWarningMsg, "QIODevice::write (QBuffer): ReadOnly device");
        QTest::ignoreMessage(QtDebugMsg, "Fail to write Canonical XML.");
        QVERIFY(!RKXMLBuilder::saveCanonicalXML(sampleDocument(), &readOnly, 4));
    }

    void escape()
    {
        QCOMPARE(RKXMLBuilder::escape(QStringLiteral("a<b & 'c'")), QStringLiteral("a&lt;b &amp; &apos;c&apos;"));
        // Entity-looking text is escaped once more, not left alone.
        QCOMPARE(RKXMLBuilder::escape(QStringLiteral("&lt;\"x\">")), QStringLiteral("&amp;lt;&quot;x&quot;&gt;"));
        QVERIFY(RKXMLBuilder::escape(QString()).isEmpty());
    }

    void saveLeft_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("maxLength");
        QTest::addColumn<QString>("expected");
        const QString quoted = QStringLiteral("a\"b");
        QTest::newRow("quote weighs 7, limit 8") << quoted << 8 << QStringLiteral("a\"");
        QTest::newRow("quote weighs 7, limit 9") << quoted << 9 << quoted;
        QTest::newRow("quote does not fit") << quoted << 7 << QStringLiteral("a");
        QTest::newRow("negative limit") << quoted << -1 << QString();
        QTest::newRow("zero limit") << quoted << 0 << QString();
        QTest::newRow("empty text") << QString() << 10 << QString();
        QTest::newRow("ampersand weighs 5") << QStringLiteral("&&") << 9 << QStringLiteral("&");
        QTest::newRow("less-than weighs 4") << QStringLiteral("<<x") << 9 << QStringLiteral("<<x");
        QTest::newRow("plain greater-than weighs 1") << QStringLiteral("a>b") << 3 << QStringLiteral("a>b");
        QTest::newRow("greater-than after ]] weighs 4") << QStringLiteral("]]>") << 5 << QStringLiteral("]]");
        QTest::newRow("greater-than after ]] fits") << QStringLiteral("]]>") << 6 << QStringLiteral("]]>");
        QTest::newRow("stops at first misfit") << QStringLiteral("ab&c") << 4 << QStringLiteral("ab");
    }

    void saveLeft()
    {
        QFETCH(QString, text);
        QFETCH(int, maxLength);
        QFETCH(QString, expected);
        QCOMPARE(RKXMLBuilder::saveLeft(text, maxLength), expected);
    }

    void backupNames_data()
    {
        QTest::addColumn<QByteArray>("previous");
        QTest::addColumn<bool>("existing");
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<bool>("olderBackup");
        QTest::newRow("non-empty file gets ~") << QByteArray("<old/>") << true << QStringLiteral("~") << false;
        QTest::newRow("empty file gets .bak") << QByteArray() << true << QStringLiteral(".bak") << false;
        QTest::newRow("older ~ backup is replaced") << QByteArray("<old>2</old>") << true << QStringLiteral("~") << true;
        QTest::newRow("no previous file, no backup") << QByteArray() << false << QStringLiteral("~") << false;
    }

    void backupNames()
    {
        QFETCH(QByteArray, previous);
        QFETCH(bool, existing);
        QFETCH(QString, suffix);
        QFETCH(bool, olderBackup);
        const QString target = path(QStringLiteral("config.xml"));
        if (existing)
            writeTestFile(target, previous);
        if (olderBackup)
            writeTestFile(target + suffix, "<older/>");

        QSignalSpy written(&RKPlatformIndependent::instance(), &RKPlatformIndependent::fileWritten);
        RKErrorHistory history;
        QVERIFY(RKXMLBuilder::saveUTF8(sampleDocument(), QFileInfo(target), &history));
        QVERIFY(history.isEmpty());
        // The new file, the previous one's backup if there was one, nothing else.
        QStringList expected{QStringLiteral("config.xml: ") + RKXMLBuilder::toString(sampleDocument(), 4)};
        if (existing)
            expected << QStringLiteral("config.xml%1: %2").arg(suffix, QString::fromUtf8(previous));
        QCOMPARE(entriesBelow(myDir->path()), expected);
        // A save tells the platform which file it wrote, once.
        QCOMPARE(QList<QVariantList>(written), QList<QVariantList>{{QFileInfo(target).absoluteFilePath()}});
    }

    void isProbablyXML_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("expected");
        const QByteArray declaration("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
        QTest::newRow("closed root") << declaration + "<svg width=\"1\">\n<g/>\n</svg>\n" << true;
        QTest::newRow("self-closing root") << QByteArray("<root/>") << true;
        QTest::newRow("comment before root") << QByteArray("<!-- c --><a>x</a>") << true;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("only declaration") << declaration << false;
        QTest::newRow("truncated") << declaration + "<svg width=\"1\">\n<text>abc" << false;
        QTest::newRow("name without end in head") << QByteArray("<") + QByteArray(120, 'n') + "></n>" << false;
        QTest::newRow("tag after 100 bytes") << QByteArray(100, ' ') + "<a></a>" << false;
        QByteArray longBody = declaration + "<doc>";
        for (int i = 0; i < 2000; ++i)
            longBody += "<item n=\"" + QByteArray::number(i) + "\">text</item>\n";
        QTest::newRow("large file closed") << longBody + "</doc>\n\n   " << true;
        // The tail "...text</item>" holds neither "/doc" nor "/>": truncation is noticed.
        QTest::newRow("large file truncated") << longBody << false;
    }

    void isProbablyXML()
    {
        QFETCH(QByteArray, content);
        QFETCH(bool, expected);
        const QString file = path(QStringLiteral("probe.xml"));
        writeTestFile(file, content);
        QFile probe(file);
        QCOMPARE(RKXMLBuilder::isProbablyXML(&probe), expected);
        QVERIFY(!probe.isOpen());
    }

    void unverifiableOutputKeepsTheOldFile()
    {
        // A long comment after the root pushes the closing tag out of the last 50 bytes: the check
        // rejects the written file and the previous content must stay where it was.
        QDomDocument document = sampleDocument();
        document.appendChild(document.createComment(QStringLiteral("trailing remark that is longer than fifty characters in total")));
        const QString target = path(QStringLiteral("keep.xml"));
        writeTestFile(target, "<previous>ok</previous>");
        RKErrorHistory history;
        QVERIFY(!RKXMLBuilder::saveUTF8(document, QFileInfo(target), &history));
        QCOMPARE(entriesBelow(myDir->path()), QStringList{QStringLiteral("keep.xml: <previous>ok</previous>")});
    }

    void faultReadOnlyDirectory()
    {
        // Root ignores permission bits, so when the tests run as root the save runs in a child
        // process that has given up root for the unprivileged "nobody" account.
        const QString dir = path(QStringLiteral("readonly"));
        const QString target = dir + QStringLiteral("/locked.xml");
        writeTestFile(target, "<locked>1</locked>");
        QVERIFY(::chmod(QFile::encodeName(myDir->path()).constData(), 0755) == 0);
        QVERIFY(::chmod(QFile::encodeName(dir).constData(), 0555) == 0);

        // 0: refused with the right diagnosis, 1: saved anyway, 2: refused for another reason.
        auto attempt = [&target]() -> int {
            RKErrorHistory history;
            if (RKXMLBuilder::saveUTF8(sampleDocument(), QFileInfo(target), &history))
                return 1;
            return history.contains(RKErrorEvent::CouldNotOpenFileForReadWriteAccess) ? 0 : 2;
        };

        const int outcome = ::geteuid() != 0 ? attempt() : exitCodeInChild([&attempt] {
            if (::setgid(65534) != 0 || ::setuid(65534) != 0)
                return 3;
            return attempt();
        });
        ::chmod(QFile::encodeName(dir).constData(), 0755);
        QCOMPARE(outcome, 0);
        QCOMPARE(entriesBelow(dir), QStringList{QStringLiteral("locked.xml: <locked>1</locked>")});
    }

    void faultBackupCannotBeRemoved_data()
    {
        QTest::addColumn<bool>("inPlaceFallback");
        QTest::newRow("old file kept") << false;
        QTest::newRow("written in place") << true;
    }
    void faultBackupCannotBeRemoved()
    {
        QFETCH(bool, inPlaceFallback);
        const QString target = path(QStringLiteral("doc.xml")), backup = target + QLatin1Char('~');
        writeTestFile(target, "<doc>precious</doc>");
        writeTestFile(backup + QStringLiteral("/inner/file"), "x");
        QStringList entries = entriesBelow(myDir->path());
        RKPlatformIndependent::instance().setAllowsInPlaceWriteFallback(inPlaceFallback);
        RKErrorHistory history;
        QCOMPARE(RKXMLBuilder::saveUTF8(sampleDocument(), QFileInfo(target), &history), inPlaceFallback);
        RKPlatformIndependent::instance().setAllowsInPlaceWriteFallback(false);
        const RKErrorEvent couldNotDelete(RKErrorEvent::CouldNotDeleteFile, QStringLiteral("could not delete file: ") + backup);
        QCOMPARE(history.events(), QList<RKErrorEvent>{couldNotDelete});
        // The backup folder stays untouched; the file is the old one, or the new one written in place.
        if (inPlaceFallback)
            entries.first() = QStringLiteral("doc.xml: ") + RKXMLBuilder::toString(sampleDocument(), 4);
        QCOMPARE(entriesBelow(myDir->path()), entries);
    }

    void faultFullDevice()
    {
        if (!QFileInfo::exists(QStringLiteral("/dev/full")))
            QSKIP("no /dev/full on this system");
        // A small document stays in the write buffer until the flush, which must fail the save.
        // (Failures while writing: faultFileSizeLimit.)
        QFile full(QStringLiteral("/dev/full"));
        RKErrorHistory history;
        QVERIFY(!RKXMLBuilder::tryToSaveToTempFile(sampleDocument(), &full, &history));
        QCOMPARE(history.events(), QList<RKErrorEvent>{RKErrorEvent(RKErrorEvent::SavingFailed, QStringLiteral("saving failed"), -1)});
    }

    void faultFileSizeLimit_data()
    {
        // Where the disk fills up: within the first buffer, a later one, or near the end's flush.
        QTest::addColumn<int>("limit");
        QTest::newRow("4 KiB") << 4096;
        QTest::newRow("64 KiB") << 65536;
        QTest::newRow("300 KB") << 300000;
    }
    void faultFileSizeLimit()
    {
        // The disk fills up part way through a 1 MB document: the cut-short temporary file still
        // looks like XML (it ends in "/>"), but the save must fail and leave target and backup alone.
        QFETCH(int, limit);
        QDomDocument document = sampleDocument();
        QDomElement root = document.documentElement();
        while (RKXMLBuilder::toString(document, 4).size() < 1000000) {
            for (int i = 0; i < 1000; ++i)
                RKXMLBuilder::buildDomElement(root, QStringLiteral("row"), QStringLiteral("n"), QStringLiteral("payload %1").arg(i));
        }
        const QString target = path(QStringLiteral("big.xml"));
        writeTestFile(target, "<previous>ok</previous>");
        writeTestFile(target + QStringLiteral("~"), "<backup/>");
        // 0: refused as a failed save, 1: saved anyway, 2: refused for another reason.
        const int outcome = exitCodeInChild([&] {
            ::signal(SIGXFSZ, SIG_IGN);
            const rlimit size = { rlim_t(limit), rlim_t(limit) };
            if (::setrlimit(RLIMIT_FSIZE, &size) != 0)
                return 3;
            RKErrorHistory history;
            if (RKXMLBuilder::saveUTF8(document, QFileInfo(target), &history))
                return 1;
            return history.contains(RKErrorEvent::SavingFailed) ? 0 : 2;
        });
        QCOMPARE(outcome, 0);
        QCOMPARE(entriesBelow(myDir->path()),
            (QStringList{QStringLiteral("big.xml: <previous>ok</previous>"), QStringLiteral("big.xml~: <backup/>")}));
    }

    void charactersXmlCannotHold_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<QString>("comment");
        QTest::addColumn<QString>("written"); // after the declaration
        QTest::newRow("reference to U+0001") << QStringLiteral("<r>a&#1;after</r>") << QString() << QStringLiteral("<r>a\uFFFDafter</r>\n");
        QTest::newRow("reference to U+FFFE") << QStringLiteral("<r t=\"&#xFFFE;\">after</r>") << QString()
                                             << QStringLiteral("<r t=\"\uFFFD\">after</r>\n");
        QTest::newRow("unpaired surrogate in attribute") << QStringLiteral("<r t=\"x&#xD800;y\">after</r>") << QString()
                                                         << QStringLiteral("<r t=\"x\uFFFDy\">after</r>\n");
        QTest::newRow("NUL in comment") << QStringLiteral("<r/>") << QStringLiteral("a") + QChar(0) + QStringLiteral("b")
                                        << QStringLiteral("<r>\n  <!--a\uFFFDb-->\n</r>\n");
    }
    void charactersXmlCannotHold()
    {
        QFETCH(QString, xml);
        QFETCH(QString, comment);
        QFETCH(QString, written);
        QDomDocument document;
        QVERIFY(document.setContent(xml));
        if (!comment.isEmpty())
            document.documentElement().appendChild(document.createComment(comment));
        QTest::ignoreMessage(QtWarningMsg, "Characters that XML cannot hold were written as U+FFFD.");
        // Written whole (the text after the bad character, the closing tag), as well-formed XML.
        QCOMPARE(RKXMLBuilder::toString(document, 2), xmlDeclaration + written);
    }

    void faultUnopenableTarget_data()
    {
        QTest::addColumn<QString>("blocker");
        QTest::addColumn<QString>("target");
        // A path that continues past a regular file is written directly (no backup) and cannot be opened.
        QTest::newRow("parent is a file") << QStringLiteral("pack.rkm") << QStringLiteral("pack.rkm/cards/a.xml");
        QTest::newRow("target is a directory") << QStringLiteral("folder.xml/keep.txt") << QStringLiteral("folder.xml");
    }
    void faultUnopenableTarget()
    {
        QFETCH(QString, blocker);
        QFETCH(QString, target);
        writeTestFile(path(blocker), "inside");
        const QStringList before = entriesBelow(myDir->path());
        // The one event names the target.
        const QList<RKErrorEvent> couldNotOpen{RKErrorEvent(RKErrorEvent::CouldNotOpenFileForReadWriteAccess,
            QStringLiteral("could not open file for read/write access: ") + path(target))};
        RKErrorHistory history;
        QVERIFY(!RKXMLBuilder::saveUTF8(sampleDocument(), QFileInfo(path(target)), &history));
        QCOMPARE(history.events(), couldNotOpen);
        QCOMPARE(entriesBelow(myDir->path()), before); // nothing changed, nothing left behind
        if (!QFileInfo(path(target)).isDir())
            return;
        // The step on its own: a temporary file cannot be renamed over a directory either.
        writeTestFile(path(QStringLiteral("temp.xml")), "<a/>");
        QFile temporary(path(QStringLiteral("temp.xml")));
        RKErrorHistory stepHistory;
        QVERIFY(!RKXMLBuilder::tryToCopyTempFileToRealFile(QFileInfo(path(target)), &temporary, &stepHistory));
        QCOMPARE(stepHistory.events(), couldNotOpen);
        QCOMPARE(readTestFile(path(blocker)), QByteArray("inside"));
    }
};

QTEST_GUILESS_MAIN(TestXMLBuilder)
#include "test_xmlbuilder.moc"
