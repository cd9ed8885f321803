#include "RKAngle.h"

#include <QtMath>

int RKAngle::wholeDegrees() const
{
    return qRound(myDegrees);
}

double RKAngle::radians() const
{
    return qDegreesToRadians(myDegrees);
}

QString RKAngle::toString() const
{
    return QString::number(myDegrees, 'g', 10);
}

RKAngle RKAngle::fromString(const QString& text, bool* ok)
{
    bool parsed = false;
    const double v = text.trimmed().toDouble(&parsed);
    if (ok)
        *ok = parsed;
    return RKAngle(parsed ? v : 0.0);
}
