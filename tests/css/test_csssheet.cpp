#include "RKTestSupport.h"

#include <RKCssSheet.h>
#include <RKCssSheetCache.h>
#include <RKSingleton.h>
#include <RKCssSheetParser.h>
#include <RKCssSheetTitleIdMap.h>
#include <RKDirectoryConfig.h>
#include <RKFileHandler.h>
#include <RKXMLLoader.h>

#include <QDomDocument>
#include <QTemporaryDir>

namespace {
QString fixture(const QString& name)
{
    return QDir::cleanPath(testDataPath(QStringLiteral("css/") + name));
}

// The whole map as text: "title=id" entries in title order, then the stored default, the standard
// and the custom sheet where set. Ids below the fixture directory are written relative to it.
QString describe(const RKCssSheetTitleIdMap& map)
{
    const QDir fixtures(fixture(QString()));
    QStringList text;
    for (const QString& title : map.keys())
        text << title + QLatin1Char('=') + fixtures.relativeFilePath(map.value(title));
    if (map.hasExplicitDefaultCssSheet())
        text << QStringLiteral("default ") + map.defaultCssSheetTitle();
    if (!map.standardSheet().isEmpty())
        text << QStringLiteral("standard ") + fixtures.relativeFilePath(map.standardSheet());
    if (!map.customCssSheet().isEmpty())
        text << QStringLiteral("custom ") + map.customCssSheet();
    return text.join(QStringLiteral("; "));
}

QDomProcessingInstruction instruction(const QString& data)
{
    QDomDocument document;
    return document.createProcessingInstruction(QStringLiteral("xml-stylesheet"), data);
}
}

