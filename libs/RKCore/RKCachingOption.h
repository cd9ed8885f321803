#pragma once

#include "rkcore_export.h"

/// How a cached service may answer a request: flag UseCache (1) lets it use and fill its cache.
class RKCORE_EXPORT RKCachingOption
{
public:
    enum Flag : int { NoCache = 0, UseCache = 1 };

    RKCachingOption(int flags = UseCache) : myFlags(flags) {}
    virtual ~RKCachingOption() = default;

    int value() const { return myFlags; }
    bool useCache() const { return (myFlags & UseCache) != 0; }
    bool operator==(const RKCachingOption& other) const { return myFlags == other.myFlags; }

private:
    int myFlags;
};
