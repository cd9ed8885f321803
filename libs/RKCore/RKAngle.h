#pragma once

#include "rkcore_export.h"

#include <QString>

/// An angle in degrees. Its text form is the number of degrees ("90", "12.5").
class RKCORE_EXPORT RKAngle
{
public:
    RKAngle(double degrees = 0.0) : myDegrees(degrees) {}
    virtual ~RKAngle() = default;

    double degrees() const { return myDegrees; }
    /// Rounded to the nearest whole degree (halves upward).
    int wholeDegrees() const;
    double radians() const;
    QString toString() const;
    /// Malformed text gives 0 degrees and `*ok` false.
    static RKAngle fromString(const QString& text, bool* ok = nullptr);
    bool operator==(const RKAngle& other) const { return myDegrees == other.myDegrees; }

private:
    double myDegrees;
};
