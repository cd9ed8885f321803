#include "RKTestSupport.h"

#include <RKColorReplacementInstructions.h>
#include <RKCssSheetCache.h>
#include <RKCustomCardColorConfig.h>
#include <RKDirectoryConfig.h>

#include <QDomDocument>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

namespace {
const QColor HALF_BLUE(0, 0, 255, 128);

QDomDocument parse(const QString& text)
{
    QDomDocument document;
    document.setContent(text);
    return document;
}

QDomElement byId(const QDomDocument& document, const QString& id)
{
    for (QDomElement e = document.documentElement(); !e.isNull();) {
        if (e.attribute(QStringLiteral("id")) == id)
            return e;
        QDomElement next = e.firstChildElement();
        while (next.isNull() && !e.isNull()) {
            next = e.nextSiblingElement();
            if (next.isNull())
                e = e.parentNode().toElement();
        }
        e = next;
    }
    return QDomElement();
}

RKColorReplacementInstructions table(const QList<QPair<QColor, QColor>>& entries)
{
    RKColorReplacementInstructions instructions;
    for (const auto& entry : entries)
        instructions.insert(entry.first, entry.second);
    return instructions;
}

// Points the resource look-up at `directory` only (nothing shipped) until destroyed.
class ResourceOverride
{
public:
    explicit ResourceOverride(const QString& directory)
        : mySavedPath(qgetenv("RKXML_RESOURCE_PATH"))
        , mySavedData(qgetenv("RKXML_DATA_DIR"))
    {
        qputenv("RKXML_RESOURCE_PATH", directory.toLocal8Bit());
        qputenv("RKXML_DATA_DIR", myEmpty.path().toLocal8Bit());
        RKDirectoryConfig::instance().reload();
    }
    ~ResourceOverride()
    {
        qputenv("RKXML_RESOURCE_PATH", mySavedPath);
        qputenv("RKXML_DATA_DIR", mySavedData);
        RKDirectoryConfig::instance().reload();
    }

private:
    QTemporaryDir myEmpty;
    QByteArray mySavedPath;
    QByteArray mySavedData;
};
}

Q_DECLARE_METATYPE(RKColorReplacementInstructions)

class TestColorReplacement : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void applyAttributes_data();
    void applyAttributes();
    void applyStyle();
    void applyWalksWholeTree();
    void extractAndApplyLookAtTheSamePlaces_data();
    void extractAndApplyLookAtTheSamePlaces();
    void identityTableChangesNothing();
    void xmlRoundTrip_data();
    void xmlRoundTrip();
    void fromXmlSkipsGarbage();
    void matches_data();
    void matches();

    void shippedCardColors();
    void cardColorsWithGarbage();
    void cardColorsMissingFile();
};

void TestColorReplacement::initTestCase()
{
    isolateUserFiles();
    RKDirectoryConfig::instance().reload();
}

void TestColorReplacement::applyAttributes_data()
{
    QTest::addColumn<QString>("fill");
    QTest::addColumn<QString>("expectedFill");
    QTest::addColumn<QString>("expectedOpacity"); // empty: no opacity attribute

    QTest::newRow("upper case source, translucent target") << "#FF0000" << "#0000ff" << "0.501961";
    QTest::newRow("opaque target") << "#00ff00" << "#112233" << "";
    QTest::newRow("keyword untouched") << "red" << "red" << "";
    QTest::newRow("three digits untouched") << "#f00" << "#f00" << "";
    QTest::newRow("unknown colour untouched") << "#123456" << "#123456" << "";
    QTest::newRow("gradient reference untouched") << "url(#grad)" << "url(#grad)" << "";
    // Entries are tried in ARGB order (green before red); only the first found is applied.
    QTest::newRow("first entry only") << "#ff0000 #00FF00" << "#ff0000 #112233" << "";
    QTest::newRow("every occurrence") << "#ff0000,#FF0000" << "#0000ff,#0000ff" << "0.501961";
}

