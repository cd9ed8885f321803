#include "RKSVGCompiler.h"

#include "private/RKSVGTextFitter.h"

#include "RKCssSheetCache.h"
#include "RKXMLBuilder.h"
#include "RKXMLParser.h"

#include <RKMath.h>
#include <RKSpotColor.h>

#include <QDebug>
#include <QDomCDATASection>
#include <QDomNodeList>
#include <QRegularExpression>
#include <QVector>

#include <cmath>
#include <limits>

namespace {
const QString STR_CLASS = QStringLiteral("class");
const QString STR_EMPTY_SUFFIX = QStringLiteral("_empty");
const QString STR_FORCE_KEEP = QStringLiteral("vako:force_keep");
const QString STR_IMAGE = QStringLiteral("image");
const QString STR_IMAGEWIDTH = QStringLiteral("vako:imagewidth");
const QString STR_IMAGEHEIGHT = QStringLiteral("vako:imageheight");
const QString STR_X = QStringLiteral("x");
const QString STR_Y = QStringLiteral("y");
const QString STR_WIDTH = QStringLiteral("width");
const QString STR_HEIGHT = QStringLiteral("height");
const QString STR_X1 = QStringLiteral("x1");
const QString STR_Y1 = QStringLiteral("y1");
const QString STR_X2 = QStringLiteral("x2");
const QString STR_Y2 = QStringLiteral("y2");
const QString STR_STYLE = QStringLiteral("style");
const QString STR_TITLE = QStringLiteral("title");
const QString STR_TYPE = QStringLiteral("type");
const QString STR_TEXT_CSS = QStringLiteral("text/css");
const QString STR_CURRENT = QStringLiteral("current");
const QString STR_G = QStringLiteral("g");
const QString STR_ID = QStringLiteral("id");
const QString STR_DAY_ID_PREFIX = QStringLiteral("Day_");
const QString STR_MARKER_PREFIX = QStringLiteral("child_");
const QString STR_RECT = QStringLiteral("rect");
const QString STR_TEXT = QStringLiteral("text");
const QString STR_LINE = QStringLiteral("line");
const QString STR_FILL = QStringLiteral("fill");
const QString STR_STROKE = QStringLiteral("stroke");
const QString STR_NONE = QStringLiteral("none");
const QString STR_BLACK = QStringLiteral("black");
const QString STR_WHITE = QStringLiteral("white");
const QString STR_KEY_ATTRIBUTE = QStringLiteral("vako:cal");
const QString STR_HOLIDAY_KEY = QStringLiteral("_holiday");
const QString STR_OTHER_EVENT = QStringLiteral("other_event");
const QString STR_APPLY_REFINEMENT = QStringLiteral("vako:applyRefinement");
const QString STR_REFINEMENT = QStringLiteral("vako:refinement");
const QString STR_REMOVE = QStringLiteral("remove");
const QString STR_TRUE = QStringLiteral("true");
const QString STR_COMP_OP = QStringLiteral("comp-op");
const QString STR_SRC_OUT = QStringLiteral("src-out");
const QString STR_DEFS = QStringLiteral("defs");
const QString STR_METADATA = QStringLiteral("metadata");
const QString STR_ONE = QStringLiteral("1");

const QString OPACITY_ATTRIBUTES[] = {
    QStringLiteral("opacity"), QStringLiteral("fill-opacity"), QStringLiteral("stroke-opacity")};

/// Paint and opacity declarations in a style attribute or a style sheet; "stroke-width" and the like do not match.
const QRegularExpression& paintDeclaration()
{
    static const QRegularExpression pattern(
        QStringLiteral("(^|[;{\\s])((?:disabled-)?(?:fill|stroke)|(?:fill-|stroke-)?opacity)(\\s*:\\s*)([^;}]*)"),
        QRegularExpression::CaseInsensitiveOption);
    return pattern;
}

/// `css` with every paint that is not "none" set to `color` and every opacity set to 1.
QString repaintedCss(const QString& css, const QString& color)
{
    QString result;
    int copied = 0;
    QRegularExpressionMatchIterator it = paintDeclaration().globalMatch(css);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        QString value = match.captured(4);
        const int important = value.indexOf(QLatin1Char('!'));
        const QString priority = important >= 0 ? QLatin1Char(' ') + value.mid(important).trimmed() : QString();
        if (important >= 0)
            value.truncate(important);
        const bool opacity = match.captured(2).endsWith(QLatin1String("opacity"), Qt::CaseInsensitive);
        const QString trimmed = value.trimmed();
        if (trimmed.isEmpty() || (!opacity && trimmed.compare(STR_NONE, Qt::CaseInsensitive) == 0))
            continue;
        result += css.midRef(copied, match.capturedStart(4) - copied);
        result += (opacity ? STR_ONE : color) + priority;
        copied = match.capturedEnd(4);
    }
    if (copied == 0)
        return css;
    result += css.midRef(copied);
    return result;
}

