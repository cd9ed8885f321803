// Typed DOM readers on every attribute of every element, then the canonical writer's round
// trip: write, read back, write again; the two writes must be equal.
#include "FuzzSupport.h"

#include <RKXMLBuilder.h>
#include <RKXMLKeywords.h>
#include <RKXMLParser.h>

#include <QDomNamedNodeMap>

FUZZ_PLAIN_INITIALIZE

static void readEverything(const QDomElement& element)
{
    static const RKXMLKeywords keywords;
    const QDomNamedNodeMap map = element.attributes();
    for (int i = 0; i < map.count(); ++i) {
        const QString name = map.item(i).nodeName();
        const QString value = map.item(i).nodeValue();
        RKXMLParser::intAttribute(element, name, 5);
        RKXMLParser::doubleAttribute(map, name, 1.0);
        RKXMLParser::boolAttribute(element, name, true);
        RKXMLParser::colorAttribute(map, name, QColor());
        RKXMLParser::colorAttributeEx(element, name, QColor());
        RKXMLParser::readAngle(element, name, 0);
        RKXMLParser::dateTimeAttribute(element, name, QString());
        RKXMLParser::dateTimeAttribute(element, name, Qt::ISODate, QDateTime());
        RKXMLParser::readColor(value);
        RKXMLParser::safeDouble(value);
        keywords.alignment(value);
    }
    RKXMLParser::readRect(map);
    RKXMLParser::readRectF(map);
    RKXMLParser::readSize(element);
    RKXMLParser::readSizeF(map);
    RKXMLParser::intValue(element, 3);
    RKXMLParser::intRange(element, QStringLiteral("from"), QStringLiteral("to"), 0, 0);
    RKXMLParser::text(element, QStringLiteral("name"), QString());
    RKXMLParser::doubleText(element, QStringLiteral("value"), 0.0);
    RKXMLParser::boolText(element, QStringLiteral("flag"), false);
    if (element.tagName() == QLatin1String("image"))
        RKXMLParser::readImage(element);
    if (element.tagName() == QLatin1String("font"))
        RKXMLParser::readFont(element);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QDomDocument document;
    if (!fuzz::parse(fuzz::bytes(data, size), &document))
        return 0;
    // Bounded walk: nextElement leaves a subtree, so it visits each element once.
    int visited = 0;
    for (QDomElement e = document.documentElement(); !e.isNull() && visited < 2000; e = RKXMLParser::nextElement(e), ++visited)
        readEverything(e);

    const QString first = RKXMLBuilder::toString(document, 2);
    QDomDocument again;
    fuzz::require(again.setContent(first, false));
    const QString second = RKXMLBuilder::toString(again, 2);
    fuzz::require(first == second);
    return 0;
}