void TestColorReplacement::applyAttributes()
{
    QFETCH(QString, fill);
    QFETCH(QString, expectedFill);
    QFETCH(QString, expectedOpacity);

    const RKColorReplacementInstructions instructions
        = table({ { QColor("#ff0000"), HALF_BLUE }, { QColor("#00ff00"), QColor("#112233") } });
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("svg"));
    document.appendChild(root);
    QDomElement rect = document.createElement(QStringLiteral("rect"));
    rect.setAttribute(QStringLiteral("fill"), fill);
    rect.setAttribute(QStringLiteral("stroke"), fill);
    root.appendChild(rect);

    instructions.apply(document);
    QCOMPARE(rect.attribute(QStringLiteral("fill")), expectedFill);
    QCOMPARE(rect.attribute(QStringLiteral("stroke")), expectedFill);
    QCOMPARE(rect.hasAttribute(QStringLiteral("fill-opacity")), !expectedOpacity.isEmpty());
    QCOMPARE(rect.attribute(QStringLiteral("fill-opacity")), expectedOpacity);
    QCOMPARE(rect.attribute(QStringLiteral("stroke-opacity")), expectedOpacity);
}

void TestColorReplacement::applyStyle()
{
    const RKColorReplacementInstructions instructions
        = table({ { QColor("#ff0000"), HALF_BLUE }, { QColor("#00ff00"), QColor("#112233") } });
    QDomDocument document = parse(QStringLiteral(
        "<svg><stop id=\"a\" style=\"stop-color:#FF0000; stop-opacity:1;font-size:3px\"/>"
        "<rect id=\"b\" style=\" fill : #00ff00 ;stroke:#ff0000;;broken\"/>"
        "<rect id=\"c\" style=\"font-family:'#ff0000'; fill:red\"/>"
        "<rect id=\"d\" style=\"flood-color:#ff0000\"/>"
        "<rect id=\"e\" style=\"fill:#00FF00;stroke:#abcdef;font-family:x#00ff00\"/>"
        "<rect id=\"f\" style=\"fill:#00ff00;\"/><rect id=\"g\" style=\"fill:#00ff00;stroke:#ff0000;stroke-opacity:1\"/></svg>"));
    instructions.apply(document);
    QCOMPARE(byId(document, "a").attribute("style"), QStringLiteral("stop-color:#0000ff;stop-opacity:0.501961;font-size:3px"));
    QCOMPARE(byId(document, "b").attribute("style"), QStringLiteral("fill:#112233;stroke:#0000ff;stroke-opacity:0.501961"));
    // Not a colour property, and no replacement at all: the style stays as written.
    QCOMPARE(byId(document, "c").attribute("style"), QStringLiteral("font-family:'#ff0000'; fill:red"));
    QCOMPARE(byId(document, "d").attribute("style"), QStringLiteral("flood-color:#0000ff;flood-opacity:0.501961"));
    // Already in joined form: only the colour properties change, in place.
    QCOMPARE(byId(document, "e").attribute("style"), QStringLiteral("fill:#112233;stroke:#abcdef;font-family:x#00ff00"));
    QCOMPARE(byId(document, "f").attribute("style"), QStringLiteral("fill:#112233"));
    QCOMPARE(byId(document, "g").attribute("style"), QStringLiteral("fill:#112233;stroke:#0000ff;stroke-opacity:0.501961"));

    const QHash<QString, QString> split = instructions.disAssembleStyle(QStringLiteral(" fill : #00ff00 ;stroke:a:b;;x"));
    QCOMPARE(split.size(), 2);
    QCOMPARE(split.value(QStringLiteral("fill")), QStringLiteral("#00ff00"));
    QCOMPARE(split.value(QStringLiteral("stroke")), QStringLiteral("a:b"));
}