bool isNone(const QString& value)
{
    return value.trimmed().compare(STR_NONE, Qt::CaseInsensitive) == 0;
}

/// The value of `property` in the element's "style" attribute; null when absent.
QString styleProperty(const QDomElement& element, const QString& property)
{
    QString found;
    const QString style = element.attribute(STR_STYLE);
    for (const QStringRef& declaration : style.splitRef(QLatin1Char(';'))) {
        const int colon = declaration.indexOf(QLatin1Char(':'));
        if (colon >= 0 && declaration.left(colon).trimmed().compare(property, Qt::CaseInsensitive) == 0)
            found = declaration.mid(colon + 1).trimmed().toString();
    }
    return found;
}

bool isRefined(const QDomElement& element)
{
    if (element.attribute(STR_APPLY_REFINEMENT).trimmed().toLower() == STR_TRUE)
        return true;
    return RKSpotColor(element.attribute(STR_REFINEMENT)).isValid();
}

bool isKnockOut(const QDomElement& element)
{
    return element.attribute(STR_REFINEMENT).trimmed().compare(STR_REMOVE, Qt::CaseInsensitive) == 0;
}

/// The next element after `current` in document order that lies inside `root`; `descend` enters current's children.
QDomElement nextInside(const QDomElement& current, const QDomElement& root, bool descend = true)
{
    if (descend) {
        const QDomElement child = current.firstChildElement();
        if (!child.isNull())
            return child;
    }
    for (QDomNode node = current; !node.isNull() && node != root; node = node.parentNode()) {
        const QDomElement sibling = node.nextSiblingElement();
        if (!sibling.isNull())
            return sibling;
    }
    return QDomElement();
}

bool isFinite(const QRectF& rect)
{
    return std::isfinite(rect.x()) && std::isfinite(rect.y()) && std::isfinite(rect.width()) && std::isfinite(rect.height());
}

QRectF atLeastOne(QRectF rect)
{
    if (rect.width() < 1)
        rect.setWidth(1);
    if (rect.height() < 1)
        rect.setHeight(1);
    return rect;
}

/// The area that one element of a day cell contributes to its marker; null when none.
QRectF markerArea(const QDomElement& element)
{
    const QString name = element.tagName();
    const bool box = name == STR_TEXT || name == STR_RECT || name == STR_IMAGE;
    const bool line = name == STR_LINE;
    if (!box && !line)
        return QRectF();
    if (element.attribute(STR_KEY_ATTRIBUTE).contains(STR_HOLIDAY_KEY)) {
        const bool showsHoliday = !element.text().trimmed().isEmpty()
            || element.attribute(STR_CLASS).split(QLatin1Char(' '), Qt::SkipEmptyParts).contains(STR_OTHER_EVENT);
        if (!showsHoliday)
            return QRectF();
    }
    if (line) {
        const QString stroke = styleProperty(element, STR_STROKE);
        if (isNone(stroke.isNull() ? element.attribute(STR_STROKE) : stroke))
            return QRectF();
        const QPointF from(RKXMLParser::doubleAttribute(element, STR_X1), RKXMLParser::doubleAttribute(element, STR_Y1));
        const QPointF to(RKXMLParser::doubleAttribute(element, STR_X2), RKXMLParser::doubleAttribute(element, STR_Y2));
        // An end that is not finite makes a corner or a side not finite.
        const QRectF area = QRectF(from, to).normalized();
        return isFinite(area) ? atLeastOne(area) : QRectF();
    }
    // "inf" and "nan" are numbers to the reader; such a part does not count.
    const QRectF area(RKXMLParser::doubleAttribute(element, STR_X), RKXMLParser::doubleAttribute(element, STR_Y),
        RKXMLParser::doubleAttribute(element, STR_WIDTH), RKXMLParser::doubleAttribute(element, STR_HEIGHT));
    return isFinite(area) ? atLeastOne(area) : QRectF();
}

QString number(double value)
{
    return QString::number(value, 'g', 6);
}
}

RKSVGCompiler::RKSVGCompiler() = default;
RKSVGCompiler::~RKSVGCompiler() = default;

// ---- inputs and to-dos ----

void RKSVGCompiler::setDomDocument(const QDomDocument& document, bool copy)
{
    myDocument = copy ? document.cloneNode(true).toDocument() : document;
    if (!myInstructions.isEmpty())
        addToDo(ToDoApplyInstructions);
}

