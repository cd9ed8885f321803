#pragma once

#include "rkcore_export.h"

/**
 * Flags that say for what a drawing is made. FullColorOutput (0x8000): the drawing is
 * the full-colour output of a print job, whatever spot colours it has. Thumbnail
 * (0x80000): the drawing is a small preview.
 */
class RKCORE_EXPORT RKRenderingRule
{
public:
    enum Flag : int { NoRule = 0, FullColorOutput = 0x8000, Thumbnail = 0x80000 };

    RKRenderingRule(int flags = NoRule) : myFlags(flags) {}
    virtual ~RKRenderingRule() = default;

    int value() const { return myFlags; }
    bool testFlag(int flag) const { return (myFlags & flag) == flag && flag != 0; }
    void setFlag(int flag) { myFlags |= flag; }
    bool operator==(const RKRenderingRule& other) const { return myFlags == other.myFlags; }

private:
    int myFlags;
};
