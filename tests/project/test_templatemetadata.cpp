#include "RKTestSupport.h"

#include <RKTemplateSVGMetaDataElement.h>

// Saved documents and callers depend on these words and numbers.
class TestTemplateMetaData : public QObject
{
    Q_OBJECT

private slots:
    void wordsDecodeToFixedNumbers_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<int>("value");
        const char* words[] = {"vako:subcategory", "vako:product", "vako:ref_subclass1", "vako:ref_subclass2",
            "vako:thumbnail", "vako:content_type", "vako:ref_content_id", "vako:rotation", "vako:designElementId",
            "vako:designElementType", "vako:keyaccount", "vako:multipage", "vako:priceclass", "vako:duplicate-of",
            "vako:properties", "tlm-holidays", "vako:category", "vako:product_variant", "vako:pagetype", "vako:logo"};
        int value = 1;
        for (const char* word : words)
            QTest::newRow(word) << QString::fromLatin1(word) << value++;
    }

    void wordsDecodeToFixedNumbers()
    {
        QFETCH(QString, word);
        QFETCH(int, value);
        const RKTemplateSVGMetaDataElement element(word);
        QCOMPARE(element.toInt(), value);
        // And the number writes back as the same word.
        QCOMPARE(RKTemplateSVGMetaDataElement(element.value()).encode(), word);
    }

    void decodingIgnoresCaseAndBlanks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value");
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

    void decodingIgnoresCaseAndBlanks()
    {
        QFETCH(QString, text);
        QFETCH(int, value);
        QCOMPARE(RKTemplateSVGMetaDataElement(text).toInt(), value);
    }

    void categoryIsSecondButSeventeen()
    {
        QCOMPARE(static_cast<int>(RKMetaCategory), 17);
        QCOMPARE(RKTemplateSVGMetaDataElement(RKMetaCategory).encode(), QStringLiteral("vako:category"));
        QVERIFY(!RKTemplateSVGMetaDataElement().isValid());
        QVERIFY(RKTemplateSVGMetaDataElement(QStringLiteral("vako:logo")) == RKMetaLogo);
    }
};

QTEST_GUILESS_MAIN(TestTemplateMetaData)
#include "test_templatemetadata.moc"