void RKSVGCompiler::setInstructions(const RKSVGCompilerInstructions& instructions)
{
    myInstructions = instructions;
    addToDo(ToDoApplyInstructions);
}

void RKSVGCompiler::setCss(const QString& path)
{
    myCss = path;
    addToDo(ToDoInsertCss);
}

void RKSVGCompiler::setCustomCss(const QString& path)
{
    myCustomCss = path;
    addToDo(ToDoInsertCss);
}

void RKSVGCompiler::setStandardCss(const QString& path)
{
    myStandardCss = path;
}

void RKSVGCompiler::setColorReplacements(const RKColorReplacementInstructions& replacements)
{
    myColorReplacements = replacements;
    if (replacements.size() > 0)
        addToDo(ToDoReplaceColors);
}

void RKSVGCompiler::setInheritedAttributes(const QMap<QString, QString>& attributes)
{
    if (attributes.isEmpty())
        return;
    myInheritedAttributes = attributes;
    addToDo(ToDoInheritAttributes);
}

void RKSVGCompiler::setSpotColorOnly(bool on)
{
    on ? addToDo(ToDoSpotColorOnly) : clearToDo(ToDoSpotColorOnly);
}

void RKSVGCompiler::setDropSpotColor(bool on)
{
    on ? addToDo(ToDoDropSpotColor) : clearToDo(ToDoDropSpotColor);
}

void RKSVGCompiler::addToDo(CompilerToDo toDo)
{
    myToDos |= 1u << toDo;
}

void RKSVGCompiler::clearToDo(CompilerToDo toDo)
{
    myToDos &= ~(1u << toDo);
}

bool RKSVGCompiler::toDo(CompilerToDo toDo) const
{
    return (myToDos & (1u << toDo)) != 0;
}

void RKSVGCompiler::clearAllToDos()
{
    myToDos = 0;
}

void RKSVGCompiler::update()
{
    if (toDo(ToDoApplyInstructions)) {
        if (!myInstructions.isEmpty())
            applyInstructions();
        fixImageTags();
        removeEmptyElements();
        RKSVGTextFitter::fit(myDocument);
    }
    if (toDo(ToDoInsertCss))
        addCss();
    if (toDo(ToDoReplaceColors) && !toDo(ToDoSpotColorOnly))
        replaceColors();
    if (toDo(ToDoInheritAttributes))
        applyInheritedAttributes();
    if (toDo(ToDoSpotColorOnly))
        extractSpotColorMask();
    if (toDo(ToDoDropSpotColor))
        dropSpotColorElements();
    appendChildMarker();
    clearAllToDos();
}

// ---- instructions, images, empty elements ----

void RKSVGCompiler::applyInstructions()
{
    QDomElement root = myDocument.documentElement();
    applyInstructions(&root);
}

void RKSVGCompiler::applyInstructions(QDomElement* element)
{
    if (!element || element->isNull())
        return;
    const QString attribute = myInstructions.attributeName();
    const QDomElement top = *element;
    for (QDomElement current = top; !current.isNull(); current = nextInside(current, top)) {
        const QString key = current.attribute(attribute);
        if (key.isEmpty())
            continue;
        const QList<RKSVGCompilerInstruction> edits = myInstructions.replacements(key);
        for (const RKSVGCompilerInstruction& edit : edits)
            edit.applyInstruction(&current);
    }
}

void RKSVGCompiler::fixImageTags()
{
    const QDomElement root = myDocument.documentElement();
    for (QDomElement current = root; !current.isNull(); current = nextInside(current, root)) {
        if (current.tagName() == STR_IMAGE)
            fixThisImage(&current);
    }
}

void RKSVGCompiler::fixThisImage(QDomElement* element)
{
    if (!element || element->isNull())
        return;
    const QSizeF natural(RKXMLParser::doubleAttribute(*element, STR_IMAGEWIDTH),
        RKXMLParser::doubleAttribute(*element, STR_IMAGEHEIGHT));
    const QRectF frame(RKXMLParser::doubleAttribute(*element, STR_X), RKXMLParser::doubleAttribute(*element, STR_Y),
        RKXMLParser::doubleAttribute(*element, STR_WIDTH), RKXMLParser::doubleAttribute(*element, STR_HEIGHT));
    const QRectF fitted = RKMath::shrinkRectToFit(frame, natural);
    // A frame whose numbers are not finite, or whose centre lies beyond the number range, stays.
    if (!isFinite(fitted))
        return;
    element->setAttribute(STR_X, number(fitted.x()));
    element->setAttribute(STR_Y, number(fitted.y()));
    element->setAttribute(STR_WIDTH, number(fitted.width()));
    element->setAttribute(STR_HEIGHT, number(fitted.height()));
}

