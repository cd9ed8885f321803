// The clip-art normaliser on an SVG from the input. The input document is never changed; the
// result is written canonically and parses again; an "svg" document stays one; no empty group
// and no comment is left in it; file references are absolute or kept on purpose. Without
// definitions and "use" the text of the drawing is kept, in document order when there are no
// layers. A result with nothing left to expand or split out is a fixed point of the pipeline.
// With a logo (the input itself), every logo place gets a layer whose logo group has a transform the
// reader accepts.
#include "FuzzSupport.h"

#include <RKSVGNormalizer.h>
#include <RKSVGTransformReader.h>
#include <RKXMLParser.h>

#include <QBuffer>

namespace {

QFileInfo sourceFile()
{
    return QFileInfo(fuzz::workDir() + QStringLiteral("/clipart/input.svg"));
}

bool isSvg(const QDomDocument& document)
{
    return document.documentElement().tagName().compare(QLatin1String("svg"), Qt::CaseInsensitive) == 0;
}

// All elements below and at `root` in document order (bounded by the input's size anyway).
QVector<QDomElement> elements(const QDomElement& root)
{
    QVector<QDomElement> result;
    for (QDomElement e = root; !e.isNull(); e = RKXMLParser::nextElement(e))
        result.append(e);
    return result;
}

bool contains(const QVector<QDomElement>& all, const QString& name)
{
    return std::any_of(all.cbegin(), all.cend(), [&](const QDomElement& e) { return e.tagName() == name; });
}

// The text of the drawing: non-blank text and CDATA below `root`, in document order.
QStringList texts(const QDomElement& root)
{
    QStringList result;
    QVector<QDomNode> stack{ root };
    while (!stack.isEmpty()) {
        const QDomNode node = stack.takeLast();
        if (node.isText() && !node.nodeValue().trimmed().isEmpty())
            result.append(node.nodeValue());
        QVector<QDomNode> children;
        for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
            children.append(child);
        for (int i = children.size() - 1; i >= 0; --i)
            stack.append(children.at(i));
    }
    return result;
}

bool hasComment(const QDomNode& root)
{
    for (QDomNode child = root.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.isComment() || hasComment(child))
            return true;
    }
    return false;
}

void checkReferences(const QVector<QDomElement>& all)
{
    for (const QDomElement& e : all) {
        const QString reference = e.attribute(QStringLiteral("xlink:href"));
        if (reference.isEmpty() || (e.tagName() == QLatin1String("use") && reference.startsWith(QLatin1Char('#'))))
            continue;
        const int colon = reference.indexOf(QLatin1Char(':'));
        const bool url = colon >= 2 && reference.at(0).isLetter() && reference.at(0).unicode() < 128;
        fuzz::require(url || QDir::isAbsolutePath(reference));
        if (e.hasAttribute(QStringLiteral("class")))
            fuzz::require(!e.hasAttribute(QStringLiteral("fill-rule")));
    }
}

void checkWritten(const QDomDocument& result)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    fuzz::require(RKXMLBuilder::saveCanonicalXML(result, &buffer, 4));
    QDomDocument again;
    fuzz::require(fuzz::parse(bytes, &again));
    fuzz::require(again.documentElement().tagName() == result.documentElement().tagName());
}

bool leftToDo(const QVector<QDomElement>& all)
{
    return std::any_of(all.cbegin(), all.cend(), [](const QDomElement& e) {
        return e.tagName() == QLatin1String("use") || e.tagName() == QLatin1String("defs")
            || RKXMLParser::boolAttribute(e, QStringLiteral("vako:cal_embed"), false);
    });
}

// The input is its own logo: the places and the logo's size both come from it.
void checkLogo(const QDomDocument& input, const QDomDocument& normalized)
{
    const QDomNodeList places = normalized.elementsByTagName(QStringLiteral("vako:logo"));
    if (places.isEmpty())
        return;
    // A place's own transform comes first in the list; the input may have broken it.
    bool ownTransforms = false;
    for (int i = 0; i < places.size(); ++i)
        ownTransforms = ownTransforms || places.at(i).toElement().hasAttribute(QStringLiteral("transform"));
    const QDomDocument withLogo = RKSVGNormalizer::prepareDomDocument(input, sourceFile(), input);
    checkWritten(withLogo);
    // One layer per place at the end: a background rectangle and the logo's group.
    QDomElement layer = withLogo.documentElement().lastChildElement();
    for (int i = 0; i < places.size(); ++i, layer = layer.previousSiblingElement()) {
        fuzz::require(layer.attribute(QStringLiteral("vako:layertype")) == QLatin1String("render"));
        const QDomElement background = layer.firstChildElement();
        const QDomElement foreground = background.nextSiblingElement();
        fuzz::require(background.tagName() == QLatin1String("rect") && foreground.attribute(QStringLiteral("class")) == QLatin1String("logo_foreground"));
        if (!ownTransforms)
            fuzz::require(fuzz::acceptedTransform(foreground.attribute(QStringLiteral("transform"))));
    }
}
}

FUZZ_PLAIN_INITIALIZE

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QDomDocument document;
    if (!fuzz::parse(fuzz::bytes(data, size), &document))
        return 0;
    const QString before = document.toString(1);
    const QVector<QDomElement> input = elements(document.documentElement());

    const QDomDocument result = RKSVGNormalizer::prepareDomDocument(document, sourceFile(), QDomDocument());
    fuzz::require(document.toString(1) == before);
    checkWritten(result);
    if (!isSvg(document)) {
        fuzz::require(fuzz::canonical(result) == fuzz::canonical(document));
        return 0;
    }
    fuzz::require(result.documentElement().tagName() == document.documentElement().tagName());

    const QVector<QDomElement> output = elements(result.documentElement());
    for (const QDomElement& e : output)
        fuzz::require(e.tagName() != QLatin1String("g") || e.hasChildNodes());
    fuzz::require(!hasComment(result.documentElement()));
    checkReferences(output);

    if (!contains(input, QStringLiteral("defs")) && !contains(input, QStringLiteral("use"))) {
        QStringList was = texts(document.documentElement());
        QStringList is = texts(result.documentElement());
        const bool layers = std::any_of(input.cbegin(), input.cend(),
            [](const QDomElement& e) { return e.hasAttribute(QStringLiteral("vako:layertype")); });
        if (layers) {
            was.sort();
            is.sort();
        }
        fuzz::require(was == is);
    }

    if (!leftToDo(output)) {
        const QDomDocument again = RKSVGNormalizer::prepareDomDocument(result, sourceFile(), QDomDocument());
        fuzz::require(fuzz::canonical(again) == fuzz::canonical(result));
    }
    checkLogo(document, result);
    return 0;
}
