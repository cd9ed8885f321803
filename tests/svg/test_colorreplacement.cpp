#include "RKTestSupport.h"

#include <RKColorReplacementInstructions.h>
#include <RKCustomCardColorConfig.h>
#include <RKDirectoryConfig.h>

#include <QDomDocument>
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

RKColorReplacementInstructions table(const QList<QPair<QColor, QColor>>& entries)
{
    RKColorReplacementInstructions instructions;
    for (const auto& entry : entries)
        instructions.insert(entry.first, entry.second);
    return instructions;
}

// Red to half-transparent blue, green to an opaque colour: the table the apply tests use.
RKColorReplacementInstructions redAndGreen()
{
    return table({ { QColor("#ff0000"), HALF_BLUE }, { QColor("#00ff00"), QColor("#112233") } });
}

// Makes `directory` the only resource directory (in place of the shipped data) until destroyed;
// the resource path is emptied in initTestCase().
class DataDirectoryOverride
{
public:
    explicit DataDirectoryOverride(const QString& directory)
        : mySaved(qgetenv("RKXML_DATA_DIR"))
    {
        qputenv("RKXML_DATA_DIR", directory.toLocal8Bit());
        RKDirectoryConfig::instance().reload();
    }
    ~DataDirectoryOverride()
    {
        qputenv("RKXML_DATA_DIR", mySaved);
        RKDirectoryConfig::instance().reload();
    }

private:
    QByteArray mySaved;
};
}

Q_DECLARE_METATYPE(RKColorReplacementInstructions)