void TestColorReplacement::applyWalksWholeTree()
{
    QString text = QStringLiteral("<svg fill=\"#ff0000\">");
    for (int i = 0; i < 50; ++i)
        text += QStringLiteral("<g id=\"g%1\" stroke=\"#ff0000\">text<!-- c -->").arg(i);
    text += QStringLiteral("<rect id=\"leaf\" fill=\"#ff0000\"/>");
    for (int i = 0; i < 50; ++i)
        text += QStringLiteral("</g><rect id=\"s%1\" style=\"fill:#ff0000\"/>").arg(i);
    text += QStringLiteral("</svg>");
    QDomDocument document = parse(text);
    table({ { QColor("#ff0000"), QColor("#00ff00") } }).apply(document);
    QVERIFY(!document.toString().contains(QStringLiteral("#ff0000")));
    QCOMPARE(document.toString().count(QStringLiteral("#00ff00")), 102);
    QCOMPARE(byId(document, "s49").attribute("style"), QStringLiteral("fill:#00ff00"));
}

void TestColorReplacement::extractAndApplyLookAtTheSamePlaces_data()
{
    QTest::addColumn<QString>("svg");
    QTest::addColumn<int>("colors");
    QTest::newRow("fill, stroke, style; other attributes and short forms ignored") << QStringLiteral(
        "<svg fill=\"#FF0000\"><g stroke=\"#00ff00\"><rect style=\"fill:#0000FF;stop-color:#123456\" opacity=\"#abcdef\"/>"
        "<rect fill=\"red\" stroke=\"#abc\"/></g></svg>") << 4;
    QTest::newRow("keywords only") << QStringLiteral("<svg fill=\"red\"><rect style=\"fill:red\"/></svg>") << 0;
    QTest::newRow("color property (currentColor)") << QStringLiteral("<svg><g style=\"color:#000000;fill:currentColor\"/></svg>") << 1;
    QTest::newRow("property name in upper case") << QStringLiteral("<svg><g style=\"FILL:#102030\"/></svg>") << 1;
    QTest::newRow("stop-color and fill together") << QStringLiteral("<svg><g style=\"stop-color:#ff0000;fill:#00ff00\" stroke=\"#0000FF\"/></svg>") << 3;
    QTest::newRow("not a colour property") << QStringLiteral("<svg><g style=\"font-family:#abcdef;-inkscape-x:#123456\"/></svg>") << 0;
    QTest::newRow("upper-case attribute colour") << QStringLiteral("<svg><g fill=\"#FFFFFF\"/></svg>") << 1;
}

void TestColorReplacement::extractAndApplyLookAtTheSamePlaces()
{
    QFETCH(QString, svg);
    QFETCH(int, colors);
    QDomDocument document = parse(svg);
    RKColorReplacementInstructions found;
    found.extract(document);
    QCOMPARE(found.size(), colors);
    QVERIFY(!found.containsReplacements());
    RKColorReplacementInstructions swap;
    QSet<quint32> targets;
    for (quint32 argb : found.replacements().keys()) {
        const quint32 inverse = ~argb | 0xff000000u;
        targets.insert(inverse);
        // Given with 12 bits per channel ("ab" as "aba"): stored, written and matched as 8 bits.
        const QString name = QColor::fromRgba(inverse).name();
        QString twelveBits = QStringLiteral("#");
        for (int i = 1; i < 7; i += 2)
            twelveBits += name.mid(i, 2) + name.at(i);
        swap.insert(QColor::fromRgba(argb), QColor(twelveBits));
    }
    swap.apply(document);
    RKColorReplacementInstructions after;
    after.extract(document);
    const QList<quint32> keys = after.replacements().keys();
    QCOMPARE(QSet<quint32>(keys.begin(), keys.end()), targets);
    QDomDocument written;
    QDomElement root = written.createElement(QStringLiteral("r"));
    swap.toXML(root, true);
    QVERIFY(RKColorReplacementInstructions::fromXML(root).matches(swap));
}

