#include "RKTestSupport.h"

#include <RKKeyValuePair.h>

#include <QRandomGenerator>

class TestKeyValuePair : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void escapingRoundTrips_data();
    void escapingRoundTrips();
    void randomTextsRoundTrip();
    void splitsAtFirstUnescapedEquals();
    void undecodablePieces_data();
    void undecodablePieces();
    void setValueKeepsPositionAndUniqueness();
    void typedValuesRoundTrip();
    void missingAndMalformedValues();
    void orderingAndHash();
    void xmlAttributesRoundTrip();
};

void TestKeyValuePair::escapingRoundTrips_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::newRow("all specials") << QStringLiteral("k") << QStringLiteral("a=b,c/d\\");
    QTest::newRow("escaped-looking text") << QStringLiteral("\\,") << QStringLiteral("\\\\/\\=");
    QTest::newRow("empty value") << QStringLiteral("empty") << QString();
    QTest::newRow("key with specials") << QStringLiteral("a=b/c") << QStringLiteral("x");
    QTest::newRow("trailing backslash in key") << QStringLiteral("k\\") << QStringLiteral("=v");
    QTest::newRow("unicode") << QString::fromUtf8("Größe") << QString::fromUtf8("Ä,ö=ü");
}

void TestKeyValuePair::escapingRoundTrips()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QCOMPARE(RKKeyValuePair::unEscaped(RKKeyValuePair::escaped(value)), value);

    RKKeyValuePairList list;
    list.setValue(QStringLiteral("first"), QStringLiteral("1"));
    list.setValue(key, value);
    list.setValue(QStringLiteral("last"), QStringLiteral("/"));
    const QString text = list.serializeCSV();
    const RKKeyValuePairList back = RKKeyValuePairList::deserialize(text);
    QCOMPARE(back.count(), 3);
    QCOMPARE(back.value(key), value);
    QVERIFY(back == list);
    QCOMPARE(back.serializeCSV(), text);
}

void TestKeyValuePair::randomTextsRoundTrip()
{
    // Texts made only of the special characters are where an escaping order mistake shows.
    QRandomGenerator random(20240611);
    const QString alphabet = QStringLiteral("\\,=/a");
    for (int round = 0; round < 2000; ++round) {
        RKKeyValuePairList list;
        const int pairs = 1 + random.bounded(4);
        for (int p = 0; p < pairs; ++p) {
            QString key, value;
            const int keyLength = 1 + random.bounded(6);
            for (int i = 0; i < keyLength; ++i)
                key += alphabet.at(random.bounded(alphabet.size()));
            const int valueLength = random.bounded(7);
            for (int i = 0; i < valueLength; ++i)
                value += alphabet.at(random.bounded(alphabet.size()));
            list.setValue(key, value);
        }
        const RKKeyValuePairList back = RKKeyValuePairList::deserialize(list.serializeCSV());
        if (back != list)
            QFAIL(qPrintable(QStringLiteral("round trip changed ") + list.serializeCSV()));
    }
}

void TestKeyValuePair::splitsAtFirstUnescapedEquals()
{
    const RKKeyValuePair pair = RKKeyValuePair::deserializeCSV(QStringLiteral("a\\=b=c=d"));
    QCOMPARE(pair.key(), QStringLiteral("a=b"));
    QCOMPARE(pair.value(), QStringLiteral("c=d"));
    // An escaped backslash does not escape the "=" after it.
    const RKKeyValuePair slash = RKKeyValuePair::deserializeCSV(QStringLiteral("a\\\\=b"));
    QCOMPARE(slash.key(), QStringLiteral("a\\"));
    QCOMPARE(slash.value(), QStringLiteral("b"));
    QCOMPARE(RKKeyValuePair(QStringLiteral("x,y"), QStringLiteral("1/2")).serializeCSV(), QStringLiteral("x\\,y=1\\/2"));
}

void TestKeyValuePair::undecodablePieces_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("warnings");
    QTest::addColumn<int>("count");
    QTest::newRow("empty text") << QString() << QStringList() << 0;
    QTest::newRow("trailing comma") << QStringLiteral("a=1,") << QStringList{QStringLiteral("Error decoding ")} << 2;
    QTest::newRow("no equals") << QStringLiteral("abc") << QStringList{QStringLiteral("Error decoding abc")} << 1;
    QTest::newRow("only escaped equals") << QStringLiteral("a\\=b,c=d") << QStringList{QStringLiteral("Error decoding a\\=b")} << 2;
    QTest::newRow("escaped comma stays inside") << QStringLiteral("a=1\\,2") << QStringList() << 1;
}

