#pragma once

#include "rkcore_export.h"

/// How a drawing is mirrored inside its rectangle; the flags may be combined.
class RKCORE_EXPORT RKMirrorRule
{
public:
    enum Flag : int { NoMirror = 0, MirrorVertically = 1, MirrorHorizontally = 2 };

    RKMirrorRule(int flags = NoMirror) : myFlags(flags) {}
    virtual ~RKMirrorRule() = default;

    int value() const { return myFlags; }
    bool mirrorsVertically() const { return (myFlags & MirrorVertically) != 0; }
    bool mirrorsHorizontally() const { return (myFlags & MirrorHorizontally) != 0; }
    bool operator==(const RKMirrorRule& other) const { return myFlags == other.myFlags; }
    bool operator!=(const RKMirrorRule& other) const { return myFlags != other.myFlags; }

private:
    int myFlags;
};
