#include "RKSVGCompositionRenderSituation.h"

RKSVGCompositionRenderSituation::RKSVGCompositionRenderSituation(const RKRenderingRule& rules)
    : myRenderingRules(rules)
    , mySpotColor(RKSpotColorNone)
    , mySpotColorActive(false)
    , mySplitSpotColor(false)
{
}

RKSVGCompositionRenderSituation::RKSVGCompositionRenderSituation(const RKRenderingRule& rules,
    const RKSpotColor& spotColor, bool spotColorActive, bool splitSpotColor)
    : myRenderingRules(rules)
    , mySpotColor(spotColor)
    , mySpotColorActive(spotColorActive)
    , mySplitSpotColor(splitSpotColor)
{
}

RKSVGCompositionRenderSituation RKSVGCompositionRenderSituation::createForThumbnail(const RKSpotColor& spotColor,
    const RKRenderingRule& rules)
{
    RKRenderingRule thumbnailRules(rules);
    thumbnailRules.setFlag(RKRenderingRule::Thumbnail);
    return RKSVGCompositionRenderSituation(thumbnailRules, spotColor, spotColor.isValid(), spotColor.isValid());
}

RKSVGComposition::Variant RKSVGCompositionRenderSituation::variantForSituation() const
{
    const int withoutFullColorFlag = myRenderingRules.testFlag(RKRenderingRule::FullColorOutput) ? 0 : 1;
    if (mySpotColor.toInt() == 0 || !mySpotColorActive)
        return static_cast<RKSVGComposition::Variant>(withoutFullColorFlag);
    return static_cast<RKSVGComposition::Variant>((mySplitSpotColor ? 2 : 0) + withoutFullColorFlag);
}
