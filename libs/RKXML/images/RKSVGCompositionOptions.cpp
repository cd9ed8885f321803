#include "RKSVGCompositionOptions.h"

RKSVGCompositionOptions::RKSVGCompositionOptions(Qt::AspectRatioMode aspectMode, const RKMirrorRule& mirrorRule)
    : myAspectMode(aspectMode)
    , myMirrorRule(mirrorRule)
{
}

RKSVGCompositionOptions::RKSVGCompositionOptions(const RKMirrorRule& mirrorRule, Qt::AspectRatioMode aspectMode)
    : myAspectMode(aspectMode)
    , myMirrorRule(mirrorRule)
{
}

bool RKSVGCompositionOptions::operator==(const RKSVGCompositionOptions& other) const
{
    return myAspectMode == other.myAspectMode && myMirrorRule == other.myMirrorRule;
}