class TestColorReplacement : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        qputenv("RKXML_RESOURCE_PATH", QByteArray());
        RKDirectoryConfig::instance().reload();
    }

    // The row's element alone in an svg document, after the red-and-green table is applied.
    void apply_data()
    {
        QTest::addColumn<QString>("element");
        QTest::addColumn<QString>("expected"); // empty: the element stays as written

        QTest::newRow("upper case source, translucent target") << "<rect fill=\"#FF0000\" stroke=\"#FF0000\"/>"
            << "<rect fill=\"#0000ff\" fill-opacity=\"0.501961\" stroke=\"#0000ff\" stroke-opacity=\"0.501961\"/>";
        QTest::newRow("opaque target") << "<rect fill=\"#00ff00\" stroke=\"#00ff00\"/>" << "<rect fill=\"#112233\" stroke=\"#112233\"/>";
        QTest::newRow("three digits untouched") << "<rect fill=\"#f00\" stroke=\"#f00\"/>" << "";
        QTest::newRow("unknown colour untouched") << "<rect fill=\"#123456\" stroke=\"#123456\"/>" << "";
        // Entries are tried in ARGB order (green before red); only the first found is applied.
        QTest::newRow("first entry only") << "<rect fill=\"#ff0000 #00FF00\" stroke=\"#ff0000 #00FF00\"/>"
            << "<rect fill=\"#ff0000 #112233\" stroke=\"#ff0000 #112233\"/>";
        QTest::newRow("every occurrence") << "<rect fill=\"#ff0000,#FF0000\" stroke=\"#ff0000,#FF0000\"/>"
            << "<rect fill=\"#0000ff,#0000ff\" fill-opacity=\"0.501961\" stroke=\"#0000ff,#0000ff\" stroke-opacity=\"0.501961\"/>";

        QTest::newRow("style: upper case source, opacity replaced, other property kept")
            << "<rect style=\"stop-color:#FF0000; stop-opacity:1;font-size:3px\"/>"
            << "<rect style=\"stop-color:#0000ff;stop-opacity:0.501961;font-size:3px\"/>";
        QTest::newRow("style: blanks, empty and broken declarations dropped") << "<rect style=\" fill : #00ff00 ;stroke:#ff0000;;broken\"/>"
            << "<rect style=\"fill:#112233;stroke:#0000ff;stroke-opacity:0.501961\"/>";
        // Not a colour property, and no replacement at all: the style stays as written.
        QTest::newRow("style: colour in another property") << "<rect style=\"font-family:'#ff0000'; fill:red\"/>" << "";
        QTest::newRow("style: any -color property") << "<rect style=\"flood-color:#ff0000\"/>"
            << "<rect style=\"flood-color:#0000ff;flood-opacity:0.501961\"/>";
        // Already in joined form: only the colour properties change, in place.
        QTest::newRow("style: joined form changed in place") << "<rect style=\"fill:#00FF00;stroke:#abcdef;font-family:x#00ff00\"/>"
            << "<rect style=\"fill:#112233;stroke:#abcdef;font-family:x#00ff00\"/>";
        QTest::newRow("style: trailing semicolon dropped") << "<rect style=\"fill:#00ff00;\"/>" << "<rect style=\"fill:#112233\"/>";
    }

    void apply()
    {
        QFETCH(QString, element);
        QFETCH(QString, expected);
        QDomDocument document = parse(QStringLiteral("<svg>%1</svg>").arg(element));
        redAndGreen().apply(document);
        QCOMPARE(canonicalLine(document), QStringLiteral("<svg>%1</svg>").arg(expected.isEmpty() ? element : expected));
    }

    void disAssembleStyle()
    {
        QCOMPARE(RKColorReplacementInstructions().disAssembleStyle(QStringLiteral(" fill : #00ff00 ;stroke:a:b;;x")),
            (QHash<QString, QString>{ { "fill", "#00ff00" }, { "stroke", "a:b" } }));
    }

    void extractAndApplyLookAtTheSamePlaces_data()
    {
        QTest::addColumn<QString>("svg");
        QTest::addColumn<QString>("colors"); // found, in ARGB order
        // The whole tree: text and comment children passed over, the element after a subtree reached.
        QTest::newRow("fill, stroke, style; other attributes and short forms ignored") << QStringLiteral(
            "<svg fill=\"#FF0000\"><g stroke=\"#00ff00\">text<!-- c --><rect style=\"fill:#0000FF;stop-color:#123456\" opacity=\"#abcdef\"/>"
            "<rect fill=\"red\" stroke=\"#abc\"/></g><rect style=\"fill:#ff0000\"/></svg>") << "#0000ff #00ff00 #123456 #ff0000";
        QTest::newRow("color property (currentColor)") << "<svg><g style=\"color:#000000;fill:currentColor\"/></svg>" << "#000000";
        QTest::newRow("property name in upper case") << "<svg><g style=\"FILL:#102030\"/></svg>" << "#102030";
        QTest::newRow("not a colour property") << "<svg><g style=\"font-family:#abcdef;-inkscape-x:#123456\"/></svg>" << "";
    }

    void extractAndApplyLookAtTheSamePlaces()
    {
        QFETCH(QString, svg);
        QFETCH(QString, colors);
        QDomDocument document = parse(svg);
        RKColorReplacementInstructions found;
        found.extract(document);
        QVERIFY(!found.containsReplacements());
        QStringList names;
        RKColorReplacementInstructions swap;
        QSet<quint32> targets;
        for (quint32 argb : found.replacements().keys()) {
            names << QColor::fromRgba(argb).name();
            const quint32 inverse = ~argb | 0xff000000u;
            targets.insert(inverse);
            // Given with 12 bits per channel ("ab" as "aba"): stored, written and matched as 8 bits.
            const QString name = QColor::fromRgba(inverse).name();
            QString twelveBits = QStringLiteral("#");
            for (int i = 1; i < 7; i += 2)
                twelveBits += name.mid(i, 2) + name.at(i);
            swap.insert(QColor::fromRgba(argb), QColor(twelveBits));
        }
        QCOMPARE(names.join(QLatin1Char(' ')), colors);
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

    void xmlRoundTrip_data()
    {
        QTest::addColumn<RKColorReplacementInstructions>("instructions");
        QTest::addColumn<bool>("withGroup");
        const RKColorReplacementInstructions mixed = table({ { QColor("#ff0000"), HALF_BLUE },
            { QColor("#00ff00"), QColor("#112233") }, { QColor(1, 2, 3, 4), QColor("#ffffff") } });
        QTest::newRow("grouped") << mixed << true;
        QTest::newRow("flat") << mixed << false;
        QTest::newRow("empty") << RKColorReplacementInstructions() << true;
    }

    void xmlRoundTrip()
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
    }

    void fromXmlSkipsGarbage()
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

    void matches_data()
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

        QTest::newRow("empty, unedited") << empty << unedited << true << true;
        QTest::newRow("empty, edited") << empty << edited << false << false;
        QTest::newRow("two unedited tables") << unedited << otherUnedited << false << false;
        QTest::newRow("same edits") << edited << table({ { QColor("#ff0000"), QColor("#0000ff") } }) << true << true;
        QTest::newRow("alpha differs") << edited << editedAlpha << false << false;
        QTest::newRow("unedited, edited") << unedited << edited << false << false;
    }

    void matches()
    {
        QFETCH(RKColorReplacementInstructions, left);
        QFETCH(RKColorReplacementInstructions, right);
        QFETCH(bool, leftMatchesRight);
        QFETCH(bool, rightMatchesLeft);
        QCOMPARE(left.matches(right), leftMatchesRight);
        QCOMPARE(right.matches(left), rightMatchesLeft);
    }

    void shippedCardColors()
    {
        const RKCustomCardColorConfig config;
        const RKNamedColorList colors = config.colors();
        QVERIFY(colors.size() >= 24);
        QSet<QString> names;
        QSet<QRgb> values;
        RKCssSheetTitleIdMap sheets; // one generated sheet per colour, nothing else
        for (const RKNamedColor& color : colors) {
            QVERIFY(color.isValid());
            QVERIFY(!color.name().isEmpty());
            names.insert(color.name());
            values.insert(color.color().rgba());
            const QString title = QStringLiteral("customColor") + color.color().name();
            sheets.insert(title, title + QStringLiteral(".css"));
        }
        QCOMPARE(names.size(), colors.size());
        QCOMPARE(values.size(), colors.size());
        QCOMPARE(config.cssSheets(), sheets);
    }

    void cardColorsWithGarbage()
    {
        QTemporaryDir dir;
        writeTestFile(dir.filePath(QStringLiteral("colors.xml")),
            "<colors><color rgb=\"#112233\" name=\"Night\"/><color rgb=\"notacolor\" name=\"Bad\"/>"
            "<group><color rgb=\"#ABCDEF\" name=\"Pale\"/><color name=\"No rgb\"/></group>"
            "<color rgb=\"#12345\" name=\"Short\"/></colors>");
        const DataDirectoryOverride resources(dir.path());
        QTest::ignoreMessage(QtDebugMsg, "custom card colour skipped, not a colour: \"notacolor\"");
        QTest::ignoreMessage(QtDebugMsg, "custom card colour skipped, not a colour: \"\"");
        QTest::ignoreMessage(QtDebugMsg, "custom card colour skipped, not a colour: \"#12345\"");
        const RKCustomCardColorConfig config;
        QCOMPARE(config.colors(), (RKNamedColorList{ RKNamedColor(QColor("#112233"), "Night"), RKNamedColor(QColor("#abcdef"), "Pale") }));
        QCOMPARE(config.cssSheets().keys(), (QStringList{ "customColor#112233", "customColor#abcdef" }));
    }

    void cardColorsMissingFile()
    {
        QTemporaryDir dir;
        const DataDirectoryOverride resources(dir.path());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Could not read XML file .*colors\\.xml")));
        const RKCustomCardColorConfig config;
        QVERIFY(config.colors().isEmpty());
        QVERIFY(config.cssSheets().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestColorReplacement)
#include "test_colorreplacement.moc"
