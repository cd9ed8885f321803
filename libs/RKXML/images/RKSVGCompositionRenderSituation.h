#pragma once

#include "RKSVGComposition.h"
#include "rkxml_export.h"

#include <RKRenderingRule.h>
#include <RKSpotColor.h>

/// What a drawing is made for; chooses the composition's variant.
class RKXML_EXPORT RKSVGCompositionRenderSituation
{
public:
    /// Spot colour 0, neither flag set.
    explicit RKSVGCompositionRenderSituation(const RKRenderingRule& rules);
    RKSVGCompositionRenderSituation(const RKRenderingRule& rules, const RKSpotColor& spotColor, bool spotColorActive,
        bool splitSpotColor);
    virtual ~RKSVGCompositionRenderSituation() = default;

    /// The rules plus Thumbnail (0x80000); both flags are the spot colour's validity.
    static RKSVGCompositionRenderSituation createForThumbnail(const RKSpotColor& spotColor, const RKRenderingRule& rules);

    RKRenderingRule renderingRules() const { return myRenderingRules; }
    RKSpotColor spotColor() const { return mySpotColor; }
    bool spotColorActive() const { return mySpotColorActive; }
    bool splitSpotColor() const { return mySplitSpotColor; }

    /**
     * Without an active spot colour: FullColor, or FullColorRuleFlagSet when the rules carry
     * FullColorOutput (0x8000). With one: 2 * splitSpotColor, plus 1 without that flag; so a
     * split print gives SpotColorOnly for the full-colour output and DropSpotColor otherwise.
     */
    RKSVGComposition::Variant variantForSituation() const;

private:
    RKRenderingRule myRenderingRules;
    RKSpotColor mySpotColor;
    bool mySpotColorActive;
    bool mySplitSpotColor;
};
