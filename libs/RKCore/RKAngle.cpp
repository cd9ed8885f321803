#include "RKAngle.h"

#include <QtMath>

int RKAngle::wholeDegrees() const
{
    // qRound is undefined outside the int range: clamp first (NaN counts as 0).
    if (qIsNaN(myDegrees))
        return 0;
    if (myDegrees >= 2147483647.0)
        return 2147483647;
    if (myDegrees <= -2147483648.0)
        return -2147483647 - 1;
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