void TestKeyValuePair::undecodablePieces()
{
    QFETCH(QString, text);
    QFETCH(QStringList, warnings);
    QFETCH(int, count);
    for (const QString& warning : warnings)
        QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
    const RKKeyValuePairList list = RKKeyValuePairList::deserialize(text);
    QCOMPARE(list.count(), count);
    if (!warnings.isEmpty()) {
        bool sawEmpty = false;
        for (const RKKeyValuePair& pair : list.pairs())
            sawEmpty = sawEmpty || (pair == RKKeyValuePair() && !pair.isValid());
        QVERIFY(sawEmpty);
    }
}

void TestKeyValuePair::setValueKeepsPositionAndUniqueness()
{
    RKKeyValuePairList list;
    list.setValue(QStringLiteral("a"), QStringLiteral("1"));
    list.setValue(QStringLiteral("b"), QStringLiteral("2"));
    list.setValue(QStringLiteral("c"), QStringLiteral("3"));
    list.setValue(QStringLiteral("a"), QStringLiteral("changed"));
    list.setValue(QStringLiteral("d"), 4);
    QCOMPARE(list.serializeCSV(), QStringLiteral("a=changed,b=2,c=3,d=4"));
    QCOMPARE(list.count(), 4);
    list.sort();
    QCOMPARE(list.at(0).key(), QStringLiteral("a"));
}

void TestKeyValuePair::typedValuesRoundTrip()
{
    RKKeyValuePairList list;
    list.setValue(QStringLiteral("int"), -42);
    list.setValue(QStringLiteral("uint"), 4294967295u);
    list.setValue(QStringLiteral("tenth"), 0.1);
    list.setValue(QStringLiteral("huge"), 1e300);
    list.setValue(QStringLiteral("third"), 1.0 / 3.0);
    list.setValue(QStringLiteral("angle"), RKAngle(-12.345678901234));
    list.setValue(QStringLiteral("opaque"), QColor(255, 0, 0));
    list.setValue(QStringLiteral("translucent"), QColor(0, 0, 255, 128));
    list.setValue(QStringLiteral("invalid"), QColor());
    QCOMPARE(list.value(QStringLiteral("tenth")), QStringLiteral("0.1"));
    QCOMPARE(list.value(QStringLiteral("opaque")), QStringLiteral("#ff0000"));
    QCOMPARE(list.value(QStringLiteral("translucent")), QStringLiteral("#800000ff"));

    const RKKeyValuePairList back = RKKeyValuePairList::deserialize(list.serializeCSV());
    QCOMPARE(back.intValue(QStringLiteral("int")), -42);
    QCOMPARE(back.uintValue(QStringLiteral("uint")), 4294967295u);
    QCOMPARE(back.realValue(QStringLiteral("tenth")), 0.1);
    QCOMPARE(back.realValue(QStringLiteral("huge")), 1e300);
    QCOMPARE(back.realValue(QStringLiteral("third")), 1.0 / 3.0);
    QCOMPARE(back.angleValue(QStringLiteral("angle")).degrees(), -12.345678901234);
    QCOMPARE(back.colorValue(QStringLiteral("opaque")), QColor(255, 0, 0));
    QCOMPARE(back.colorValue(QStringLiteral("translucent")), QColor(0, 0, 255, 128));
    QVERIFY(!back.colorValue(QStringLiteral("invalid")).isValid());
}

void TestKeyValuePair::missingAndMalformedValues()
{
    RKKeyValuePairList list;
    list.setValue(QStringLiteral("bad"), QStringLiteral("12px"));
    for (const QString& key : {QStringLiteral("bad"), QStringLiteral("absent")}) {
        QCOMPARE(list.intValue(key), 0);
        QCOMPARE(list.uintValue(key), 0u);
        QCOMPARE(list.realValue(key), 0.0);
        QCOMPARE(list.angleValue(key).degrees(), 0.0);
        QVERIFY(!list.colorValue(key).isValid());
    }
    QVERIFY(list.value(QStringLiteral("absent")).isEmpty());
    list.setValue(QStringLiteral("negative"), -1);
    QCOMPARE(list.uintValue(QStringLiteral("negative")), 0u);
}

void TestKeyValuePair::orderingAndHash()
{
    const RKKeyValuePair a1(QStringLiteral("a"), QStringLiteral("1"));
    const RKKeyValuePair a2(QStringLiteral("a"), QStringLiteral("2"));
    const RKKeyValuePair b0(QStringLiteral("b"), QStringLiteral("0"));
    QVERIFY(a1 < a2 && a2 < b0 && !(a2 < a1) && !(a1 < a1));
    QVERIFY(a1 != a2);
    QCOMPARE(a1.hashValue(), a2.hashValue());
    QCOMPARE(a1.hashValue(), qHash(QStringLiteral("a"), 0));
    QVERIFY(!RKKeyValuePair().isValid());
    QVERIFY(RKKeyValuePair(QStringLiteral("k"), QString()).isValid());
}

void TestKeyValuePair::xmlAttributesRoundTrip()
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
}

QTEST_GUILESS_MAIN(TestKeyValuePair)
#include "test_keyvaluepair.moc"