void TestColorReplacement::identityTableChangesNothing()
{
    const QString text = QStringLiteral(
        "<svg><rect fill=\"#FF0000\" style=\"fill:#FF0000 ; stroke: #00ff00\"/><circle stroke=\"#00ff00\"/></svg>");
    QDomDocument document = parse(text);
    RKColorReplacementInstructions instructions;
    instructions.extract(document);
    const QString before = document.toString();
    instructions.apply(document);
    // Sources come back lower-cased, nothing else changes and no opacity appears.
    QCOMPARE(document.toString(), QString(before).replace(QStringLiteral("#FF0000"), QStringLiteral("#ff0000"))
                                      .replace(QStringLiteral("fill:#ff0000 ; stroke: #00ff00"),
                                          QStringLiteral("fill:#ff0000;stroke:#00ff00")));
    QVERIFY(!document.toString().contains(QStringLiteral("opacity")));
}

void TestColorReplacement::xmlRoundTrip_data()
{
    QTest::addColumn<RKColorReplacementInstructions>("instructions");
    QTest::addColumn<bool>("withGroup");
    const RKColorReplacementInstructions mixed = table({ { QColor("#ff0000"), HALF_BLUE },
        { QColor("#00ff00"), QColor("#112233") }, { QColor(1, 2, 3, 4), QColor("#ffffff") } });
    QTest::newRow("grouped") << mixed << true;
    QTest::newRow("flat") << mixed << false;
    QTest::newRow("empty") << RKColorReplacementInstructions() << true;
}

void TestColorReplacement::xmlRoundTrip()
{
    QFETCH(RKColorReplacementInstructions, instructions);
    QFETCH(bool, withGroup);
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("image"));
    document.appendChild(root);
    instructions.toXML(root, withGroup);
    QCOMPARE(!root.firstChildElement(QStringLiteral("colors")).isNull(), withGroup);

    const RKColorReplacementInstructions back = RKColorReplacementInstructions::fromXML(parse(document.toString()).documentElement());
    QCOMPARE(back.replacements(), instructions.replacements());
    QVERIFY(back.matches(instructions));
    QCOMPARE(back.containsReplacements(), instructions.containsReplacements());
}

void TestColorReplacement::fromXmlSkipsGarbage()
{
    const RKColorReplacementInstructions instructions = RKColorReplacementInstructions::fromXML(parse(QStringLiteral(
        "<image><colors>"
        "<color source=\"#ff0000\"/>"
        "<color source=\"notacolor\" target=\"#00ff00\"/>"
        "<color source=\"#00ff00\" target=\"#zzzzzz\"/>"
        "<color source=\"#0000ff\" target=\"\"/>"
        "<color source=\"#111111\" target=\"#222222,ZZ\"/>"
        "<color source=\"#333333\" target=\"#444444\"/>"
        "<color source=\"#333333\" target=\"#555555,80\"/>"
        "<other source=\"#666666\" target=\"#777777\"/>"
        "</colors><color source=\"#888888\" target=\"#999999\"/></image>")).documentElement());
    QMap<quint32, QColor> expected;
    expected.insert(QColor("#111111").rgba(), QColor("#222222")); // bad alpha ignored
    expected.insert(QColor("#333333").rgba(), QColor(0x55, 0x55, 0x55, 0x80)); // later entry wins
    QCOMPARE(instructions.replacements(), expected);
}

