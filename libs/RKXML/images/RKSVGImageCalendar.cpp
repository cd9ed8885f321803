#include "RKSVGImageCalendar.h"

#include "RKXMLBuilder.h"

#include <QDebug>
#include <QQueue>

namespace {
const QString STR_SVG_DOCUMENT = QStringLiteral("svgDocument");
}

RKSVGImageCalendar::RKSVGImageCalendar(const QDomDocument& document, const RKCssSheetTitleIdMap& sheets)
    : RKSVGImageAbstract(sheets, QMap<QString, QString>())
    , mySvgDocument(document)
{
}

RKSVGImageCalendar::RKSVGImageCalendar(const QDomElement& element)
    : RKSVGImageAbstract(element)
{
    const QDomElement text = element.firstChildElement(STR_SVG_DOCUMENT);
    if (text.isNull()) {
        qWarning().noquote() << QStringLiteral("could not find element svgDocument");
        return;
    }
    // Parsed as text: the document travels as characters, whatever its declaration says.
    QString message;
    int line = 0;
    int column = 0;
    if (!mySvgDocument.setContent(text.text(), false, &message, &line, &column)) {
        qWarning().noquote() << QStringLiteral("XML parse error in \"%1\" at line %2, column %3: %4")
                                    .arg(STR_SVG_DOCUMENT)
                                    .arg(line)
                                    .arg(column)
                                    .arg(message);
        mySvgDocument = QDomDocument();
    }
}

QDomDocument RKSVGImageCalendar::document() const
{
    return mySvgDocument;
}

QString RKSVGImageCalendar::uniqueName() const
{
    return QStringLiteral("RKSVGImageCalendar:hash=%1").arg(hashValue());
}

uint RKSVGImageCalendar::hashValue() const
{
    uint hash = myCalendarHash.load(std::memory_order_relaxed);
    if (hash == 0) {
        hash = calcHashValue();
        myCalendarHash.store(hash, std::memory_order_relaxed);
    }
    return hash;
}

uint RKSVGImageCalendar::calcHashValue() const
{
    QString tags;
    QQueue<QDomElement> work;
    const QDomElement root = mySvgDocument.documentElement();
    if (!root.isNull())
        work.enqueue(root);
    while (!work.isEmpty()) {
        const QDomElement element = work.dequeue();
        tags += element.tagName();
        for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
            work.enqueue(child);
    }
    const uint hash = qHash(tags, 0);
    return hash == 0 ? 1 : hash;
}

RKSVGImageType RKSVGImageCalendar::type() const
{
    return RKSVGImageType(RKSVGImageTypeCalendar);
}

bool RKSVGImageCalendar::isValid() const
{
    return true;
}

QDomElement RKSVGImageCalendar::buildXML(QDomElement& parent) const
{
    QDomElement image = RKSVGImageAbstract::buildXML(parent);
    RKXMLBuilder::buildDomElement(image, STR_SVG_DOCUMENT, mySvgDocument.toString(1));
    return image;
}
