#include "RKRelativePinAnchorPoint.h"

#include "RKXMLParser.h"

#include <RKRealRange.h>

RKRelativePinAnchorPoint RKRelativePinAnchorPoint::decode(const QDomElement& element)
{
    const QString fallback = QStringLiteral("-1.0");
    const double x = RKXMLParser::attribute(element, QStringLiteral("anchor_x"), fallback, true).toDouble();
    const double y = RKXMLParser::attribute(element, QStringLiteral("anchor_y"), fallback, true).toDouble();
    return RKRelativePinAnchorPoint(QPointF(x, y));
}

bool RKRelativePinAnchorPoint::isValid() const
{
    static const RKRealRange unit(0.0, 1.0);
    return unit.contains(myPoint.x()) && unit.contains(myPoint.y());
}
