#include "RKTestSupport.h"

#include <RKLogger.h>
#include <RKProjectIdentifier.h>
#include <RKProjectIdentifierRegistry.h>
#include <RKRelativePinAnchorPoint.h>
#include <RKTemplateSVGMetaDataElement.h>

#include <QDomDocument>

#include <thread>
#include <vector>

namespace {
const QRegularExpression uuidPattern(QStringLiteral("^[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}$"));
}

// Project identifiers and their registry, and the small values saved with templates:
// pin anchors and metadata words.
class TestProjectIdentifier : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        myWritable = isolateUserFiles();
        qputenv("RKXML_PROGRAM_DATA_DIR", QByteArray());
    }

    void createdIdentifierIsValidUniqueAndNotFinal()
    {
        QVERIFY(!RKProjectIdentifier().isValid());
        QVERIFY(!RKProjectIdentifier().isFinal());
        const RKProjectIdentifier created = RKProjectIdentifier::create();
        QVERIFY(created.isValid());
        QVERIFY(!created.isFinal());
        QVERIFY(created != RKProjectIdentifier::create());
        QVERIFY2(uuidPattern.match(created.projectID()).hasMatch(), qPrintable(created.projectID()));
    }

    void readIdentifierIsFinal_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<QString>("id"); // "uuid": a freshly generated one
        QTest::newRow("no attribute: new identifier") << "<project name=\"x\"/>" << "uuid";
        QTest::newRow("padded text is trimmed") << "<p projectID=\"  padded-id \"/>" << "padded-id";
        QTest::newRow("empty text stays empty") << "<p projectID=\"\"/>" << "";
    }
    void readIdentifierIsFinal()
    {
        QFETCH(QString, xml);
        QFETCH(QString, id);
        const RKProjectIdentifier read(testElement(xml));
        if (id == QLatin1String("uuid"))
            QVERIFY2(uuidPattern.match(read.projectID()).hasMatch(), qPrintable(read.projectID()));
        else
            QCOMPARE(read.projectID(), id);
        QVERIFY(read.isFinal());
    }

    void encodedIdentifierReadsBackAndBecomesFinal()
    {
        const RKProjectIdentifier created = RKProjectIdentifier::create();
        QDomDocument document;
        QDomElement e = document.createElement(QStringLiteral("project"));
        created.encode(e);
        QCOMPARE(e.attribute(QStringLiteral("projectID")), created.projectID());
        QCOMPARE(RKProjectIdentifier(e), created);
        // Reading made the text final, so the original is final too.
        QVERIFY(created.isFinal());
    }

    void equalTextsShareFinalState()
    {
        const RKProjectIdentifier first(QStringLiteral("shared-text"), false);
        const RKProjectIdentifier second(QStringLiteral("shared-text"), false);
        QCOMPARE(qHash(first), qHash(second));
        QVERIFY(!first.isFinal());
        second.setFinal();
        QVERIFY(first.isFinal());
        QVERIFY(!RKProjectIdentifier(QStringLiteral("shared-text-2"), false).isFinal());
        const RKProjectIdentifier finalFromStart(QStringLiteral("final-from-start"), true);
        QVERIFY(RKProjectIdentifier(QStringLiteral("final-from-start"), false).isFinal());
    }

    void registryFromThreads()
    {
        // Identifiers read on worker threads register themselves while others ask.
        const int threadCount = 4, perThread = 200;
        QVector<QStringList> made(threadCount);
        QAtomicInt notFinal = 0;
        // Standard threads: their join() is visible to thread checkers, QThread::wait() is not.
        std::vector<std::thread> threads;
        for (int t = 0; t < threadCount; ++t) {
            threads.emplace_back([t, &made, &notFinal]() {
                for (int n = 0; n < perThread; ++n) {
                    QDomDocument document;
                    const RKProjectIdentifier read(document.createElement(QStringLiteral("project")));
                    made[t] << read.projectID();
                    if (!read.isFinal() || RKProjectIdentifier::create().isFinal())
                        notFinal.ref();
                    RKProjectIdentifier(QStringLiteral("common"), n % 2 == 0).isFinal();
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        QCOMPARE(notFinal.loadRelaxed(), 0);
        QSet<QString> all;
        for (const QStringList& ids : made) {
            for (const QString& id : ids) {
                all << id;
                QVERIFY(RKSingleton<RKProjectIdentifierRegistry>::instance().isFinalized(RKProjectIdentifier(id, false)));
            }
        }
        QCOMPARE(all.size(), threadCount * perThread);
    }

    void thumbnailFileInProgramData()
    {
        const RKProjectIdentifier id(QStringLiteral("thumb-id"), false);
        QCOMPARE(id.thumbnailFile(), QDir(myWritable).filePath(QStringLiteral("programdata/projectRegistry/thumb-id.png")));
        QTemporaryDir programData;
        qputenv("RKXML_PROGRAM_DATA_DIR", programData.path().toLocal8Bit());
        QCOMPARE(id.thumbnailFile(), QDir(programData.path()).filePath(QStringLiteral("projectRegistry/thumb-id.png")));
        qputenv("RKXML_PROGRAM_DATA_DIR", QByteArray());
    }

    void logWritesOneLine_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<bool>("final");
        QTest::addColumn<QStringList>("values"); // action, article id, order text
        QTest::addColumn<QString>("line");       // after the time stamp
        QTest::newRow("final") << "log-1" << true << QStringList{"save", "A-1001", "Family calendar 2026"}
                               << "ProjectRegistry ACTION:save VALUE:log-1 FINAL:1 ARTICLEID:A-1001 ORDERTXTNAME:Family calendar 2026";
        QTest::newRow("not final, empty values") << "log-2" << false << QStringList{"open", "", ""}
                                                 << "ProjectRegistry ACTION:open VALUE:log-2 FINAL:0 ARTICLEID: ORDERTXTNAME:";
        // Place markers in the values must not be substituted again.
        QTest::newRow("percent signs") << "log-%1" << true << QStringList{"order %1", "%2", "50% %5 off"}
                                       << "ProjectRegistry ACTION:order %1 VALUE:log-%1 FINAL:1 ARTICLEID:%2 ORDERTXTNAME:50% %5 off";
    }
    void logWritesOneLine()
    {
        QFETCH(QString, id);
        QFETCH(bool, final);
        QFETCH(QStringList, values);
        QFETCH(QString, line);
        RKProjectIdentifier(id, final).log(values[0], values[1], values[2]);
        const QString logFile = RKSingleton<RKLogger>::instance().logFile();
        QVERIFY(QFileInfo(logFile).absoluteFilePath().startsWith(myWritable));
        const QString last = QString::fromUtf8(readTestFile(logFile)).split(QLatin1Char('\n'), Qt::SkipEmptyParts).last();
        QVERIFY2(last.endsWith(QLatin1Char(' ') + line), qPrintable(last));
        // What precedes the text is the logger's time stamp.
        const QString stamp = last.left(last.size() - line.size() - 1);
        QVERIFY2(QDateTime::fromString(stamp, Qt::ISODateWithMs).isValid(), qPrintable(stamp));
    }

    void anchorDecode_data()
    {
        QTest::addColumn<QString>("attributes");
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("y");
        QTest::addColumn<bool>("valid");
        QTest::newRow("0,1") << "anchor_x=\"0\" anchor_y=\"1\"" << 0.0 << 1.0 << true;
        QTest::newRow("1,0") << "anchor_x=\"1.0\" anchor_y=\"0.0\"" << 1.0 << 0.0 << true;
        QTest::newRow("just above 1") << "anchor_x=\"1.0000001\" anchor_y=\"0.5\"" << 1.0000001 << 0.5 << false;
        QTest::newRow("just below 0") << "anchor_x=\"0.5\" anchor_y=\"-0.0000001\"" << 0.5 << -0.0000001 << false;
        QTest::newRow("only x: absent y reads -1") << "anchor_x=\"0.5\"" << 0.5 << -1.0 << false;
        QTest::newRow("padded") << "anchor_x=\" 0.25 \" anchor_y=\"0.75\"" << 0.25 << 0.75 << true;
        // Malformed text reads as 0.0, which is a valid coordinate.
        QTest::newRow("malformed") << "anchor_x=\"left\" anchor_y=\"0,5\"" << 0.0 << 0.0 << true;
        QTest::newRow("NaN") << "anchor_x=\"0.5\" anchor_y=\"nan\"" << 0.5 << qQNaN() << false;
        QTest::newRow("beyond double's range") << "anchor_x=\"1e400\" anchor_y=\"0.5\"" << qInf() << 0.5 << false;
    }
    void anchorDecode()
    {
        QFETCH(QString, attributes);
        QFETCH(double, x);
        QFETCH(double, y);
        QFETCH(bool, valid);
        const RKRelativePinAnchorPoint anchor = RKRelativePinAnchorPoint::decode(testElement(QStringLiteral("<svg %1/>").arg(attributes)));
        QCOMPARE(anchor.point().x(), x);
        QCOMPARE(anchor.point().y(), y);
        QCOMPARE(anchor.isValid(), valid);
    }

    void namedAnchorsExpand()
    {
        QCOMPARE(RKRelativePinAnchorPoint::bottomCenter().expanded(QSizeF(200, 100)), QPointF(100, 100));
        QCOMPARE(RKRelativePinAnchorPoint::bottomRight().expanded(QSizeF(30, 40)), QPointF(30, 40));
        QCOMPARE(RKRelativePinAnchorPoint::topLeft().expanded(QSizeF(30, 40)), QPointF(0, 0));
        QCOMPARE(RKRelativePinAnchorPoint::center().expanded(QSizeF(30, 40)), QPointF(15, 20));
    }

    // Saved documents and callers depend on these numbers; the odd ones out are here.
    void metaDataWordsDecodeToFixedNumbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value");
        QTest::newRow("first word") << "vako:subcategory" << 1;
        QTest::newRow("category is 17, inserted second") << "vako:category" << 17;
        QTest::newRow("the one word outside vako:") << "tlm-holidays" << 16;
        QTest::newRow("last word") << "vako:logo" << 20;
        QTest::newRow("without namespace") << "category" << 0;
        QTest::newRow("empty") << "" << 0;
    }
    void metaDataWordsDecodeToFixedNumbers()
    {
        QFETCH(QString, text);
        QFETCH(int, value);
        const RKTemplateSVGMetaDataElement element(text);
        QCOMPARE(element.toInt(), value);
        // A word written as the table has it writes back as that same word.
        if (text.startsWith(QLatin1String("vako:")) && !text.contains(QLatin1Char(',')))
            QCOMPARE(RKTemplateSVGMetaDataElement(element.value()).encode(), text);
    }

private:
    QString myWritable;
};

QTEST_GUILESS_MAIN(TestProjectIdentifier)
#include "test_projectidentifier.moc"
