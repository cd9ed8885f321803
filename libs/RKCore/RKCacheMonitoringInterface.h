#pragma once

#include "rkcore_export.h"

/// What a cache monitor can see of a cache and do with it. Thread-safety is the cache's.
class RKCORE_EXPORT RKCacheMonitoringInterface
{
public:
    virtual ~RKCacheMonitoringInterface() = default;

    /// The most the cache holds, in the cache's own cost units.
    virtual int maximumCacheSize() const = 0;
    /// What it holds now, in the same units.
    virtual int currentCacheSize() const = 0;
    virtual bool isEmpty() const = 0;
    /// Forgets everything held.
    virtual void clearCache() = 0;
};
