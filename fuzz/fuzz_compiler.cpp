// A calendar template from the input compiled for March 2026, de_DE, Bavaria, with holidays,
// school vacations and moon phases from the shipped data, and the template's own default style
// sheet. The template is not changed; the page parses again; the root stays; there is at most
// one titled style element, "current", first; no removable "_empty" element is left; each day
// cell has at most one marker, as its last child; every keyed element shows the text its
// earliest set-text instruction gives; fitted images and markers have finite numbers.
// Compiling the page again changes nothing but image fitting. The spot-colour mask of the
// template paints only in black and white.
#include "FuzzSupport.h"

#include <RKCalculatedHolidayCache.h>
#include <RKCalendariumContentKey.h>
#include <RKColorReplacementInstructions.h>
#include <RKCssSheetParser.h>
#include <RKSVGCompiler.h>
#include <RKSVGCompilerInstructionsFactory.h>
#include <RKTextTransform.h>
#include <RKXMLParser.h>

namespace {

const QString STR_ID = QStringLiteral("id");
const QString STR_CLASS = QStringLiteral("class");
const QString STR_STYLE = QStringLiteral("style");

RKSVGCompilerInstructions& instructions()
{
    static RKSVGCompilerInstructions set;
    return set;
}

struct Sheets
{
    QString standard;
    QString page;
};

QDomDocument compile(const QDomDocument& page, const Sheets& sheets)
{
    RKSVGCompiler compiler;
    compiler.setDomDocument(page, true);
    compiler.setInstructions(instructions());
    compiler.setStandardCss(sheets.standard);
    compiler.setCss(sheets.page);
    compiler.update();
    return compiler.domDocument();
}

QVector<QDomElement> elements(const QDomElement& root)
{
    QVector<QDomElement> result;
    for (QDomElement e = root; !e.isNull(); e = RKXMLParser::nextElement(e))
        result.append(e);
    return result;
}

void checkParses(const QDomDocument& page)
{
    QDomDocument again;
    fuzz::require(again.setContent(fuzz::canonical(page), false));
}

void checkStyles(const QDomElement& root)
{
    int titled = 0;
    for (QDomElement child = root.firstChildElement(STR_STYLE); !child.isNull(); child = child.nextSiblingElement(STR_STYLE)) {
        if (!child.hasAttribute(QStringLiteral("title")))
            continue;
        ++titled;
        fuzz::require(child.attribute(QStringLiteral("title")) == QLatin1String("current") && child == root.firstChild());
    }
    fuzz::require(titled <= 1);
}

void checkMarkers(const QVector<QDomElement>& all)
{
    for (const QDomElement& e : all) {
        const QString id = e.attribute(STR_ID);
        if (!id.startsWith(QLatin1String("Day_")))
            continue;
        int markers = 0;
        for (QDomElement child = e.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
            if (child.attribute(STR_ID) == QLatin1String("child_") + id && child.tagName() == QLatin1String("rect")) {
                ++markers;
                fuzz::require(child == e.lastChild());
            }
        }
        fuzz::require(markers <= 1);
    }
}

void checkTexts(const QVector<QDomElement>& all)
{
    for (const QDomElement& e : all) {
        const QString key = e.attribute(RKSVGCompilerInstructionsFactory::STR_KEY_ATTRIBUTE);
        if (key.isEmpty())
            continue;
        QString text;
        bool found = false;
        // Most recent first, applied in that order: the earliest added is applied last.
        for (const RKSVGCompilerInstruction& instruction : instructions().replacements(key)) {
            if (instruction.type() == RKSVGCompilerInstruction::SetText) {
                text = instruction.targetValue();
                found = true;
            }
        }
        if (!found)
            continue;
        QDomNode node = e.firstChild();
        while (!node.isNull() && !node.isText())
            node = node.nextSibling();
        fuzz::require(!node.isNull() && node.nodeValue() == RKTextTransform::parse(e).apply(text));
    }
}

// Fitted images and day markers get finite numbers when the template holds no infinite or
// undefined ones ("inf", "nan" are numbers to the readers).
void checkGeometry(const QVector<QDomElement>& all, const QDomDocument& page)
{
    const QString text = fuzz::canonical(page);
    if (text.contains(QLatin1String("inf"), Qt::CaseInsensitive) || text.contains(QLatin1String("nan"), Qt::CaseInsensitive))
        return;
    for (const QDomElement& e : all) {
        const bool image = e.tagName() == QLatin1String("image");
        const bool marker = e.tagName() == QLatin1String("rect") && e.attribute(STR_ID).startsWith(QLatin1String("child_Day_"));
        if (!image && !marker)
            continue;
        for (const char* name : { "x", "y", "width", "height" })
            fuzz::require(std::isfinite(RKXMLParser::doubleAttribute(e, QLatin1String(name), 0.0)));
    }
}

// Image fitting rounds to six digits, so a second fit of a fitted frame may move it in the
// last digit; the markers of day cells follow their images.
QString withoutImageGeometry(const QDomDocument& page)
{
    QDomDocument copy = page.cloneNode(true).toDocument();
    for (QDomElement e : elements(copy.documentElement())) {
        const bool image = e.tagName() == QLatin1String("image");
        const bool marker = e.tagName() == QLatin1String("rect") && e.attribute(STR_ID).startsWith(QLatin1String("child_Day_"));
        if (!image && !marker)
            continue;
        for (const char* name : { "x", "y", "width", "height" })
            e.removeAttribute(QLatin1String(name));
    }
    return fuzz::canonical(copy);
}

bool isPaint(const QString& value)
{
    const QString trimmed = value.trimmed();
    return !trimmed.isEmpty() && trimmed.compare(QLatin1String("none"), Qt::CaseInsensitive) != 0;
}

void checkMask(const QDomDocument& page)
{
    RKSVGCompiler compiler;
    compiler.setDomDocument(page, true);
    compiler.setSpotColorOnly(true);
    RKColorReplacementInstructions found;
    found.extract(page);
    RKColorReplacementInstructions swap;
    for (quint32 argb : found.replacements().keys())
        swap.insert(QColor::fromRgba(argb), QColor::fromRgba(~argb | 0xff000000u));
    compiler.setColorReplacements(swap);
    compiler.setInheritedAttributes({ { QStringLiteral("vako:inherited"), QStringLiteral("1") } });
    compiler.update();
    const QDomDocument mask = compiler.domDocument();
    checkParses(mask);
    fuzz::require(mask.documentElement().tagName() == page.documentElement().tagName());
    // defs, metadata and style elements keep what they hold.
    const QDomElement root = mask.documentElement();
    for (QDomElement e = root; !e.isNull();) {
        const QString name = e.tagName();
        if (e != root && (name == QLatin1String("defs") || name == QLatin1String("metadata") || name == STR_STYLE)) {
            QDomElement next;
            for (QDomNode node = e; next.isNull() && !node.isNull() && node != root; node = node.parentNode())
                next = node.nextSiblingElement();
            e = next;
            continue;
        }
        for (const char* paint : { "fill", "stroke" }) {
            const QString value = e.attribute(QLatin1String(paint));
            if (e.hasAttribute(QLatin1String(paint)) && isPaint(value))
                fuzz::require(value == QLatin1String("black") || value == QLatin1String("white"));
        }
        e = RKXMLParser::nextElement(e);
    }
}

}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    // Words, holidays, school vacations and moon phases from the shipped data only.
    qputenv("RKXML_RESOURCE_PATH", "");
    qputenv("RKXML_DATA_DIR", RKXML_SHIPPED_DATA_DIR);
    fuzz::initialize(argc, argv);
    // Templates name their sheets relative to themselves ("../css/default.css").
    for (const char* sheet : { "css/default.css", "css/blue.css", "css/green.css" })
        fuzz::copyShipped(QLatin1String(sheet));

    static RKCalculatedHolidayCache holidays;
    RKSVGCompilerInstructionsFactory& factory = RKSingleton<RKSVGCompilerInstructionsFactory>::instance();
    factory.addHolidayCache(&holidays);
    RKCalendariumHolidayConfig config;
    config.setLanguage(RKLocale(QStringLiteral("de"), QStringLiteral("DE")));
    config.setProvince(QStringLiteral("BY"));
    config.setFeatures(RKCalendariumFeatures(QStringLiteral("holidays,vacations,moonphases")));
    const RKCalendariumContentKey key(RKCalendariumContentConfig(QDate(2026, 3, 1), config), RKProjectIdentifier());
    instructions() = factory.instructions(key);
    if (instructions().isEmpty())
        abort();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = fuzz::bytes(data, size);
    QDomDocument page;
    if (!fuzz::parse(bytes, &page))
        return 0;
    const QString before = page.toString(1);
    const RKCssSheetTitleIdMap map = RKCssSheetParser::findStyleSheets(page, QFileInfo(fuzz::writeFile(QStringLiteral("templates/input.svg"), bytes)));
    const Sheets sheets{ map.standardSheet(), map.value(map.defaultCssSheetTitle(), QString()) };

    const QDomDocument compiled = compile(page, sheets);
    fuzz::require(page.toString(1) == before);
    checkParses(compiled);
    const QDomElement root = compiled.documentElement();
    fuzz::require(root.tagName() == page.documentElement().tagName());
    checkStyles(root);
    const QVector<QDomElement> all = elements(root);
    for (const QDomElement& e : all) {
        fuzz::require(e == root || !e.attribute(STR_CLASS).endsWith(QLatin1String("_empty"))
            || RKXMLParser::boolAttribute(e, QStringLiteral("vako:force_keep"), false));
    }
    checkMarkers(all);
    checkTexts(all);
    checkGeometry(all, page);

    const QDomDocument twice = compile(compiled, sheets);
    fuzz::require(withoutImageGeometry(twice) == withoutImageGeometry(compiled));

    checkMask(page);
    return 0;
}
