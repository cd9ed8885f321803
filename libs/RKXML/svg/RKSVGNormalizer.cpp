#include "RKSVGNormalizer.h"

#include "RKXMLParser.h"

#include <QDomImplementation>
#include <QPointF>
#include <QQueue>
#include <QRectF>
#include <QRegularExpression>
#include <QVarLengthArray>
#include <QVector>

#include <algorithm>
#include <cmath>

const QString RKSVGNormalizer::STR_XLINK_HREF = QStringLiteral("xlink:href");
const QString RKSVGNormalizer::STR_CLASS = QStringLiteral("class");
const QString RKSVGNormalizer::STR_FILL_RULE = QStringLiteral("fill-rule");
const QString RKSVGNormalizer::STR_SVG = QStringLiteral("svg");
const QString RKSVGNormalizer::STR_G = QStringLiteral("g");
const QString RKSVGNormalizer::STR_TRANSFORM = QStringLiteral("transform");
const QString RKSVGNormalizer::STR_VAKO_LAYERTYPE = QStringLiteral("vako:layertype");
const QString RKSVGNormalizer::STR_VAKO_MERGED = QStringLiteral("vako:merged");
const QString RKSVGNormalizer::STR_RENDER = QStringLiteral("render");
const QString RKSVGNormalizer::STR_MARK_CAL_EMBED = QStringLiteral("vako:mark_cal_embed");
const QString RKSVGNormalizer::STR_TRUE = QStringLiteral("true");
const QString RKSVGNormalizer::STR_MARK_TEXT_AREA = QStringLiteral("vako:textarea");
const QString RKSVGNormalizer::STR_USE = QStringLiteral("use");
const QString RKSVGNormalizer::STR_HASH = QStringLiteral("#");
const QString RKSVGNormalizer::STR_TEXT = QStringLiteral("text");
const QString RKSVGNormalizer::STR_HOLIDAY = QStringLiteral("holiday");
const QString RKSVGNormalizer::STR_HOLIDAYS = QStringLiteral("holidays");
const QString RKSVGNormalizer::STR_FILL = QStringLiteral("fill");
const QString RKSVGNormalizer::STR_STYLE_FILL = QStringLiteral("fill:");
const QString RKSVGNormalizer::STR_STROKE = QStringLiteral("stroke");
const QString RKSVGNormalizer::STR_STYLE = QStringLiteral("style");
const QString RKSVGNormalizer::STR_PATH = QStringLiteral("path");
const QString RKSVGNormalizer::STR_D = QStringLiteral("d");
const QString RKSVGNormalizer::STR_CLOSEPATH = QStringLiteral("z");
const QString RKSVGNormalizer::STR_COLOR_BLACK = QStringLiteral("#000000");
const QChar RKSVGNormalizer::KOMMA = QLatin1Char(',');
const QStringList RKSVGNormalizer::myClosedShapeGraphicsElements = {
    QStringLiteral("ellipse"), QStringLiteral("circle"), QStringLiteral("polygon"), QStringLiteral("rect")
};

namespace {
const QString STR_DEFS = QStringLiteral("defs");
const QString STR_ID = QStringLiteral("id");
const QString STR_CAL_EMBED = QStringLiteral("vako:cal_embed");
const QString STR_LOGO = QStringLiteral("vako:logo");
const QString STR_BACKGROUND_CLASS = QStringLiteral("vako:background_class");
const QString STR_BACKGROUND_FILL = QStringLiteral("vako:background_fill");
const QString STR_RECT = QStringLiteral("rect");
const QString STR_LOGO_BACKGROUND = QStringLiteral("logo_background");
const QString STR_LOGO_FOREGROUND = QStringLiteral("logo_foreground");
const QString STR_X = QStringLiteral("x");
const QString STR_Y = QStringLiteral("y");
const QString STR_WIDTH = QStringLiteral("width");
const QString STR_HEIGHT = QStringLiteral("height");
const QString STR_VIEWBOX = QStringLiteral("viewBox");
// The attributes of "use" that expansion drops (its "transform" stays).
const QString* const USE_ATTRIBUTES_DROPPED[] = { &RKSVGNormalizer::STR_XLINK_HREF, &STR_WIDTH, &STR_HEIGHT, &STR_X, &STR_Y };
// The geometry of a logo place that its background rectangle takes over.
const QString* const LOGO_PLACE_GEOMETRY[] = { &STR_X, &STR_Y, &STR_WIDTH, &STR_HEIGHT,
    &RKSVGNormalizer::STR_TRANSFORM };

// Every step works only on documents whose document element is "svg" (in any case).
bool belongsToSvgDocument(const QDomNode& node)
{
    const QDomDocument document = node.isDocument() ? node.toDocument() : node.ownerDocument();
    return document.documentElement().tagName().compare(RKSVGNormalizer::STR_SVG, Qt::CaseInsensitive) == 0;
}

bool isBlank(const QString& text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.isSpace(); });
}

