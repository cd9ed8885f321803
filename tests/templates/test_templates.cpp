// The shipped templates compiled in-process with the shipped data, as "rkcalendar compile"
// does: golden pages (byte for byte, through the canonical writer), every keyed element
// filled or removed, and the pictures of Qt's SVG renderer and of librsvg's rsvg-convert
// within 2 % of each other, so that the templates keep to what both draw.
// RKXML_UPDATE_GOLDEN=1 rewrites the golden files instead of comparing.

#include "RKImageSupport.h"
#include "RKTestSupport.h"

#include <RKCalculatedHolidayCache.h>
#include <RKCalendariumContentKey.h>
#include <RKCalendariumFeatures.h>
#include <RKCalendariumHolidayConfig.h>
#include <RKCssSheetParser.h>
#include <RKCssSheetTitleIdMap.h>
#include <RKSVGCompiler.h>
#include <RKSVGCompilerInstructionsCache.h>
#include <RKSVGCompilerInstructionsFactory.h>
#include <RKXMLBuilder.h>

#include <QDomDocument>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QSvgRenderer>

namespace {

struct CompiledPage {
    QDomDocument document;
    RKSVGCompilerInstructions instructions;
};

/// The instructions of the page's content key (with a calculated holiday cache registered for
/// the call) applied to the template, with its default colour scheme. `locale` like "de_DE",
/// `province` empty for the nationwide days; all features on.
CompiledPage compileTemplate(const QString& name, const QDate& month, const QString& locale, const QString& province)
{
    CompiledPage page;
    QFile file(shippedDataPath(QStringLiteral("templates/%1.svg").arg(name)));
    if (!file.open(QIODevice::ReadOnly) || !page.document.setContent(&file, false))
        return page;
    const RKCssSheetTitleIdMap sheets = RKCssSheetParser::findStyleSheets(page.document, QFileInfo(file));
    RKCalendariumHolidayConfig config;
    config.setLanguage(RKLocale::decodeName(locale));
    // "-" names no province: the nationwide days only, as the tool does.
    config.setProvince(province.isEmpty() ? QStringLiteral("-") : province);
    config.setFeatures(RKCalendariumFeatures(QStringLiteral("holidays,vacations,moonphases")));
    const RKCalendariumContentKey key(RKCalendariumContentConfig(month, config), RKProjectIdentifier());
    RKCalculatedHolidayCache holidays;
    RKSVGCompilerInstructionsFactory& factory = RKSingleton<RKSVGCompilerInstructionsFactory>::instance();
    factory.addHolidayCache(&holidays);
    page.instructions = RKSingleton<RKSVGCompilerInstructionsCache>::instance().instructions(key);
    factory.removeHolidayCache(&holidays);

    RKSVGCompiler compiler;
    compiler.setDomDocument(page.document, false);
    compiler.setInstructions(page.instructions);
    compiler.setCss(sheets.findDefaultCssSheet());
    compiler.update();
    page.document = compiler.domDocument();
    return page;
}

/// The canonical text with the shipped data directory written as "@DATA@", so it is the same on every machine.
QString portableText(const QDomDocument& document)
{
    return RKXMLBuilder::toString(document, 1).replace(QDir::cleanPath(shippedDataPath(QString())), QStringLiteral("@DATA@"));
}

} // namespace

