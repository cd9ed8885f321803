#include "RKSVGCompositionMetaTypeInitializer.h"

#include "RKSVGComposition.h"

RKSVGCompositionMetaTypeInitializer::RKSVGCompositionMetaTypeInitializer()
{
    qRegisterMetaType<RKSVGComposition>("RKSVGComposition");
}
