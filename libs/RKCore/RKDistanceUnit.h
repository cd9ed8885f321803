#pragma once

#include "rkcore_export.h"

/// A unit of length by its code; the internal unit is a tenth of a millimetre.
class RKCORE_EXPORT RKDistanceUnit
{
public:
    enum Code : int { Internal = 1, Millimetre = 2, Inch = 4, Centimetre = 8, Point = 16 };

    RKDistanceUnit(int code = Internal) : myCode(code) {}
    virtual ~RKDistanceUnit() = default;

    int code() const { return myCode; }
    bool isSupported() const;
    /// `v` in this unit converted to internal units; an unsupported code warns and returns `v`.
    double units2Pixels(double v) const;
    /// Inverse of units2Pixels.
    double pixels2Units(double v) const;

private:
    int myCode;
};
