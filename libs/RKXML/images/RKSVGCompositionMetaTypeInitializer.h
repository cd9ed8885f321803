#pragma once

#include "rkxml_export.h"

/// Registers RKSVGComposition with Qt's meta-type system as "RKSVGComposition", so that
/// queued signals can carry it. A static instance in RKSVGComposition.cpp does so when the
/// library is loaded.
class RKXML_EXPORT RKSVGCompositionMetaTypeInitializer
{
public:
    RKSVGCompositionMetaTypeInitializer();
};
