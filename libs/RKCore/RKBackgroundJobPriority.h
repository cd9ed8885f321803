#pragma once

#include "rkcore_export.h"

/**
 * How urgently work is wanted. Immediately (4) asks the service to do it at once on
 * the calling thread; the other values are priorities of the background job
 * manager's queue (higher runs first).
 */
class RKCORE_EXPORT RKBackgroundJobPriority
{
public:
    enum Value : int { Idle = 0, Low = 1, Loading = 2, High = 3, Immediately = 4 };

    RKBackgroundJobPriority(int value = Idle) : myValue(value) {}
    virtual ~RKBackgroundJobPriority() = default;

    int value() const { return myValue; }
    bool operator==(const RKBackgroundJobPriority& other) const { return myValue == other.myValue; }

private:
    int myValue;
};
