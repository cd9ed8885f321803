#pragma once

#include "RKEnumWrapper.h"
#include "rkcore_export.h"

#include <QString>

/// The spot colours (refinements) that a print shop applies on top of the four-colour print; flags.
enum RKSpotColorEnum : int {
    RKSpotColorNone = 0,
    RKSpotColorGold = 1,
    RKSpotColorSilver = 2,
    RKSpotColorWhite = 4,
    RKSpotColorVarnish = 8,
    RKSpotColorCopper = 16,
};

/**
 * A set of RKSpotColorEnum flags with the keywords "gold", "silver", "white",
 * "varnish" and "copper" (trimmed, any case). Unknown words, and 0, are the
 * empty text; isValid() is true when at least one spot colour is set.
 */
class RKCORE_EXPORT RKSpotColor : public RKEnumWrapper<RKSpotColorEnum>
{
public:
    RKSpotColor(RKSpotColorEnum value = RKSpotColorNone) : RKEnumWrapper<RKSpotColorEnum>(value) {}
    /// OR of the comma-separated keywords; unknown or empty pieces add nothing.
    explicit RKSpotColor(const QString& keywordsCsv);
    /// Any bit set; bits without a keyword are kept as they are.
    explicit RKSpotColor(int value) : RKEnumWrapper<RKSpotColorEnum>(static_cast<RKSpotColorEnum>(value)) {}
    ~RKSpotColor() override = default;

    void fillTable(RKEnumToStringTable<RKSpotColorEnum>* table) const override;
};
