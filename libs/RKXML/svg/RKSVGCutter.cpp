#include "RKSVGCutter.h"

#include <QDomDocument>
#include <QDomImplementation>
#include <QSvgRenderer>
#include <QTextStream>

namespace {
const QString STR_ID = QStringLiteral("id");
const QString STR_SVG = QStringLiteral("svg");

void collectMarks(const QDomElement& element, const QString& name, const QString& value, QList<QDomElement>& marks)
{
    if (element.hasAttribute(name) && element.attribute(name) == value) {
        marks.append(element);
        return;
    }
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        collectMarks(child, name, value, marks);
}
}

RKSVGCutter::RKSVGCutter(const QString& cutAttribute, const QString& cutValue)
    : myCutAttribute(cutAttribute)
    , myCutValue(cutValue)
{
}

QList<QDomElement> RKSVGCutter::findCutMarks(const QDomElement& element) const
{
    QList<QDomElement> marks;
    if (!element.isNull())
        collectMarks(element, myCutAttribute, myCutValue, marks);
    return marks;
}

QString RKSVGCutter::createSubTree(const QDomElement& element) const
{
    QString text;
    QTextStream stream(&text);
    element.save(stream, 1);
    stream.flush();
    return QStringLiteral("<svg>%1</svg>").arg(text);
}

QList<RKSVGSnippet> RKSVGCutter::cut(const QDomElement& svgElement) const
{
    QList<RKSVGSnippet> snippets;
    const QList<QDomElement> marks = findCutMarks(svgElement);
    if (marks.isEmpty())
        return snippets;

    QDomDocument drawing(QDomImplementation().createDocumentType(STR_SVG, QString(), QString()));
    drawing.appendChild(drawing.importNode(svgElement, true));
    QSvgRenderer renderer(drawing.toString(1).toUtf8());

    for (const QDomElement& mark : marks) {
        const QString id = mark.attribute(STR_ID);
        const bool known = !id.isEmpty() && renderer.isValid() && renderer.elementExists(id);
        snippets.append(RKSVGSnippet(createSubTree(mark), id, known ? renderer.boundsOnElement(id) : QRectF(),
            known ? renderer.transformForElement(id) : QTransform()));
    }
    return snippets;
}