// "data:", "http:" and other URLs name no file in the document's directory. A scheme
// has two characters at least, so that "C:/..." stays a path.
bool hasUrlScheme(const QString& reference)
{
    const int colon = reference.indexOf(QLatin1Char(':'));
    if (colon < 2 || !reference.at(0).isLetter() || reference.at(0).unicode() > 127)
        return false;
    for (int i = 1; i < colon; ++i) {
        const QChar c = reference.at(i);
        if (c.unicode() > 127 || !(c.isLetterOrNumber() || c == QLatin1Char('+') || c == QLatin1Char('-') || c == QLatin1Char('.')))
            return false;
    }
    return true;
}

// An empty document with a copy of the document type of `document` (QDomDocument::cloneNode
// loses its public and system identifiers).
QDomDocument documentWithTypeOf(const QDomDocument& document)
{
    const QDomDocumentType type = document.doctype();
    if (type.name().isEmpty())
        return QDomDocument();
    return QDomDocument(QDomImplementation().createDocumentType(type.name(), type.publicId(), type.systemId()));
}

// A deep copy of `document`: its document type and its top-level nodes.
QDomDocument copyDocument(const QDomDocument& document)
{
    QDomDocument copy = documentWithTypeOf(document);
    for (QDomNode node = document.firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (!node.isDocumentType())
            copy.appendChild(copy.importNode(node, true));
    }
    return copy;
}

bool isCalendarEmbedded(const QDomNode& node)
{
    if (!node.isElement())
        return false;
    const QDomElement element = node.toElement();
    return element.hasAttribute(STR_CAL_EMBED) && RKXMLParser::boolAttribute(element, STR_CAL_EMBED, false);
}

QString number(double value)
{
    return QString::number(value, 'g', 10);
}

// The user-space rectangle of a logo: its viewBox when that is usable, else (0, 0, width, height).
QRectF logoFrame(const QDomElement& root)
{
    const QString viewBox = root.attribute(STR_VIEWBOX);
    const QVector<QStringRef> numbers = viewBox.splitRef(QRegularExpression(QStringLiteral("[\\s,]+")), Qt::SkipEmptyParts);
    if (numbers.size() == 4) {
        bool ok[4] = { false, false, false, false };
        const QRectF frame(numbers[0].toDouble(&ok[0]), numbers[1].toDouble(&ok[1]), numbers[2].toDouble(&ok[2]),
            numbers[3].toDouble(&ok[3]));
        if (ok[0] && ok[1] && ok[2] && ok[3] && frame.width() > 0 && frame.height() > 0)
            return frame;
    }
    return QRectF(0, 0, RKXMLParser::doubleAttribute(root, STR_WIDTH), RKXMLParser::doubleAttribute(root, STR_HEIGHT));
}

void liftLayers(QDomNode node)
{
    if (node.isElement() && node.toElement().hasAttribute(RKSVGNormalizer::STR_VAKO_LAYERTYPE)) {
        QDomElement layer = node.toElement();
        QStringList transforms;
        const QString own = layer.attribute(RKSVGNormalizer::STR_TRANSFORM);
        if (!own.trimmed().isEmpty())
            transforms << own;
        QDomNode outermost;
        for (QDomNode ancestor = layer.parentNode(); ancestor.isElement() && ancestor.nodeName() == RKSVGNormalizer::STR_G;
             ancestor = ancestor.parentNode()) {
            const QString transform = ancestor.toElement().attribute(RKSVGNormalizer::STR_TRANSFORM);
            if (!transform.trimmed().isEmpty())
                transforms.prepend(transform);
            outermost = ancestor;
        }
        if (outermost.isNull())
            return;
        if (!transforms.isEmpty())
            layer.setAttribute(RKSVGNormalizer::STR_TRANSFORM, transforms.join(QLatin1Char(' ')));
        outermost.parentNode().insertBefore(layer, outermost);
        return;
    }
    for (QDomNode child = node.firstChild(); !child.isNull();) {
        // A lifted layer lands before an ancestor of `child`, never among the siblings still to come.
        const QDomNode next = child.nextSibling();
        liftLayers(child);
        child = next;
    }
}

