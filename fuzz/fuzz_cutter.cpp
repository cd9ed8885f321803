// The cutter on an SVG from the input, with the marks "class"="cut" and with each of the
// first ids the drawing offers. The marks are the outermost elements whose attribute has the
// value, in document order; there is one snippet per mark, its content the mark written into
// an "svg" element, which parses back to the mark (up to white space); its id the mark's. The input document is not
// changed. Where the renderer places a mark whose ancestors are plain groups with transforms the
// reader accepts, its matrix is the reader's accumulated transform of the mark's parent.
#include "FuzzSupport.h"

#include <RKSVGCutter.h>
#include <RKSVGTransformReader.h>
#include <RKXMLParser.h>

#include <QRegularExpression>
#include <QSet>

namespace {

const QString STR_ID = QStringLiteral("id");
const QString STR_TRANSFORM = QStringLiteral("transform");

QString withoutSpace(QString text)
{
    text.remove(QRegularExpression(QStringLiteral("\\s+")));
    return text;
}

bool isMark(const QDomElement& e, const QString& attribute, const QString& value)
{
    return e.hasAttribute(attribute) && e.attribute(attribute) == value;
}

bool hasMarkedAncestor(const QDomElement& e, const QString& attribute, const QString& value)
{
    for (QDomNode node = e.parentNode(); node.isElement(); node = node.parentNode()) {
        if (isMark(node.toElement(), attribute, value))
            return true;
    }
    return false;
}

// Qt's renderer reads the same transforms as the reader only on plain groups below a plain
// root; styles could carry transforms of their own.
bool plainAncestry(const QDomElement& mark)
{
    for (QDomNode node = mark.parentNode(); node.isElement(); node = node.parentNode()) {
        const QDomElement e = node.toElement();
        const bool root = node.parentNode().isDocument();
        if (root ? (e.tagName() != QLatin1String("svg") || e.hasAttribute(STR_TRANSFORM)) : e.tagName() != QLatin1String("g"))
            return false;
        if (e.hasAttribute(QStringLiteral("style")) || e.hasAttribute(QStringLiteral("class")) || !fuzz::acceptedTransform(e.attribute(STR_TRANSFORM)))
            return false;
        if (!fuzz::qtReadsAlike(e.attribute(STR_TRANSFORM)))
            return false;
    }
    return true;
}

void check(const QDomDocument& document, const QVector<QDomElement>& all, const QString& attribute, const QString& value,
    const QSet<QString>& uniqueIds, bool hasStyles)
{
    const QDomElement root = document.documentElement();
    const RKSVGCutter cutter(attribute, value);
    const QList<QDomElement> marks = cutter.findCutMarks(root);
    QVector<QDomElement> expected;
    for (const QDomElement& e : all) {
        if (isMark(e, attribute, value) && !hasMarkedAncestor(e, attribute, value))
            expected.append(e);
    }
    fuzz::require(marks.toVector() == expected);

    const QString before = fuzz::canonical(document);
    const QList<RKSVGSnippet> snippets = cutter.cut(root);
    fuzz::require(fuzz::canonical(document) == before);
    fuzz::require(snippets.size() == marks.size());
    for (int i = 0; i < snippets.size(); ++i) {
        const RKSVGSnippet& snippet = snippets.at(i);
        const QDomElement& mark = marks.at(i);
        fuzz::require(snippet.ID() == mark.attribute(STR_ID));
        fuzz::require(snippet.content() == cutter.createSubTree(mark));
        QDomDocument piece;
        fuzz::require(fuzz::parse(snippet.content().toUtf8(), &piece));
        fuzz::require(piece.documentElement().tagName() == QLatin1String("svg"));
        // The indented writing adds white space to mixed content; nothing else may change.
        fuzz::require(withoutSpace(fuzz::canonical(piece.documentElement().firstChildElement())) == withoutSpace(fuzz::canonical(mark)));
        if (snippet.ID().isEmpty()) {
            fuzz::require(snippet.boundingBox() == QRectF() && snippet.matrix().isIdentity());
            continue;
        }
        if (!hasStyles && uniqueIds.contains(snippet.ID()) && !snippet.boundingBox().isNull() && plainAncestry(mark)) {
            const QTransform reader = RKSVGTransformReader::transformMatrix(mark.parentNode().toElement());
            if (fuzz::isFinite(reader) && fuzz::isFinite(snippet.matrix()))
                fuzz::require(fuzz::nearlyEqual(snippet.matrix(), reader, fuzz::magnitude(reader), 1e-6));
        }
    }
}

}

FUZZ_PLAIN_INITIALIZE

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QDomDocument document;
    if (!fuzz::parse(fuzz::bytes(data, size), &document))
        return 0;
    QVector<QDomElement> all;
    QStringList ids;
    QSet<QString> seen;
    QSet<QString> repeated;
    bool hasStyles = false;
    for (QDomElement e = document.documentElement(); !e.isNull(); e = RKXMLParser::nextElement(e)) {
        all.append(e);
        hasStyles = hasStyles || e.tagName() == QLatin1String("style");
        if (!e.hasAttribute(STR_ID))
            continue;
        const QString id = e.attribute(STR_ID);
        if (seen.contains(id))
            repeated.insert(id);
        else
            ids.append(id);
        seen.insert(id);
    }
    const QSet<QString> unique = seen - repeated;

    check(document, all, QStringLiteral("class"), QStringLiteral("cut"), unique, hasStyles);
    for (const QString& id : ids.mid(0, 3))
        check(document, all, STR_ID, id, unique, hasStyles);
    return 0;
}
