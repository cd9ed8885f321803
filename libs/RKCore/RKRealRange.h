#pragma once

#include "rkcore_export.h"

/// Closed range of doubles; NaN is never contained.
class RKCORE_EXPORT RKRealRange
{
public:
    RKRealRange(double lower = 0.0, double upper = 0.0) : myLower(lower), myUpper(upper) {}
    virtual ~RKRealRange() = default;

    double lower() const { return myLower; }
    double upper() const { return myUpper; }
    bool isValid() const { return myUpper >= myLower; }
    bool contains(double v) const { return myLower <= v && v <= myUpper; }
    bool operator==(const RKRealRange& other) const { return myLower == other.myLower && myUpper == other.myUpper; }

private:
    double myLower;
    double myUpper;
};