void removeEmpty(QDomNode node, const QStringList& names)
{
    for (QDomNode child = node.firstChild(); !child.isNull();) {
        const QDomNode next = child.nextSibling();
        removeEmpty(child, names);
        child = next;
    }
    if (node.isElement() && !node.hasChildNodes() && names.contains(node.nodeName()) && !node.parentNode().isNull())
        node.parentNode().removeChild(node);
}

void setDefaultFill(QDomNode& node)
{
    for (QDomElement child = node.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (RKSVGNormalizer::hasFillInstruction(child))
            continue;
        RKSVGNormalizer::setFillInstruction(child);
        setDefaultFill(child);
    }
}

bool containsElementNamed(const QDomElement& root, const QString& name)
{
    for (QDomElement child = root.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (child.nodeName() == name || containsElementNamed(child, name))
            return true;
    }
    return false;
}
}

QDomDocument RKSVGNormalizer::prepareDomDocument(const QDomDocument& document, const QFileInfo& file, const QDomDocument& logo)
{
    QDomDocument working = copyDocument(document);
    if (!belongsToSvgDocument(working))
        return working;
    makeAbsoluteHRefs(working, file.absoluteDir());
    removeComments(working.documentElement());
    expandUseTags(working);
    removeGsWithoutLayerType(working);
    working = normalize(working);
    removeElementsWithoutChilds(working, { STR_G });
    mergeLayertypeRenderWithNoCalEmbed(working);
    return replaceLogo(working, logo);
}

void RKSVGNormalizer::makeAbsoluteHRefs(QDomNode node, const QDir& directory)
{
    if (node.isNull() || !belongsToSvgDocument(node))
        return;
    QQueue<QDomNode> queue;
    queue.enqueue(node);
    while (!queue.isEmpty()) {
        const QDomNode current = queue.dequeue();
        if (current.isElement()) {
            QDomElement element = current.toElement();
            const QString reference = element.attribute(STR_XLINK_HREF);
            const bool local = element.tagName() == STR_USE && reference.startsWith(STR_HASH);
            if (!reference.isEmpty() && !local && !hasUrlScheme(reference))
                element.setAttribute(STR_XLINK_HREF, QDir::cleanPath(directory.absoluteFilePath(reference)));
            if (element.hasAttribute(STR_CLASS))
                element.removeAttribute(STR_FILL_RULE);
        }
        for (QDomNode child = current.firstChild(); !child.isNull(); child = child.nextSibling())
            queue.enqueue(child);
    }
}

void RKSVGNormalizer::removeComments(QDomElement element)
{
    if (element.isNull() || !belongsToSvgDocument(element))
        return;
    QQueue<QDomNode> queue;
    queue.enqueue(element);
    while (!queue.isEmpty()) {
        QDomNode current = queue.dequeue();
        for (QDomNode child = current.firstChild(); !child.isNull();) {
            const QDomNode next = child.nextSibling();
            if (child.isComment() || (child.isText() && isBlank(child.nodeValue())))
                current.removeChild(child);
            else
                queue.enqueue(child);
            child = next;
        }
    }
}

void RKSVGNormalizer::expandUseTags(QDomDocument& document)
{
    if (!belongsToSvgDocument(document))
        return;
    QDomElement root = document.documentElement();
    const QDomElement defs = root.firstChildElement(STR_DEFS);
    QHash<QString, QDomElement> groups;
    for (QDomElement group = defs.firstChildElement(STR_G); !group.isNull(); group = group.nextSiblingElement(STR_G))
        groups.insert(group.attribute(STR_ID), group);
    for (QDomElement group = root.firstChildElement(STR_G); !group.isNull(); group = group.nextSiblingElement(STR_G))
        expandUse(group, groups);
    if (!defs.isNull())
        root.removeChild(defs);
}