class TestTemplates : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    void golden_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QDate>("month");
        QTest::addColumn<QString>("golden");
        // March 2024 starts on a Friday (five rows, Easter, moon phases, Bavarian vacations);
        // February 2021 starts on a Monday and has four rows only.
        for (const char* name : {"wall-month", "planner-month"}) {
            QTest::addRow("%s 2024-03", name) << name << QDate(2024, 3, 1) << QStringLiteral("%1-de_DE-BY-2024-03.svg").arg(name);
            QTest::addRow("%s 2021-02", name) << name << QDate(2021, 2, 1) << QStringLiteral("%1-de_DE-BY-2021-02.svg").arg(name);
        }
        QTest::newRow("year-overview 2027") << "year-overview" << QDate(2027, 1, 1) << "year-overview-de_DE-BY-2027.svg";
    }

    void golden()
    {
        QFETCH(QString, name);
        QFETCH(QDate, month);
        QFETCH(QString, golden);
        const QString text = portableText(compileTemplate(name, month, "de_DE", "BY").document);
        QVERIFY(text.contains(QLatin1String("<svg")));
        const QString path = testDataPath("templates/golden/" + golden);
        if (qEnvironmentVariableIsSet("RKXML_UPDATE_GOLDEN")) {
            writeTestFile(path, text.toUtf8());
            return;
        }
        // A missing golden file reads as "<unreadable>"; RKXML_UPDATE_GOLDEN=1 writes it.
        QCOMPARE(text, QString::fromUtf8(readTestFile(path)));
    }

    void everyKeyFilled_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("province");
        QTest::addColumn<QDate>("month");
        const QStringList names = QDir(shippedDataPath("templates")).entryList({"*.svg"}, QDir::Files, QDir::Name);
        QVERIFY(names.size() >= 4);
        for (QString name : names) {
            name.chop(4);
            QTest::addRow("%s de_DE", qPrintable(name)) << name << "de_DE" << "BY" << QDate(2026, 12, 1);
            QTest::addRow("%s el_GR", qPrintable(name)) << name << "el_GR" << "" << QDate(2027, 1, 1);
            QTest::addRow("%s ru_RU", qPrintable(name)) << name << "ru_RU" << "" << QDate(2025, 9, 1);
            QTest::addRow("%s fr_FR", qPrintable(name)) << name << "fr_FR" << "" << QDate(2026, 2, 1);
        }
    }

    // A key that the factory does not make (a typing error in a template) stays with its
    // placeholder text; a class ending in "_empty" that survives shows a cell of another month.
    // Picture keys are filled on days with a picture only (here the moon phases).
    void everyKeyFilled()
    {
        QFETCH(QString, name);
        QFETCH(QString, locale);
        QFETCH(QString, province);
        QFETCH(QDate, month);
        const CompiledPage page = compileTemplate(name, month, locale, province);
        int keyed = 0;
        int pictures = 0;
        int withoutPicture = 0;
        QList<QDomElement> pending{page.document.documentElement()};
        while (!pending.isEmpty()) {
            const QDomElement element = pending.takeLast();
            const QString key = element.attribute(QStringLiteral("vako:cal"));
            if (!key.isEmpty()) {
                ++keyed;
                const bool filled = !page.instructions.replacements(key).isEmpty();
                if (key.contains(QLatin1String("_imageholiday")))
                    ++(filled ? pictures : withoutPicture);
                else
                    QVERIFY2(filled, qPrintable("not filled: " + key));
            }
            QVERIFY2(!element.attribute(QStringLiteral("class")).endsWith(QLatin1String("_empty")),
                qPrintable("not removed: " + key));
            for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
                pending << child;
        }
        QVERIFY(keyed > 10);
        if (withoutPicture > 0)
            QVERIFY2(pictures >= 3, qPrintable(QStringLiteral("%1 moon pictures").arg(pictures)));
        // The chosen colour scheme is in the page.
        QCOMPARE(page.document.documentElement().firstChildElement().attribute(QStringLiteral("title")),
            QStringLiteral("current"));
    }

    // Every template for a Latin, a Greek and a Cyrillic calendar language.
    void qtAndLibrsvgAgree_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("province");
        for (const char* name : {"wall-month", "wall-cover", "planner-month", "year-overview"}) {
            QTest::addRow("%s de_DE", name) << name << "de_DE" << "BY";
            QTest::addRow("%s el_GR", name) << name << "el_GR" << "";
            QTest::addRow("%s ru_RU", name) << name << "ru_RU" << "";
        }
    }

    void qtAndLibrsvgAgree()
    {
        QFETCH(QString, name);
        QFETCH(QString, locale);
        QFETCH(QString, province);
        const QString rsvg = QStandardPaths::findExecutable(QStringLiteral("rsvg-convert"));
        if (rsvg.isEmpty())
            QSKIP("rsvg-convert (librsvg2-bin) is not installed");

        // librsvg only loads pictures beside or below the page, so the moon pictures are
        // copied next to it and linked relatively.
        QTemporaryDir dir;
        const QString moons = shippedDataPath(QStringLiteral("moonphases"));
        QDir().mkpath(dir.filePath(QStringLiteral("moonphases")));
        for (const QString& picture : QDir(moons).entryList({QStringLiteral("*.svg")}, QDir::Files))
            QFile::copy(QDir(moons).filePath(picture), dir.filePath(QStringLiteral("moonphases/") + picture));
        QString text = portableText(compileTemplate(name, QDate(2024, 3, 1), locale, province).document);
        text.replace(QStringLiteral("@DATA@/"), QString());
        const QString page = dir.filePath(QStringLiteral("page.svg"));
        writeTestFile(page, text.toUtf8());

        const int width = 600;
        QSvgRenderer renderer(page);
        QVERIFY(renderer.isValid());
        const QSizeF size = renderer.viewBoxF().size();
        const int height = qRound(width * size.height() / size.width());
        QImage qt(width, height, QImage::Format_ARGB32);
        qt.fill(Qt::white);
        QPainter painter(&qt);
        renderer.render(&painter);
        painter.end();

        const QString png = dir.filePath(QStringLiteral("rsvg.png"));
        QProcess process;
        process.start(rsvg, {QStringLiteral("-w"), QString::number(width), QStringLiteral("-h"), QString::number(height),
                                QStringLiteral("-b"), QStringLiteral("white"), QStringLiteral("-o"), png, page});
        QVERIFY(process.waitForFinished(60000));
        QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
        const QImage other(png);
        const double difference = meanDifference(qt, other);
        if (qEnvironmentVariableIsSet("RKXML_KEEP_RENDERS")) {
            const QString keep = QString::fromLocal8Bit(qgetenv("RKXML_KEEP_RENDERS"));
            qt.save(QStringLiteral("%1/%2-%3-qt.png").arg(keep, name, locale));
            other.save(QStringLiteral("%1/%2-%3-rsvg.png").arg(keep, name, locale));
            qInfo("%s %s: mean difference %.4f", qPrintable(name), qPrintable(locale), difference);
        }
        QVERIFY2(difference <= 0.02, qPrintable(QStringLiteral("mean difference %1").arg(difference)));
    }
};

QTEST_MAIN(TestTemplates)
#include "test_templates.moc"
