#pragma once

#include "RKRange.h"
#include "rkxml_export.h"

/// Closed range of signed 32-bit integers.
class RKXML_EXPORT RKIntRange : public RKRange<int>
{
public:
    using RKRange<int>::RKRange;
    RKIntRange(const RKRange<int>& other) : RKRange<int>(other) {}
};
