#include "RKTestSupport.h"

#include <RKKeyValuePair.h>

#include <QRandomGenerator>

namespace {

RKKeyValuePairList roundTripped(const RKKeyValuePairList& list)
{
    return RKKeyValuePairList::deserialize(list.serializeCSV());
}

}

class TestKeyValuePair : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomTextsRoundTrip()
    {
        // Texts made only of the special characters are where an escaping order mistake shows:
        // keys ending in a backslash, escaped-looking text, empty values.
        QRandomGenerator random(20240611);
        const QString alphabet = QStringLiteral("\\,=/a");
        auto word = [&](int minLength) {
            QString text;
            for (int i = minLength + random.bounded(6); i > 0; --i)
                text += alphabet.at(random.bounded(alphabet.size()));
            return text;
        };
        for (int round = 0; round < 2000; ++round) {
            RKKeyValuePairList list;
            for (int p = 1 + random.bounded(4); p > 0; --p)
                list.setValue(word(1), word(0));
            if (roundTripped(list) != list)
                QFAIL(qPrintable(QStringLiteral("round trip changed ") + list.serializeCSV()));
        }
    }

    void splitsAtFirstUnescapedEquals()
    {
        const RKKeyValuePair pair = RKKeyValuePair::deserializeCSV(QStringLiteral("a\\=b=c=d"));
        QCOMPARE(pair.key() + QLatin1Char('|') + pair.value(), QStringLiteral("a=b|c=d"));
        // An escaped backslash does not escape the "=" after it.
        const RKKeyValuePair slash = RKKeyValuePair::deserializeCSV(QStringLiteral("a\\\\=b"));
        QCOMPARE(slash.key() + QLatin1Char('|') + slash.value(), QStringLiteral("a\\|b"));
        QCOMPARE(RKKeyValuePair(QStringLiteral("x,y"), QStringLiteral("1/2")).serializeCSV(), QStringLiteral("x\\,y=1\\/2"));
    }

    void undecodablePieces_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("warning");
        QTest::addColumn<QString>("decoded"); // the list written back
        // An undecodable piece stays in the list as an empty, invalid pair, written back as "=".
        QTest::newRow("empty text") << QString() << QString() << QString();
        QTest::newRow("trailing comma") << QStringLiteral("a=1,") << QStringLiteral("Error decoding ") << QStringLiteral("a=1,=");
        QTest::newRow("no equals") << QStringLiteral("abc") << QStringLiteral("Error decoding abc") << QStringLiteral("=");
        QTest::newRow("only escaped equals") << QStringLiteral("a\\=b,c=d") << QStringLiteral("Error decoding a\\=b")
                                             << QStringLiteral("=,c=d");
        QTest::newRow("escaped comma stays inside") << QStringLiteral("a=1\\,2") << QString() << QStringLiteral("a=1\\,2");
    }
    void undecodablePieces()
    {
        QFETCH(QString, text);
        QFETCH(QString, warning);
        QFETCH(QString, decoded);
        if (!warning.isNull())
            QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
        QCOMPARE(RKKeyValuePairList::deserialize(text).serializeCSV(), decoded);
    }

    void setValueKeepsPositionAndUniqueness()
    {
        RKKeyValuePairList list;
        for (const char* key : {"a", "b", "c"})
            list.setValue(QString::fromLatin1(key), QStringLiteral("1"));
        list.setValue(QStringLiteral("a"), QStringLiteral("changed"));
        list.setValue(QStringLiteral("d"), 4);
        QCOMPARE(list.serializeCSV(), QStringLiteral("a=changed,b=1,c=1,d=4"));
    }

    void typedValuesRoundTrip()
    {
        RKKeyValuePairList list;
        list.setValue(QStringLiteral("int"), -42);
        list.setValue(QStringLiteral("uint"), 4294967295u);
        list.setValue(QStringLiteral("tenth"), 0.1);
        list.setValue(QStringLiteral("third"), 1.0 / 3.0);
        list.setValue(QStringLiteral("angle"), RKAngle(-12.345678901234));
        list.setValue(QStringLiteral("opaque"), QColor(255, 0, 0));
        list.setValue(QStringLiteral("translucent"), QColor(0, 0, 255, 128));
        list.setValue(QStringLiteral("invalid"), QColor());
        list.setValue(QStringLiteral("bad"), QStringLiteral("12px"));
        list.setValue(QStringLiteral("negative"), -1);
        QCOMPARE(list.serializeCSV(), QStringLiteral("int=-42,uint=4294967295,tenth=0.1,third=0.3333333333333333,angle=-12.345678901234,"
                                                     "opaque=#ff0000,translucent=#800000ff,invalid=,bad=12px,negative=-1"));

        const RKKeyValuePairList back = roundTripped(list);
        QCOMPARE(back.intValue(QStringLiteral("int")), -42);
        QCOMPARE(back.uintValue(QStringLiteral("uint")), 4294967295u);
        QCOMPARE(back.realValue(QStringLiteral("tenth")), 0.1);
        QCOMPARE(back.realValue(QStringLiteral("third")), 1.0 / 3.0);
        QCOMPARE(back.angleValue(QStringLiteral("angle")).degrees(), -12.345678901234);
        QCOMPARE(back.colorValue(QStringLiteral("opaque")), QColor(255, 0, 0));
        QCOMPARE(back.colorValue(QStringLiteral("translucent")), QColor(0, 0, 255, 128));
        QVERIFY(!back.colorValue(QStringLiteral("invalid")).isValid());
        QCOMPARE(back.uintValue(QStringLiteral("negative")), 0u);
        // Malformed and missing values read as zero / invalid.
        for (const QString& key : {QStringLiteral("bad"), QStringLiteral("absent")}) {
            QCOMPARE((QVector<double>{double(back.intValue(key)), double(back.uintValue(key)), back.realValue(key), back.angleValue(key).degrees()}), QVector<double>(4, 0.0));
            QVERIFY(!back.colorValue(key).isValid());
        }
    }

    void orderingAndHash()
    {
        const RKKeyValuePair a1(QStringLiteral("a"), QStringLiteral("1")), a2(QStringLiteral("a"), QStringLiteral("2")), b0(QStringLiteral("b"), QStringLiteral("0"));
        // By key, then by value; the hash looks at the key only.
        QVERIFY(a1 < a2);
        QVERIFY(a2 < b0);
        QVERIFY(!(a2 < a1));
        QVERIFY(!(a1 < a1));
        QVERIFY(a1 != a2);
        QCOMPARE(a1.hashValue(), a2.hashValue());
        QVERIFY(RKKeyValuePair(QStringLiteral("k"), QString()).isValid());
        RKKeyValuePairList list;
        list.setValue(QStringLiteral("b"), 1);
        list.setValue(QStringLiteral("a"), 2);
        list.sort();
        QCOMPARE(list.serializeCSV(), QStringLiteral("a=2,b=1"));
    }

    void xmlAttributesRoundTrip()
    {
        RKKeyValuePairList list;
        list.setValue(QStringLiteral("zeta"), QStringLiteral("<&\">"));
        list.setValue(QStringLiteral("alpha"), 3);
        QDomDocument document;
        QDomElement element = document.createElement(QStringLiteral("props"));
        document.appendChild(element);
        list.toXml(element);
        QDomDocument reread;
        QVERIFY(reread.setContent(document.toString()));
        RKKeyValuePairList back = RKKeyValuePairList::fromXML(reread.documentElement());
        back.sort();
        list.sort();
        QCOMPARE(back, list);
        QVERIFY(RKKeyValuePairList::fromXML(QDomElement()).isEmpty());

        // Characters XML cannot hold are stored as U+FFFD: the element writes and reads back.
        RKKeyValuePairList bad;
        bad.setValue(QStringLiteral("k"), QStringLiteral("a") + QChar(0) + QChar(0xDC00) + QStringLiteral("b"));
        QDomElement badElement = document.createElement(QStringLiteral("bad"));
        document.documentElement().appendChild(badElement);
        QTest::ignoreMessage(QtWarningMsg, "Characters that XML cannot hold were written as U+FFFD.");
        bad.toXml(badElement);
        QCOMPARE(RKKeyValuePairList::fromXML(badElement).serializeCSV(), QStringLiteral("k=a\uFFFD\uFFFDb"));
        QVERIFY(reread.setContent(document.toString()));
    }
};

QTEST_GUILESS_MAIN(TestKeyValuePair)
#include "test_keyvaluepair.moc"
