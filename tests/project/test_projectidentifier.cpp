#include "RKTestSupport.h"

#include <RKLogger.h>
#include <RKProjectIdentifier.h>
#include <RKProjectIdentifierRegistry.h>
#include <RKRelativePinAnchorPoint.h>
#include <RKTemplateSVGMetaDataElement.h>

#include <QDomDocument>

#include <limits>


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

// Project identifiers, and the small values saved with templates: pin anchors and metadata words.
class TestProjectIdentifier : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        myWritable = isolateUserFiles();
        qputenv("RKXML_PROGRAM_DATA_DIR", QByteArray());
    }

    void identifiersAreCreatedOrRead()
    {
        QVERIFY(!RKProjectIdentifier().isValid() && !RKProjectIdentifier().isFinal());
        const RKProjectIdentifier created = RKProjectIdentifier::create();
        QVERIFY(created.isValid() && !created.isFinal() && created != RKProjectIdentifier::create());
        QVERIFY2(uuidPattern.match(created.projectID()).hasMatch(), qPrintable(created.projectID()));
        QVERIFY(uuidPattern.match(RKProjectIdentifier::createProjectID()).hasMatch());
        // Read from an element: always final; no attribute gives a new identifier, an empty one stays empty (invalid).
        QDomDocument d1, d2, d3, d4;
        const RKProjectIdentifier generated(element(d1, QStringLiteral("<project name=\"x\"/>")));
        QVERIFY(generated.isValid() && generated.isFinal() && generated != RKProjectIdentifier(element(d2, QStringLiteral("<project/>"))));
        QVERIFY2(uuidPattern.match(generated.projectID()).hasMatch(), qPrintable(generated.projectID()));
        const RKProjectIdentifier padded(element(d3, QStringLiteral("<p projectID=\"  padded-id \"/>")));
        QVERIFY(padded.projectID() == QLatin1String("padded-id") && padded.isFinal());
        const RKProjectIdentifier empty(element(d4, QStringLiteral("<p projectID=\"\"/>")));
        QVERIFY(empty.projectID().isEmpty() && !empty.isValid() && empty.isFinal());
        // Round trip through an element; reading makes the text final, and so the original too.
        QDomElement e = d1.createElement(QStringLiteral("project"));
        created.encode(e);
        QCOMPARE(e.attribute(QStringLiteral("projectID")), created.projectID());
        QVERIFY(RKProjectIdentifier(e) == created && created.isFinal());
    }

    void equalTextsShareFinalState()
    {
        const RKProjectIdentifier first(QStringLiteral("shared-text"), false);
        const RKProjectIdentifier second(QStringLiteral("shared-text"), false);
        QVERIFY(first == second && qHash(first) == qHash(second) && !first.isFinal());
        second.setFinal();
        QVERIFY(first.isFinal());
        QVERIFY(RKSingleton<RKProjectIdentifierRegistry>::instance().isFinalized(RKProjectIdentifier(QStringLiteral("shared-text"), false)));
        QVERIFY(!RKProjectIdentifier(QStringLiteral("shared-text-2"), false).isFinal());
        // Constructed final registers the text too.
        const RKProjectIdentifier finalFromStart(QStringLiteral("final-from-start"), true);
        QVERIFY(RKProjectIdentifier(QStringLiteral("final-from-start"), false).isFinal());
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
        QTest::addColumn<QStringList>("values"); // action, article id, order text
        QTest::newRow("final") << true << QStringList{"save", "A-1001", "Family calendar 2026"};
        QTest::newRow("not final") << false << QStringList{"open", "", ""};
        // Place markers in the values must not be substituted again.
        QTest::newRow("percent signs") << true << QStringList{"order %1", "%2", "50% %5 off"};
        QTest::newRow("non-ASCII") << false << QStringList{"save", "Ä-7", "Kalender für Oma"};
    }

    void logWritesOneLine()
    {
        QFETCH(bool, final);
        QFETCH(QStringList, values);
        const RKProjectIdentifier id = RKProjectIdentifier::create();
        if (final)
            id.setFinal();
        const int before = logLines().size();
        id.log(values[0], values[1], values[2]);
        const QStringList lines = logLines();
        QCOMPARE(lines.size(), before + 1);
        QVERIFY(QFileInfo(RKSingleton<RKLogger>::instance().logFile()).absoluteFilePath().startsWith(myWritable));
        const QString expected = QStringLiteral("ProjectRegistry ACTION:") + values[0] + QStringLiteral(" VALUE:") + id.projectID()
            + QStringLiteral(" FINAL:") + QString::number(final) + QStringLiteral(" ARTICLEID:") + values[1] + QStringLiteral(" ORDERTXTNAME:") + values[2];
        const QString last = lines.last();
        QVERIFY2(last.endsWith(QLatin1Char(' ') + expected), qPrintable(last));
        // What precedes the text is the time stamp of the logger.
        const QString stamp = last.left(last.size() - expected.size() - 1);
        QVERIFY2(QDateTime::fromString(stamp, Qt::ISODateWithMs).isValid(), qPrintable(stamp));
    }

    void anchorDecode_data()
    {
        QTest::addColumn<QString>("attributes");
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<bool>("valid");
        QTest::newRow("none") << "" << QPointF(-1, -1) << false;
        QTest::newRow("0,1") << "anchor_x=\"0\" anchor_y=\"1\"" << QPointF(0, 1) << true;
        QTest::newRow("1,0") << "anchor_x=\"1.0\" anchor_y=\"0.0\"" << QPointF(1, 0) << true;
        QTest::newRow("just above 1") << "anchor_x=\"1.0000001\" anchor_y=\"0.5\"" << QPointF(1.0000001, 0.5) << false;
        QTest::newRow("just below 0") << "anchor_x=\"0.5\" anchor_y=\"-0.0000001\"" << QPointF(0.5, -0.0000001) << false;
        QTest::newRow("only x") << "anchor_x=\"0.5\"" << QPointF(0.5, -1) << false;
        QTest::newRow("only y") << "anchor_y=\"0.5\"" << QPointF(-1, 0.5) << false;
        QTest::newRow("padded") << "anchor_x=\" 0.25 \" anchor_y=\"0.75\"" << QPointF(0.25, 0.75) << true;
        // Malformed text reads as 0.0, which is a valid coordinate.
        QTest::newRow("malformed") << "anchor_x=\"left\" anchor_y=\"0,5\"" << QPointF(0, 0) << true;
        QTest::newRow("empty") << "anchor_x=\"\" anchor_y=\"\"" << QPointF(0, 0) << true;
        QTest::newRow("exponent") << "anchor_x=\"5e-1\" anchor_y=\"1e0\"" << QPointF(0.5, 1) << true;
    }

    void anchorDecode()
    {
        QFETCH(QString, attributes);
        QFETCH(QPointF, point);
        QFETCH(bool, valid);
        QDomDocument document;
        const RKRelativePinAnchorPoint anchor = RKRelativePinAnchorPoint::decode(element(document, QStringLiteral("<svg %1/>").arg(attributes)));
        QCOMPARE(anchor.point(), point);
        QCOMPARE(anchor.isValid(), valid);
    }

    void nonFiniteAnchorsAreInvalidAndNamedAnchorsExpand()
    {
        // Out of double's range reads as infinity, never as a coordinate on the image.
        QDomDocument document;
        QVERIFY(!RKRelativePinAnchorPoint::decode(element(document, QStringLiteral("<svg anchor_x=\"1e400\" anchor_y=\"0.5\"/>"))).isValid());
        const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
        for (const QPointF& p : {QPointF(nan, 0.5), QPointF(0.5, nan), QPointF(inf, 0.5), QPointF(0.5, -inf)})
            QVERIFY(!RKRelativePinAnchorPoint(p).isValid());
        QVERIFY(!RKRelativePinAnchorPoint().isValid() && RKRelativePinAnchorPoint().point() == QPointF(-1, -1));
        QCOMPARE(RKRelativePinAnchorPoint::topLeft().expanded(QSizeF(30, 40)), QPointF(0, 0));
        QCOMPARE(RKRelativePinAnchorPoint::center().expanded(QSizeF(30, 40)), QPointF(15, 20));
        QCOMPARE(RKRelativePinAnchorPoint::bottomCenter().expanded(QSizeF(200, 100)), QPointF(100, 100));
        QCOMPARE(RKRelativePinAnchorPoint::bottomRight().expanded(QSizeF(30, 40)), QPointF(30, 40));
        QCOMPARE(RKRelativePinAnchorPoint(QPointF(0.25, 0.75)).expanded(QSizeF(80, 40)), QPointF(20, 30));
        QCOMPARE(RKRelativePinAnchorPoint::center().expanded(QSizeF()), QPointF(-0.5, -0.5));
    }

    // Saved documents and callers depend on these words and numbers.
    void metaDataWordsDecodeToFixedNumbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value");
        int value = 1;
        for (const char* word : {"vako:subcategory", "vako:product", "vako:ref_subclass1", "vako:ref_subclass2", "vako:thumbnail",
                 "vako:content_type", "vako:ref_content_id", "vako:rotation", "vako:designElementId", "vako:designElementType",
                 "vako:keyaccount", "vako:multipage", "vako:priceclass", "vako:duplicate-of", "vako:properties", "tlm-holidays",
                 "vako:category", "vako:product_variant", "vako:pagetype", "vako:logo"})
            QTest::newRow(word) << QString::fromLatin1(word) << value++;
        QTest::newRow("mixed case") << "VAKO:DesignElementID" << 9;
        QTest::newRow("upper") << "VAKO:CATEGORY" << 17;
        QTest::newRow("padded") << "  tlm-holidays " << 16;
        QTest::newRow("unknown") << "vako:colour" << 0;
        QTest::newRow("without namespace") << "category" << 0;
        QTest::newRow("empty") << "" << 0;
        QTest::newRow("unknown and known") << "nonsense, vako:logo" << 20;
        // Plain numbers, not flags: two words OR their numbers.
        QTest::newRow("two words") << "vako:subcategory,vako:product" << 3;
    }

    void metaDataWordsDecodeToFixedNumbers()
    {
        QFETCH(QString, text);
        QFETCH(int, value);
        const RKTemplateSVGMetaDataElement element(text);
        QCOMPARE(element.toInt(), value);
        QVERIFY(!RKTemplateSVGMetaDataElement().isValid() && RKMetaCategory == 17 && RKTemplateSVGMetaDataElement(QStringLiteral("vako:logo")) == RKMetaLogo);
        // The number of a word written as it is writes back as that same word.
        if (QString::fromLatin1(QTest::currentDataTag()) == text)
            QCOMPARE(RKTemplateSVGMetaDataElement(element.value()).encode(), text);
    }

private:
    QString myWritable;
};


QTEST_GUILESS_MAIN(TestProjectIdentifier)
#include "test_projectidentifier.moc"
