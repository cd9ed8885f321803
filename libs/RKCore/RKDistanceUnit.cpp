#include "RKDistanceUnit.h"

#include <QDebug>

namespace {

// Internal units (tenths of a millimetre) per unit, as numerator / denominator so that
// points convert as v * 254 / 72 without an intermediate rounding.
struct Ratio {
    int code;
    double numerator;
    double denominator;
};

constexpr Ratio ratios[] = {
    {RKDistanceUnit::Internal, 1.0, 1.0},
    {RKDistanceUnit::Millimetre, 10.0, 1.0},
    {RKDistanceUnit::Inch, 254.0, 1.0},
    {RKDistanceUnit::Centimetre, 100.0, 1.0},
    {RKDistanceUnit::Point, 254.0, 72.0},
};

const Ratio* ratioOf(int code)
{
    for (const Ratio& r : ratios) {
        if (r.code == code)
            return &r;
    }
    qWarning() << "distance not supported!" << code;
    return nullptr;
}

}

bool RKDistanceUnit::isSupported() const
{
    for (const Ratio& r : ratios) {
        if (r.code == myCode)
            return true;
    }
    return false;
}

double RKDistanceUnit::units2Pixels(double v) const
{
    const Ratio* r = ratioOf(myCode);
    return r ? v * r->numerator / r->denominator : v;
}

double RKDistanceUnit::pixels2Units(double v) const
{
    const Ratio* r = ratioOf(myCode);
    return r ? v * r->denominator / r->numerator : v;
}
