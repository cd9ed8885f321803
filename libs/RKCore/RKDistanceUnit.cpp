#include "RKDistanceUnit.h"

#include <QDebug>

double RKDistanceUnit::factor(bool* ok) const
{
    *ok = true;
    switch (myCode) {
    case Internal: return 1.0;
    case Millimetre: return 10.0;
    case Inch: return 254.0;
    case Centimetre: return 100.0;
    case Point: return 254.0 / 72.0;
    default: *ok = false; return 1.0;
    }
}

bool RKDistanceUnit::isSupported() const
{
    bool ok;
    factor(&ok);
    return ok;
}

double RKDistanceUnit::units2Pixels(double v) const
{
    bool ok;
    const double f = factor(&ok);
    if (!ok) {
        qWarning() << "distance not supported!" << myCode;
        return v;
    }
    if (myCode == Point)
        return v * 254.0 / 72.0;
    return v * f;
}

double RKDistanceUnit::pixels2Units(double v) const
{
    bool ok;
    const double f = factor(&ok);
    if (!ok) {
        qWarning() << "distance not supported!" << myCode;
        return v;
    }
    if (myCode == Point)
        return v * 72.0 / 254.0;
    return v / f;
}