void RKSVGNormalizer::expandUse(QDomElement& element, const QHash<QString, QDomElement>& groups)
{
    if (element.tagName() != STR_USE) {
        for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
            expandUse(child, groups);
        return;
    }
    const QDomElement group = groups.value(element.attribute(STR_XLINK_HREF).mid(1));
    for (QDomElement child = group.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        element.appendChild(child.cloneNode(true));
    element.setTagName(STR_G);
    for (const QString* name : USE_ATTRIBUTES_DROPPED)
        element.removeAttribute(*name);
}

void RKSVGNormalizer::removeGsWithoutLayerType(QDomNode node)
{
    if (!node.isNull() && belongsToSvgDocument(node))
        liftLayers(node);
}

QDomDocument RKSVGNormalizer::normalize(const QDomDocument& document)
{
    QDomDocument target = documentWithTypeOf(document);
    for (QDomNode node = document.firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (node.isDocumentType())
            continue;
        // A processing instruction named "svg" is prolog like any other.
        if (node.isElement() && node.nodeName().compare(STR_SVG, Qt::CaseInsensitive) == 0) {
            QDomNode svg = target.appendChild(target.importNode(node, false));
            descendRecursive(document, target, node, svg);
            break;
        }
        target.appendChild(target.importNode(node, true));
    }
    return target;
}

QDomNode RKSVGNormalizer::descendRecursive(const QDomDocument& sourceDocument, QDomDocument& targetDocument,
    const QDomNode& sourceNode, QDomNode targetNode)
{
    QDomNode current = targetNode;
    for (QDomNode child = sourceNode.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (!isCalendarEmbedded(child)) {
            QDomNode copy = current.appendChild(targetDocument.importNode(child, false));
            current = descendRecursive(sourceDocument, targetDocument, child, copy);
            continue;
        }
        // The embedded element gets a copy of the layer structure around it, marked; the
        // following siblings continue in a second, unmarked copy.
        const QDomElement svg = targetDocument.documentElement();
        QVector<QDomNode> chain;
        for (QDomNode node = current; !node.isNull() && node != svg && !node.isDocument(); node = node.parentNode())
            chain.prepend(node);
        QDomNode parent = svg;
        for (const QDomNode& node : qAsConst(chain)) {
            QDomNode copy = parent.appendChild(node.cloneNode(false));
            QDomElement element = copy.toElement();
            if (element.tagName() == STR_G && element.attribute(STR_VAKO_LAYERTYPE) == STR_RENDER)
                element.setAttribute(STR_MARK_CAL_EMBED, STR_TRUE);
            parent = copy;
        }
        parent.appendChild(targetDocument.importNode(child, true));
        parent = svg;
        for (const QDomNode& node : qAsConst(chain))
            parent = parent.appendChild(node.cloneNode(false));
        current = parent;
    }
    return current.parentNode();
}

void RKSVGNormalizer::removeElementsWithoutChilds(QDomNode node, const QStringList& names)
{
    if (!node.isNull() && belongsToSvgDocument(node))
        removeEmpty(node, names);
}

void RKSVGNormalizer::mergeLayertypeRenderWithNoCalEmbed(QDomDocument& document)
{
    if (!belongsToSvgDocument(document))
        return;
    QDomElement root = document.documentElement();
    QVector<QDomNode> children;
    for (QDomNode child = root.firstChild(); !child.isNull(); child = child.nextSibling())
        children.append(child);

    QVector<QDomElement> run;
    auto wrapRun = [&]() {
        if (run.size() >= 2) {
            QDomElement merged = document.createElement(STR_G);
            merged.setAttribute(STR_VAKO_LAYERTYPE, STR_RENDER);
            merged.setAttribute(STR_VAKO_MERGED, run.size());
            root.insertBefore(merged, run.first());
            for (QDomElement& group : run) {
                group.removeAttribute(STR_VAKO_LAYERTYPE);
                merged.appendChild(group);
            }
        }
        run.clear();
    };
    for (const QDomNode& child : qAsConst(children)) {
        QDomElement element = child.toElement();
        if (!element.isNull() && isMergableLayertype(element))
            run.append(element);
        else if (!child.isComment() && !(child.isText() && isBlank(child.nodeValue())))
            wrapRun(); // anything painted (or unknown) between two layers keeps them apart
    }
    wrapRun();
}

bool RKSVGNormalizer::isMergableLayertype(QDomElement& element)
{
    return element.tagName() == STR_G && element.attribute(STR_VAKO_LAYERTYPE) == STR_RENDER
        && element.attribute(STR_MARK_CAL_EMBED) != STR_TRUE && !containsElementNamed(element, STR_MARK_TEXT_AREA);
}

QDomDocument RKSVGNormalizer::replaceLogo(QDomDocument document, const QDomDocument& logo)
{
    const QDomElement logoRoot = logo.documentElement();
    if (logo.isNull() || logoRoot.isNull() || !belongsToSvgDocument(document))
        return document;
    QDomElement root = document.documentElement();
    const QDomNodeList found = root.elementsByTagName(STR_LOGO);
    QVector<QDomElement> places;
    for (int i = 0; i < found.size(); ++i)
        places.append(found.at(i).toElement());

    const QRectF frame = logoFrame(logoRoot);
    for (const QDomElement& place : qAsConst(places)) {
        QDomElement layer = document.createElement(STR_G);
        layer.setAttribute(STR_VAKO_LAYERTYPE, STR_RENDER);
        root.appendChild(layer);

        QDomElement background = document.createElement(STR_RECT);
        for (const QString* name : LOGO_PLACE_GEOMETRY)
            copyAttribute(place, *name, background, *name);
        const QString backgroundClass = place.attribute(STR_BACKGROUND_CLASS).trimmed();
        background.setAttribute(STR_CLASS,
            backgroundClass.isEmpty() ? STR_LOGO_BACKGROUND : STR_LOGO_BACKGROUND + QLatin1Char(' ') + backgroundClass);
        maybeSetAttribute(background, STR_FILL, place.attribute(STR_BACKGROUND_FILL).trimmed());
        layer.appendChild(background);

        // Uniform scale that fits the logo into the place, centred in it.
        const QRectF box(RKXMLParser::doubleAttribute(place, STR_X), RKXMLParser::doubleAttribute(place, STR_Y),
            RKXMLParser::doubleAttribute(place, STR_WIDTH), RKXMLParser::doubleAttribute(place, STR_HEIGHT));
        double scale = 1.0;
        if (frame.width() > 0 && frame.height() > 0 && box.width() > 0 && box.height() > 0)
            scale = std::min(box.width() / frame.width(), box.height() / frame.height());
        if (!std::isfinite(scale))
            scale = 1.0; // a logo too small to measure
        QPointF offset = box.center() - QPointF(frame.width(), frame.height()) * scale / 2.0;
        // A place at the end of the number range leaves no room to centre: its corner then.
        if (!std::isfinite(offset.x()) || !std::isfinite(offset.y()))
            offset = box.topLeft();
        QDomElement foreground = document.createElement(STR_G);
        foreground.setAttribute(STR_CLASS, STR_LOGO_FOREGROUND);
        QString transform = QStringLiteral("translate(%1 %2) scale(%3)").arg(number(offset.x()), number(offset.y()), number(scale));
        if (place.hasAttribute(STR_TRANSFORM))
            transform.prepend(place.attribute(STR_TRANSFORM) + QLatin1Char(' '));
        if (!frame.topLeft().isNull())
            transform += QStringLiteral(" translate(%1 %2)").arg(number(-frame.x()), number(-frame.y()));
        foreground.setAttribute(STR_TRANSFORM, transform);
        for (QDomNode child = logoRoot.firstChild(); !child.isNull(); child = child.nextSibling())
            foreground.appendChild(document.importNode(child, true));
        layer.appendChild(foreground);
    }
    return document;
}

void RKSVGNormalizer::setDefaultFillAttribute(QDomNode& node)
{
    if (!node.isNull() && belongsToSvgDocument(node))
        setDefaultFill(node);
}

bool RKSVGNormalizer::hasFillInstruction(const QDomElement& element)
{
    return !element.attribute(STR_FILL).isEmpty() || element.attribute(STR_STYLE).contains(STR_STYLE_FILL, Qt::CaseInsensitive);
}

void RKSVGNormalizer::setFillInstruction(QDomElement& element)
{
    if (isClosedShapeGraphicsElement(element))
        element.setAttribute(STR_FILL, STR_COLOR_BLACK);
}

bool RKSVGNormalizer::isClosedShapeGraphicsElement(const QDomElement& element)
{
    const QString name = element.tagName();
    if (name.compare(STR_PATH, Qt::CaseInsensitive) == 0)
        return element.attribute(STR_D).contains(STR_CLOSEPATH, Qt::CaseInsensitive);
    return myClosedShapeGraphicsElements.contains(name, Qt::CaseInsensitive);
}

bool RKSVGNormalizer::hasHolidayClasses(const QDomNode& node)
{
    const QDomElement element = node.toElement();
    if (element.tagName() == STR_TEXT) {
        const QString value = element.attribute(STR_CLASS);
        if (value == STR_HOLIDAY || value == STR_HOLIDAYS)
            return true;
    }
    for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (hasHolidayClasses(child))
            return true;
    }
    return false;
}

void RKSVGNormalizer::copyAttribute(const QDomElement& source, const QString& sourceName, QDomElement& target,
    const QString& targetName)
{
    if (source.hasAttribute(sourceName))
        target.setAttribute(targetName, source.attribute(sourceName));
}

void RKSVGNormalizer::maybeSetAttribute(QDomElement& element, const QString& name, const QString& value)
{
    if (!value.isEmpty() && element.attribute(name).isEmpty())
        element.setAttribute(name, value);
}
