#pragma once

#include "rkxml_export.h"

#include <RKEnumWrapper.h>

#include <QString>

/// The kinds of SVG image; the keywords are also the element names images save under.
enum RKSVGImageTypeEnum : int {
    RKSVGImageTypeUnknown = 0,
    RKSVGImageTypeSVGImage = 1,
    RKSVGImageTypeCalendar = 2,
};

/// RKSVGImageTypeEnum with the keywords "SVG_IMAGE_UNKNOWN", "SVG_IMAGE" and "SVG_IMAGE_CALENDAR".
class RKXML_EXPORT RKSVGImageType : public RKEnumWrapper<RKSVGImageTypeEnum>
{
public:
    RKSVGImageType(RKSVGImageTypeEnum value = RKSVGImageTypeUnknown) : RKEnumWrapper<RKSVGImageTypeEnum>(value) {}
    /// Comma-separated keywords (any case); unknown words decode to 0.
    explicit RKSVGImageType(const QString& csv);
    ~RKSVGImageType() override = default;

    void fillTable(RKEnumToStringTable<RKSVGImageTypeEnum>* table) const override;
};