class TestCssSheet : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        RKDirectoryConfig::instance().reload();
    }

    void sheetId_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("id");
        QTest::newRow("below glintora") << "/opt/app/glintora/css/default.css" << "css/default.css";
        QTest::newRow("last glintora wins") << "/a/glintora/b/glintora/c.css" << "c.css";
        QTest::newRow("case-sensitive") << "/a/Glintora/c.css" << "/a/Glintora/c.css";
        QTest::newRow("no trailing slash") << "/a/glintora" << "/a/glintora";
    }

    void sheetId()
    {
        QFETCH(QString, path);
        QFETCH(QString, id);
        QCOMPARE(RKCssSheet(QFileInfo(path)).id(), id);
    }

    void sheetFromInstruction()
    {
        const QDir base(testDataPath(QStringLiteral("css")));
        const RKCssSheet last(instruction(QStringLiteral("href=\"alpha.css\" title=\"A\" href = \"beta.css\"")), base);
        QCOMPARE(last.fileInfo().absoluteFilePath(), fixture(QStringLiteral("beta.css")));
        QVERIFY(last.isValid());

        const RKCssSheet none(instruction(QStringLiteral("title=\"A\"")), base);
        QVERIFY(none.fileInfo().filePath().isEmpty());
        QVERIFY(!none.isValid());
        QVERIFY(none.id().isEmpty());

        const RKCssSheet missing(instruction(QStringLiteral("href=\"nothere.css\"")), base);
        QVERIFY(!missing.isValid());
        QCOMPARE(missing.id(), fixture(QStringLiteral("nothere.css")));
    }

    void readCss()
    {
        // The substitution is case-sensitive: the last rule keeps its font.
        QCOMPARE(RKCssSheet(QFileInfo(fixture(QStringLiteral("strangefont.css")))).readCssFromFile(),
            QStringLiteral(".title { font-family: 'Arial Narrow','Times New Roman'; }\n"
                           ".sub { font-family: 'Arial Narrow','Times New Roman'; font-size: 8px; }\n"
                           ".other { font-family: function-light; }\n"));

        // Only ".css" in lower case is a style sheet: no read, a null string.
        const QString upper = RKCssSheet(QFileInfo(fixture(QStringLiteral("upper.CSS")))).readCssFromFile();
        QVERIFY(upper.isNull());
    }

    void badBytesCostOnlyThemselves_data()
    {
        QTest::addColumn<QByteArray>("bad");
        QTest::addColumn<QString>("read"); // one replacement character for each byte outside a character
        QTest::newRow("NUL") << QByteArray(1, '\0') << QStringLiteral("\uFFFD");
        QTest::newRow("overlong slash") << QByteArray("\xC0\xAF") << QStringLiteral("\uFFFD\uFFFD");
        QTest::newRow("encoded surrogate") << QByteArray("\xED\xA0\x80") << QStringLiteral("\uFFFD\uFFFD\uFFFD");
        QTest::newRow("Latin-1 letters") << QByteArray("Gr\xfc\xdf") << QStringLiteral("Gr\uFFFD\uFFFD");
    }

    void badBytesCostOnlyThemselves()
    {
        QFETCH(QByteArray, bad);
        QFETCH(QString, read);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("bad.css"));
        const QByteArray before(".a { fill: red; }\n");
        const QByteArray after(".b { fill: blue; }\n.c { stroke: \xC3\xBC; }");
        writeTestFile(path, before + bad + after);
        const RKCssSheet sheet{QFileInfo(path)};
        const QString css = sheet.readCssFromFile();
        QCOMPARE(css, QString::fromUtf8(before) + read + QString::fromUtf8(after));
        QCOMPARE(RKSingleton<RKCssSheetCache>::instance().cssString(sheet), css);

        // Cut off at the end: the rules before it are kept.
        writeTestFile(path, before + "\xE2\x82");
        QCOMPARE(RKCssSheet(QFileInfo(path)).readCssFromFile(), QString::fromUtf8(before) + QStringLiteral("\uFFFD\uFFFD"));
    }

    void readCssOfMissingFile()
    {
        QTemporaryDir dir;
        const QString missing = dir.filePath(QStringLiteral("missing.css"));
        QTest::ignoreMessage(QtWarningMsg, qPrintable(QStringLiteral("-- unable to open file: ") + missing));
        const QString text = RKCssSheet(QFileInfo(missing)).readCssFromFile();
        QVERIFY(text.isEmpty());
        QVERIFY(!text.isNull());
    }

    void evaluateStyleSheet_data()
    {
        QTest::addColumn<QString>("data");
        QTest::addColumn<QString>("map"); // as described
        QTest::addColumn<bool>("warns");

        QTest::newRow("titled default") << "href=\"alpha.css\" title=\"A\"" << "A=alpha.css; default A" << false;
        QTest::newRow("untitled") << "href=\"alpha.css\"" << "standard alpha.css" << false;
        QTest::newRow("title with blank is untitled") << "href=\"alpha.css\" title=\"Two words\"" << "standard alpha.css" << false;
        QTest::newRow("alternate no still alternate") << "href=\"alpha.css\" title=\"A\" alternate=\"no\"" << "A=alpha.css" << false;
        QTest::newRow("later href wins") << "title=\"A\" href=\"alpha.css\" href=\"beta.css\"" << "A=beta.css; default A" << false;
        QTest::newRow("spaces around equals") << "href = \"gamma.css\"   title =\"G\"" << "G=gamma.css; default G" << false;
        QTest::newRow("missing file") << "href=\"nothere.css\" title=\"M\"" << "" << true;
        QTest::newRow("unbalanced quotes") << "href=\"alpha.css title=\"A\"" << "" << true;
        QTest::newRow("directory is no file") << "href=\".\" title=\"D\"" << "" << true;
    }

    void evaluateStyleSheet()
    {
        QFETCH(QString, data);
        QFETCH(QString, map);
        QFETCH(bool, warns);

        const QFileInfo svg(fixture(QStringLiteral("template.svg")));
        if (warns) {
            QFileInfo file;
            QString title;
            bool isDefault = true;
            RKCssSheetParser::parseTitleAndFileInfo(data, svg, &file, &title, &isDefault);
            const QString path = file.filePath().isEmpty() ? QString() : file.absoluteFilePath();
            QTest::ignoreMessage(QtWarningMsg,
                qPrintable(QStringLiteral("Not inserted (file not found or no title): %1 %2").arg(data, path)));
        }
        RKCssSheetTitleIdMap found;
        RKCssSheetParser::evaluateStyleSheet(data, svg, &found);
        QCOMPARE(describe(found), map);
    }

    void findStyleSheetsInTemplate()
    {
        const QString path = fixture(QStringLiteral("template.svg"));
        const RKCssSheetTitleIdMap map = RKCssSheetParser::findStyleSheets(RKXMLLoader::loadDocument(path), QFileInfo(path));
        // The last titled sheet that is not an alternate is the default; the one inside the root is never seen.
        QCOMPARE(describe(map), QStringLiteral("Alpha=alpha.css; Beta=beta.css; Gamma=gamma.css; default Gamma; standard base.css"));
    }

    void findStyleSheetsIgnoresOtherInput()
    {
        const QString path = fixture(QStringLiteral("template.svg"));
        QDomDocument document = RKXMLLoader::loadDocument(path);
        QVERIFY(RKCssSheetParser::findStyleSheets(document, QFileInfo(fixture(QStringLiteral("gone.svg")))).isEmpty());

        RKCssSheetTitleIdMap map;
        RKCssSheetParser::evaluateProcessingInstruction(QDomProcessingInstruction(), QFileInfo(path), &map);
        RKCssSheetParser::evaluateProcessingInstruction(
            document.createProcessingInstruction(QStringLiteral("xml-other"), QStringLiteral("href=\"alpha.css\" title=\"A\"")),
            QFileInfo(path), &map);
        QVERIFY(map.isEmpty());
    }

    void includes()
    {
        const QString path = fixture(QStringLiteral("includer.svg"));
        const RKCssSheetTitleIdMap map = RKCssSheetParser::findStyleSheets(RKXMLLoader::loadDocument(path), QFileInfo(path));
        // Only entries come in through an include, not the included file's default.
        QCOMPARE(describe(map), QStringLiteral("Alpha=alpha.css; Beta=beta.css; Gamma=gamma.css"));

        RKCssSheetTitleIdMap untouched;
        QTest::ignoreMessage(QtWarningMsg, "failing to include nothere.xml");
        RKCssSheetParser::evaluateStylesInclude(QStringLiteral("href=\"nothere.xml\""), QFileInfo(path), &untouched);
        QVERIFY(untouched.isEmpty());
    }

    void mapXmlRoundTripLosesCustomSheet()
    {
        RKCssSheetTitleIdMap map;
        map.insert(QStringLiteral("Standard"), QStringLiteral("css/default.css"));
        map.insert(QStringLiteral("Blue"), QStringLiteral("css/blue.css"));
        map.setDefaultCssSheetTitle(QStringLiteral("Blue"));
        map.setStandardSheet(QStringLiteral("css/base.css"));
        map.setCustomCssSheet(QStringLiteral("customColor#ff0000.css"));

        QDomDocument document;
        QDomElement root = document.createElement(QStringLiteral("image"));
        document.appendChild(root);
        const QDomElement written = map.buildXML(root);
        QCOMPARE(written.tagName(), QStringLiteral("cssSheetTitleIdMap"));
        QCOMPARE(written.attribute(QStringLiteral("CustomCssSheet")), QStringLiteral("customColor#ff0000.css"));
        QVERIFY(!written.hasAttribute(QStringLiteral("CustomCssSheetTitle")));

        QDomDocument reread;
        QVERIFY(reread.setContent(document.toString()));
        const RKCssSheetTitleIdMap back(reread.documentElement());
        // Read back without the custom sheet, and so unequal to the map written.
        RKCssSheetTitleIdMap expected = map;
        expected.setCustomCssSheet(QString());
        QCOMPARE(back, expected);
    }

    void mapReadsCustomSheetTitle()
    {
        QDomDocument document;
        QVERIFY(document.setContent(QStringLiteral(
            "<image><cssSheetTitleIdMap CustomCssSheetTitle=\"customColor#00ff00.css\" StandardSheet=\"s.css\">"
            "<entry key=\"A\" value=\"a.css\"/><entry key=\"A\" value=\"a2.css\"/><other key=\"B\" value=\"b.css\"/>"
            "</cssSheetTitleIdMap><cssSheetTitleIdMap><entry key=\"C\" value=\"c.css\"/></cssSheetTitleIdMap></image>")));
        const RKCssSheetTitleIdMap map(document.documentElement());
        QCOMPARE(describe(map), QStringLiteral("A=a2.css; standard s.css; custom customColor#00ff00.css"));
    }

    void mapWithoutElement()
    {
        QDomDocument document;
        QVERIFY(document.setContent(QStringLiteral("<image><inner><cssSheetTitleIdMap/></inner></image>")));
        QTest::ignoreMessage(QtWarningMsg, "could not find element cssSheetTitleIdMap");
        const RKCssSheetTitleIdMap map(document.documentElement());
        QCOMPARE(map, RKCssSheetTitleIdMap());
    }

    void mapDefaults()
    {
        RKCssSheetTitleIdMap map;
        // The default title, its sheet and the sheet found for it.
        const auto defaults = [&map] {
            return QStringList{ map.defaultCssSheetTitle(), map.defaultCssSheet(), map.findDefaultCssSheet() };
        };
        map.setDefaultCssSheetTitle(QStringLiteral("Ghost"));
        QCOMPARE(defaults(), (QStringList{ "", "", "" })); // no entries: no default at all

        map.insert(QStringLiteral("Zebra"), QStringLiteral("z.css"));
        map.insert(QStringLiteral("Apple"), QStringLiteral("a.css"));
        QCOMPARE(defaults(), (QStringList{ "Ghost", "Ghost.css", "Ghost.css" }));

        map.setDefaultCssSheetTitle(QString());
        QCOMPARE(defaults(), (QStringList{ "Apple", "a.css", "a.css" }));

        map.setDefaultCssSheet(QStringLiteral("z.css"));
        QCOMPARE(defaults(), (QStringList{ "Zebra", "z.css", "z.css" }));
        // No title maps to "customRed.css": the look-up is repeated without the ending.
        map.insert(QStringLiteral("Red"), QStringLiteral("customRed"));
        map.setDefaultCssSheet(QStringLiteral("customRed.css"));
        QCOMPARE(defaults(), (QStringList{ "Red", "customRed", "customRed" }));
    }

    void mapLookups()
    {
        RKCssSheetTitleIdMap map;
        map.insert(QStringLiteral("Blue"), QStringLiteral("css/blue.css"));
        map.insert(QStringLiteral("Azure"), QStringLiteral("css/blue.css"));
        map.insert(QStringLiteral("Green"), QStringLiteral("css/green.css"));
        map.setDefaultCssSheetTitle(QStringLiteral("Green"));
        QCOMPARE(map.key(QStringLiteral("css/blue.css")), QStringLiteral("Azure"));
        QVERIFY(map.key(QStringLiteral("css/none.css")).isEmpty());
        QCOMPARE(map.values(), (QStringList{ "css/blue.css", "css/blue.css", "css/green.css" }));

        QCOMPARE(map.findStyleByName({ "Nope", "Green", "Blue" }), QStringLiteral("css/green.css"));
        QCOMPARE(map.findStyleByName({ "blue" }), QStringLiteral("css/blue.css"));
        QVERIFY(map.findStyleByName({ "red" }).isEmpty());

        QCOMPARE(map.toDebugStringList(),
            (QStringList{ "Azure <=> css/blue.css", "Blue <=> css/blue.css", "Green (default) <=> css/green.css" }));

        RKCssSheetTitleIdMap other;
        other.insert(QStringLiteral("Green"), QStringLiteral("css/green2.css"));
        other.insert(QStringLiteral("Red"), QStringLiteral("css/red.css"));
        other.setDefaultCssSheetTitle(QStringLiteral("Red"));
        other.setStandardSheet(QStringLiteral("css/other.css"));
        map.merge(other);
        QCOMPARE(describe(map),
            QStringLiteral("Azure=css/blue.css; Blue=css/blue.css; Green=css/green2.css; Red=css/red.css; default Green"));
    }

    void minimalPaths()
    {
        QTemporaryDir first;
        QTemporaryDir second;
        QTemporaryDir outside;
        const QString firstDir = QDir(first.path()).canonicalPath();
        const QString secondDir = QDir(second.path()).canonicalPath();
        const QString nested = firstDir + QStringLiteral("/nested");
        writeTestFile(firstDir + QStringLiteral("/css/a.css"), ".a{}");
        writeTestFile(nested + QStringLiteral("/b.css"), ".b{}");
        writeTestFile(nested + QStringLiteral("/css/a.css"), ".a{}");
        writeTestFile(secondDir + QStringLiteral("/css/a.css"), ".a{}"); // shadowed by the first directory
        writeTestFile(outside.path() + QStringLiteral("/c.css"), ".c{}");

        const QByteArray saved = qgetenv("RKXML_RESOURCE_PATH");
        qputenv("RKXML_RESOURCE_PATH", (firstDir + QLatin1Char(':') + nested + QLatin1Char(':') + secondDir).toLocal8Bit());
        RKDirectoryConfig::instance().reload();

        const QString shipped = RKDirectoryConfig::instance().shippedDataDirectory() + QStringLiteral("/colors.xml");
        const QStringList paths{ firstDir + QStringLiteral("/css/a.css"), nested + QStringLiteral("/b.css"),
            nested + QStringLiteral("/css/a.css"), secondDir + QStringLiteral("/css/a.css"), outside.path() + QStringLiteral("/c.css"), shipped };
        const QStringList expected{ "css/a.css", "b.css", "nested/css/a.css", secondDir + QStringLiteral("/css/a.css"),
            QDir::cleanPath(outside.path() + QStringLiteral("/c.css")), "colors.xml" };
        QStringList minimal;
        for (const QString& path : paths) {
            minimal << RKFileHandler::makeSVGPathMinimal(path);
            // Whatever the form, the look-up finds the same file again.
            QCOMPARE(RKDirectoryConfig::instance().findInGlintoraDirs(minimal.last()).absoluteFilePath(), QDir::cleanPath(path));
        }
        QCOMPARE(minimal, expected);
        QCOMPARE(RKFileHandler::makeSVGPathMinimal(firstDir + QStringLiteral("/css/../css/a.css")), QStringLiteral("css/a.css"));
        QCOMPARE(RKFileHandler::makeSVGPathMinimal(QStringLiteral("css/a.css")), QStringLiteral("css/a.css"));
        QVERIFY(RKFileHandler::makeSVGPathMinimal(QString()).isEmpty());
        // A directory's name that merely begins like a search directory is outside it.
        QCOMPARE(RKFileHandler::makeSVGPathMinimal(firstDir + QStringLiteral("x/y.css")), firstDir + QStringLiteral("x/y.css"));

        qputenv("RKXML_RESOURCE_PATH", saved);
        RKDirectoryConfig::instance().reload();
    }
};

QTEST_GUILESS_MAIN(TestCssSheet)
#include "test_csssheet.moc"
