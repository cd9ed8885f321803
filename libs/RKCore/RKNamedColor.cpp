#include "RKNamedColor.h"

#include <QDebug>

RKNamedColor::RKNamedColor(const QColor& color, const QString& name)
    : myColor(color)
    , myName(name)
{
}

bool RKNamedColor::operator==(const RKNamedColor& other) const
{
    return myColor == other.myColor && myName == other.myName;
}

QDebug operator<<(QDebug debug, const RKNamedColor& color)
{
    QDebugStateSaver saver(debug);
    debug.nospace() << "RKNamedColor(" << color.color().name(QColor::HexArgb) << ", " << color.name() << ')';
    return debug;
}