void RKSVGCompiler::removeEmptyElements()
{
    QDomElement root = myDocument.documentElement();
    // The root is never removed, whatever its class.
    if (root.isNull())
        return;
    QVector<QDomElement> removable;
    for (QDomElement child = root.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (canRemoveEmptyElement(&child))
            removable.append(child);
    }
    for (QDomElement& element : removable)
        root.removeChild(element);
}

bool RKSVGCompiler::canRemoveEmptyElement(QDomElement* element)
{
    if (!element || element->isNull())
        return false;
    if (element->attribute(STR_CLASS).endsWith(STR_EMPTY_SUFFIX)
        && !RKXMLParser::boolAttribute(*element, STR_FORCE_KEEP, false))
        return true;
    QVector<QDomElement> removable;
    for (QDomElement child = element->firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (canRemoveEmptyElement(&child))
            removable.append(child);
    }
    for (QDomElement& child : removable)
        element->removeChild(child);
    return false;
}

// ---- style sheets, colours, inherited attributes ----

void RKSVGCompiler::addCss()
{
    kickOutSuperfluosStyles();
    insertCurrentCss();
}

void RKSVGCompiler::kickOutSuperfluosStyles()
{
    QDomElement root = myDocument.documentElement();
    QDomElement child = root.firstChildElement();
    while (!child.isNull()) {
        const QDomElement next = child.nextSiblingElement();
        if (child.tagName() == STR_STYLE && child.hasAttribute(STR_TITLE))
            root.removeChild(child);
        child = next;
    }
}

void RKSVGCompiler::insertCurrentCss()
{
    QDomElement root = myDocument.documentElement();
    if (root.isNull())
        return;
    RKCssSheetCache& cache = RKSingleton<RKCssSheetCache>::instance();
    const auto sheet = [&cache](const QString& path) { return path.isEmpty() ? QString() : cache.cssString(path); };
    const QString pageSheet = sheet(myCss);
    QString standardSheet = sheet(myStandardCss);
    if (standardSheet.isEmpty() && !myStandardCss.isEmpty()) {
        const QString patched = myStandardCss.left(myStandardCss.lastIndexOf(QLatin1Char('/')))
            + myCss.mid(myCss.lastIndexOf(QLatin1Char('/')));
        qWarning().noquote().nospace() << "patching missing css path to: " << patched;
        standardSheet = sheet(patched);
    }
    const QString text = pageSheet + standardSheet + sheet(myCustomCss);
    if (text.isEmpty())
        return;
    QDomElement style = myDocument.createElement(STR_STYLE);
    style.setAttribute(STR_TYPE, STR_TEXT_CSS);
    style.setAttribute(STR_TITLE, STR_CURRENT);
    RKXMLBuilder::appendCData(style, text);
    root.insertBefore(style, root.firstChild());
}

void RKSVGCompiler::replaceColors()
{
    if (!myDocument.documentElement().isNull())
        myColorReplacements.apply(myDocument);
}

void RKSVGCompiler::applyInheritedAttributes()
{
    QDomElement root = myDocument.documentElement();
    if (root.isNull())
        return;
    if (root.firstChildElement(STR_G).isNull()) {
        QDomElement group = myDocument.createElement(STR_G);
        // The list is live: every move shortens it, so every second node moves. Kept as it is.
        QDomNodeList children = root.childNodes();
        for (int i = 0; i < children.length(); ++i)
            group.appendChild(children.item(i));
        root.appendChild(group);
    }
    for (QDomElement group = root.firstChildElement(STR_G); !group.isNull(); group = group.nextSiblingElement(STR_G)) {
        for (auto it = myInheritedAttributes.constBegin(); it != myInheritedAttributes.constEnd(); ++it)
            group.setAttribute(it.key(), it.value());
    }
}

// ---- spot colours ----

void RKSVGCompiler::dropSpotColorElements()
{
    QDomElement root = myDocument.documentElement();
    QDomElement child = root.firstChildElement();
    while (!child.isNull()) {
        const QDomElement next = child.nextSiblingElement();
        if (isRefined(child))
            root.removeChild(child);
        child = next;
    }
}

void RKSVGCompiler::extractSpotColorMask()
{
    QDomElement root = myDocument.documentElement();
    if (root.isNull())
        return;
    QVector<QDomElement> removable;
    for (QDomElement child = root.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (maskElement(child, false) == MaskRole::Remove)
            removable.append(child);
    }
    for (QDomElement& child : removable)
        root.removeChild(child);
    paintItBlack(root);
}

