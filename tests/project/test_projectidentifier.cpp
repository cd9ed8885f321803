#include "RKTestSupport.h"

#include <RKLogger.h>
#include <RKProjectIdentifier.h>
#include <RKProjectIdentifierRegistry.h>

#include <QDomDocument>

namespace {

const QRegularExpression uuidPattern(QStringLiteral("^[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}$"));

QDomElement element(QDomDocument& document, const QString& xml)
{
    const bool parsed = document.setContent(xml);
    Q_ASSERT(parsed);
    Q_UNUSED(parsed);
    return document.documentElement();
}

QStringList logLines()
{
    QFile file(RKSingleton<RKLogger>::instance().logFile());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

}

class TestProjectIdentifier : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        myWritable = isolateUserFiles();
        qputenv("RKXML_PROGRAM_DATA_DIR", QByteArray());
    }

    void defaultIsInvalidAndNotFinal()
    {
        const RKProjectIdentifier id;
        QVERIFY(!id.isValid());
        QVERIFY(!id.isFinal());
        QCOMPARE(id.projectID(), QString());
    }

    void createdIdentifiersAreNewValidAndNotFinal()
    {
        const RKProjectIdentifier a = RKProjectIdentifier::create();
        const RKProjectIdentifier b = RKProjectIdentifier::create();
        QVERIFY(a.isValid());
        QVERIFY(!a.isFinal());
        QVERIFY(a != b);
        QCOMPARE(a.projectID().size(), 36);
        QVERIFY2(uuidPattern.match(a.projectID()).hasMatch(), qPrintable(a.projectID()));
        QVERIFY(uuidPattern.match(RKProjectIdentifier::createProjectID()).hasMatch());
    }

    void elementWithoutProjectIdGetsNewFinalIdentifier()
    {
        QDomDocument d1, d2;
        const RKProjectIdentifier a(element(d1, QStringLiteral("<project name=\"x\"/>")));
        const RKProjectIdentifier b(element(d2, QStringLiteral("<project/>")));
        QVERIFY(a.isValid());
        QVERIFY(a.isFinal());
        QVERIFY2(uuidPattern.match(a.projectID()).hasMatch(), qPrintable(a.projectID()));
        QVERIFY(a != b);
        QVERIFY(b.isFinal());
    }

    void elementProjectIdIsReadAndFinal_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<QString>("expected");
        QTest::newRow("plain") << "<p projectID=\"read-from-file\"/>" << "read-from-file";
        QTest::newRow("padded") << "<p projectID=\"  padded-id \"/>" << "padded-id";
        // Present but empty is kept empty (invalid), not replaced by a new identifier.
        QTest::newRow("empty") << "<p projectID=\"\"/>" << "";
    }

    void elementProjectIdIsReadAndFinal()
    {
        QFETCH(QString, xml);
        QFETCH(QString, expected);
        QDomDocument document;
        const RKProjectIdentifier id(element(document, xml));
        QCOMPARE(id.projectID(), expected);
        QCOMPARE(id.isValid(), !expected.isEmpty());
        QVERIFY(id.isFinal());
    }

    void equalTextsShareFinalState()
    {
        const RKProjectIdentifier first(QStringLiteral("shared-text"), false);
        const RKProjectIdentifier second(QStringLiteral("shared-text"), false);
        QVERIFY(first == second);
        QCOMPARE(qHash(first), qHash(second));
        QVERIFY(!first.isFinal());
        QVERIFY(!second.isFinal());
        second.setFinal();
        QVERIFY(first.isFinal());
        QVERIFY(RKSingleton<RKProjectIdentifierRegistry>::instance().isFinalized(RKProjectIdentifier(QStringLiteral("shared-text"), false)));
        // A different text is not touched; finalising twice changes nothing.
        QVERIFY(!RKProjectIdentifier(QStringLiteral("shared-text-2"), false).isFinal());
        second.setFinal();
        QVERIFY(first.isFinal());
    }

    void constructedFinalIsRegistered()
    {
        const RKProjectIdentifier id(QStringLiteral("final-from-start"), true);
        QVERIFY(id.isFinal());
        QVERIFY(RKProjectIdentifier(QStringLiteral("final-from-start"), false).isFinal());
    }

    void encodeReadRoundTrip()
    {
        const RKProjectIdentifier original = RKProjectIdentifier::create();
        QDomDocument document;
        QDomElement e = document.createElement(QStringLiteral("project"));
        original.encode(e);
        QCOMPARE(e.attribute(QStringLiteral("projectID")), original.projectID());
        QVERIFY(!original.isFinal());
        const RKProjectIdentifier read(e);
        QVERIFY(read == original);
        // Reading from a document makes it final, and so the original too.
        QVERIFY(original.isFinal());
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
        QTest::addColumn<bool>("final");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("articleId");
        QTest::addColumn<QString>("orderText");
        QTest::newRow("final") << true << "save" << "A-1001" << "Family calendar 2026";
        QTest::newRow("not final") << false << "open" << "" << "";
        // Place markers in the values must not be substituted again.
        QTest::newRow("percent signs") << true << "order %1" << "%2" << "50% %5 off";
        QTest::newRow("non-ASCII") << false << "save" << "Ä-7" << "Kalender für Oma";
    }

    void logWritesOneLine()
    {
        QFETCH(bool, final);
        QFETCH(QString, action);
        QFETCH(QString, articleId);
        QFETCH(QString, orderText);
        const RKProjectIdentifier id = RKProjectIdentifier::create();
        if (final)
            id.setFinal();
        const int before = logLines().size();
        id.log(action, articleId, orderText);
        const QStringList lines = logLines();
        QCOMPARE(lines.size(), before + 1);
        QVERIFY(QFileInfo(RKSingleton<RKLogger>::instance().logFile()).absoluteFilePath().startsWith(myWritable));
        const QString expected = QStringLiteral("ProjectRegistry ACTION:") + action + QStringLiteral(" VALUE:") + id.projectID()
            + QStringLiteral(" FINAL:") + (final ? QStringLiteral("1") : QStringLiteral("0")) + QStringLiteral(" ARTICLEID:")
            + articleId + QStringLiteral(" ORDERTXTNAME:") + orderText;
        const QString last = lines.last();
        QVERIFY2(last.endsWith(QLatin1Char(' ') + expected), qPrintable(last));
        // What precedes the text is the time stamp of the logger.
        const QString stamp = last.left(last.size() - expected.size() - 1);
        QVERIFY2(QDateTime::fromString(stamp, Qt::ISODateWithMs).isValid(), qPrintable(stamp));
    }

    void debugOutputShowsText()
    {
        QString text;
        QDebug(&text) << RKProjectIdentifier(QStringLiteral("debug-me"), false);
        QVERIFY2(text.contains(QLatin1String("debug-me")), qPrintable(text));
    }

private:
    QString myWritable;
};

QTEST_GUILESS_MAIN(TestProjectIdentifier)
#include "test_projectidentifier.moc"
