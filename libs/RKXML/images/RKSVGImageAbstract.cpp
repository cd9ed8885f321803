#include "RKSVGImageAbstract.h"

#include "RKXMLBuilder.h"

#include <QDomNamedNodeMap>

namespace {
const QString STR_INHERIT_ATTRIBUTES = QStringLiteral("inheritAttributes");
const QString STR_VAKO_CAL = QStringLiteral("vako:cal");
const QString STR_HOLIDAY = QStringLiteral("holiday");

QMap<QString, QString> readInheritedAttributes(const QDomElement& element)
{
    QMap<QString, QString> attributes;
    const QDomNamedNodeMap map = element.firstChildElement(STR_INHERIT_ATTRIBUTES).attributes();
    for (int i = 0; i < map.count(); ++i) {
        const QDomAttr attribute = map.item(i).toAttr();
        attributes.insert(attribute.name(), attribute.value());
    }
    return attributes;
}
}

RKSVGImageAbstract::RKSVGImageAbstract(const QDomElement& element)
    : myCssSheets(element)
    , myInheritedAttributes(readInheritedAttributes(element))
{
}

RKSVGImageAbstract::RKSVGImageAbstract(const RKCssSheetTitleIdMap& sheets, const QMap<QString, QString>& inheritedAttributes)
    : myCssSheets(sheets)
    , myInheritedAttributes(inheritedAttributes)
{
}

QDomElement RKSVGImageAbstract::buildXML(QDomElement& parent) const
{
    QDomElement image = RKXMLBuilder::buildDomElement(parent, type().encode());
    QDomElement inherited = RKXMLBuilder::buildDomElement(image, STR_INHERIT_ATTRIBUTES);
    for (auto it = myInheritedAttributes.constBegin(); it != myInheritedAttributes.constEnd(); ++it)
        inherited.setAttribute(it.key(), it.value());
    cssSheets().buildXML(image);
    return image;
}

bool RKSVGImageAbstract::canDoCalendariumHolidays() const
{
    return hasHolidayField(document().documentElement());
}

RKCssSheetTitleIdMap RKSVGImageAbstract::cssSheets() const
{
    QReadLocker lock(&mySheetLock);
    return myCssSheets;
}

void RKSVGImageAbstract::setCssSheets(const RKCssSheetTitleIdMap& sheets)
{
    QWriteLocker lock(&mySheetLock);
    myCssSheets = sheets;
}

void RKSVGImageAbstract::setCustomCssSheet(const QString& id)
{
    QWriteLocker lock(&mySheetLock);
    myCssSheets.setCustomCssSheet(id);
}

bool RKSVGImageAbstract::hasHolidayField(const QDomElement& element) const
{
    if (element.attribute(STR_VAKO_CAL).contains(STR_HOLIDAY))
        return true;
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (hasHolidayField(child))
            return true;
    }
    return false;
}