void TestColorReplacement::matches_data()
{
    QTest::addColumn<RKColorReplacementInstructions>("left");
    QTest::addColumn<RKColorReplacementInstructions>("right");
    QTest::addColumn<bool>("leftMatchesRight");
    QTest::addColumn<bool>("rightMatchesLeft");

    const RKColorReplacementInstructions empty;
    const RKColorReplacementInstructions unedited = table({ { QColor("#ff0000"), QColor("#ff0000") } });
    const RKColorReplacementInstructions otherUnedited = table({ { QColor("#00ff00"), QColor("#00ff00") } });
    const RKColorReplacementInstructions edited = table({ { QColor("#ff0000"), QColor("#0000ff") } });
    const RKColorReplacementInstructions editedAlpha = table({ { QColor("#ff0000"), HALF_BLUE } });

    QTest::newRow("empty, empty") << empty << empty << true << true;
    QTest::newRow("empty, unedited") << empty << unedited << true << true;
    QTest::newRow("empty, edited") << empty << edited << false << false;
    QTest::newRow("two unedited tables") << unedited << otherUnedited << false << false;
    QTest::newRow("same edits") << edited << table({ { QColor("#ff0000"), QColor("#0000ff") } }) << true << true;
    QTest::newRow("alpha differs") << edited << editedAlpha << false << false;
    QTest::newRow("unedited, edited") << unedited << edited << false << false;
}

void TestColorReplacement::matches()
{
    QFETCH(RKColorReplacementInstructions, left);
    QFETCH(RKColorReplacementInstructions, right);
    QFETCH(bool, leftMatchesRight);
    QFETCH(bool, rightMatchesLeft);
    QCOMPARE(left.matches(right), leftMatchesRight);
    QCOMPARE(right.matches(left), rightMatchesLeft);
}

void TestColorReplacement::shippedCardColors()
{
    const RKCustomCardColorConfig config;
    const RKNamedColorList colors = config.colors();
    QVERIFY(colors.size() >= 24);
    QSet<QString> names;
    QSet<QRgb> values;
    for (const RKNamedColor& color : colors) {
        QVERIFY(color.isValid());
        QVERIFY(!color.name().isEmpty());
        names.insert(color.name());
        values.insert(color.color().rgba());
    }
    QCOMPARE(names.size(), colors.size());
    QCOMPARE(values.size(), colors.size());

    const RKCssSheetTitleIdMap sheets = config.cssSheets();
    QCOMPARE(sheets.keys().size(), colors.size());
    for (const RKNamedColor& color : colors) {
        const QString title = QStringLiteral("customColor") + color.color().name();
        QCOMPARE(sheets.value(title), title + QStringLiteral(".css"));
        QCOMPARE(RKSingleton<RKCssSheetCache>::instance().cssString(sheets.value(title)),
            QStringLiteral(".vakoCustomFill{fill: %1;}").arg(color.color().name()));
    }
}

void TestColorReplacement::cardColorsWithGarbage()
{
    QTemporaryDir dir;
    {
        QFile file(dir.filePath(QStringLiteral("colors.xml")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("<colors><color rgb=\"#112233\" name=\"Night\"/><color rgb=\"notacolor\" name=\"Bad\"/>"
                   "<group><color rgb=\"#ABCDEF\" name=\"Pale\"/><color name=\"No rgb\"/></group>"
                   "<color rgb=\"#12345\" name=\"Short\"/></colors>");
    }
    const ResourceOverride resources(dir.path());
    QTest::ignoreMessage(QtDebugMsg, "custom card colour skipped, not a colour: \"notacolor\"");
    QTest::ignoreMessage(QtDebugMsg, "custom card colour skipped, not a colour: \"\"");
    QTest::ignoreMessage(QtDebugMsg, "custom card colour skipped, not a colour: \"#12345\"");
    const RKCustomCardColorConfig config;
    QCOMPARE(config.colors(), (RKNamedColorList{ RKNamedColor(QColor("#112233"), "Night"), RKNamedColor(QColor("#abcdef"), "Pale") }));
    QCOMPARE(config.cssSheets().keys(), (QStringList{ "customColor#112233", "customColor#abcdef" }));
}

void TestColorReplacement::cardColorsMissingFile()
{
    QTemporaryDir dir;
    const ResourceOverride resources(dir.path());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Could not read XML file .*colors\\.xml")));
    const RKCustomCardColorConfig config;
    QVERIFY(config.colors().isEmpty());
    QVERIFY(config.cssSheets().isEmpty());
}

QTEST_GUILESS_MAIN(TestColorReplacement)
#include "test_colorreplacement.moc"
