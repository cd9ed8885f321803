#pragma once

#include "RKDistanceUnit.h"
#include "rkcore_export.h"

/// A length held in internal units (tenths of a millimetre).
class RKCORE_EXPORT RKDistance
{
public:
    RKDistance(double internalUnits = 0.0) : myValue(internalUnits) {}
    virtual ~RKDistance() = default;

    static RKDistance fromUnits(double v, const RKDistanceUnit& unit) { return RKDistance(unit.units2Pixels(v)); }
    double value() const { return myValue; }
    double valueIn(const RKDistanceUnit& unit) const { return unit.pixels2Units(myValue); }
    bool operator==(const RKDistance& other) const { return myValue == other.myValue; }

private:
    double myValue;
};