RKSVGCompiler::MaskRole RKSVGCompiler::maskElement(QDomElement element, bool insideRefinement)
{
    const QString name = element.tagName();
    if (name == STR_DEFS || name == STR_METADATA)
        return MaskRole::Keep;
    if (name == STR_STYLE) {
        for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
            if (node.isText())
                node.setNodeValue(repaintedCss(node.nodeValue(), STR_BLACK));
        }
        return MaskRole::Keep;
    }
    if (isKnockOut(element)) {
        applyRemoveSpotColorInstruction(element);
        return MaskRole::Keep;
    }
    const bool refined = insideRefinement || isRefined(element);
    if (refined)
        paintItBlack(element);
    QVector<QDomElement> removable;
    bool keepsSomething = false;
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (maskElement(child, refined) == MaskRole::Remove)
            removable.append(child);
        else
            keepsSomething = true;
    }
    if (refined)
        return MaskRole::Keep;
    if (!keepsSomething)
        return MaskRole::Remove;
    for (QDomElement& child : removable)
        element.removeChild(child);
    QDomNode node = element.firstChild();
    while (!node.isNull()) {
        const QDomNode next = node.nextSibling();
        if (node.isText())
            element.removeChild(node);
        node = next;
    }
    paintItBlack(element);
    return MaskRole::Keep;
}

void RKSVGCompiler::applyRemoveSpotColorInstruction(QDomElement element)
{
    if (element.isNull() || !isKnockOut(element))
        return;
    paint(element, STR_WHITE, true);
    element.setAttribute(STR_COMP_OP, STR_SRC_OUT);
}

void RKSVGCompiler::paintItBlack(QDomElement element)
{
    paint(element, STR_BLACK, false);
}

void RKSVGCompiler::paintAllBlack(QDomElement element)
{
    paint(element, STR_BLACK, true);
}

void RKSVGCompiler::paint(QDomElement element, const QString& color, bool recursive)
{
    const QDomElement top = element;
    for (QDomElement current = top; !current.isNull(); current = recursive ? nextInside(current, top) : QDomElement()) {
        for (const QString& name : {STR_FILL, STR_STROKE}) {
            if (current.hasAttribute(name) && !isNone(current.attribute(name)) && !current.attribute(name).trimmed().isEmpty())
                current.setAttribute(name, color);
        }
        for (const QString& name : OPACITY_ATTRIBUTES) {
            if (current.hasAttribute(name))
                current.setAttribute(name, STR_ONE);
        }
        if (current.hasAttribute(STR_STYLE))
            current.setAttribute(STR_STYLE, repaintedCss(current.attribute(STR_STYLE), color));
    }
}

// ---- day markers ----

void RKSVGCompiler::appendChildMarker()
{
    const QDomElement root = myDocument.documentElement();
    for (QDomElement day = root; !day.isNull(); day = RKXMLParser::nextElement(day)) {
        const QString id = day.attribute(STR_ID);
        if (!id.startsWith(STR_DAY_ID_PREFIX))
            continue;
        const QString markerId = STR_MARKER_PREFIX + id;
        for (QDomElement child = day.firstChildElement(STR_RECT); !child.isNull();) {
            const QDomElement next = child.nextSiblingElement(STR_RECT);
            if (child.attribute(STR_ID) == markerId)
                day.removeChild(child);
            child = next;
        }
        QRectF bounds;
        for (QDomElement part = day; !part.isNull(); part = nextInside(part, day)) {
            const QRectF area = markerArea(part);
            if (!area.isNull())
                bounds = bounds.isNull() ? area : bounds.united(area);
        }
        if (bounds.isNull())
            continue;
        // Pieces at both ends of the number range: the widest marker there is.
        bounds.setWidth(std::min(bounds.width(), std::numeric_limits<double>::max()));
        bounds.setHeight(std::min(bounds.height(), std::numeric_limits<double>::max()));
        QDomElement marker = myDocument.createElement(STR_RECT);
        marker.setAttribute(STR_ID, markerId);
        marker.setAttribute(STR_X, number(bounds.x()));
        marker.setAttribute(STR_Y, number(bounds.y()));
        marker.setAttribute(STR_WIDTH, number(bounds.width()));
        marker.setAttribute(STR_HEIGHT, number(bounds.height()));
        marker.setAttribute(STR_FILL, STR_NONE);
        day.appendChild(marker);
    }
}

// ---- results ----

QString RKSVGCompiler::resultString() const
{
    return myDocument.toString(-1);
}

QByteArray RKSVGCompiler::resultByteArray() const
{
    return myDocument.toByteArray(-1);
}
