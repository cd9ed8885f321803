#pragma once

#include "rkxml_export.h"

#include <RKEnumWrapper.h>

#include <QString>

/// What a clip-art layer ("vako:layertype") is for; flags.
enum RKSVGLayerTypeEnum : int {
    RKSVGLayerTypeNone = 0,
    RKSVGLayerTypeTransfer = 1,
    RKSVGLayerTypeRender = 2,
    RKSVGLayerTypeReference = 4,
};

/// RKSVGLayerTypeEnum with the keywords "transfer", "render" and "reference".
class RKXML_EXPORT RKSVGLayerType : public RKEnumWrapper<RKSVGLayerTypeEnum>
{
public:
    RKSVGLayerType(RKSVGLayerTypeEnum value = RKSVGLayerTypeNone) : RKEnumWrapper<RKSVGLayerTypeEnum>(value) {}
    /// OR of the comma-separated keywords (any case); unknown words add nothing.
    explicit RKSVGLayerType(const QString& csv);
    ~RKSVGLayerType() override = default;

    void fillTable(RKEnumToStringTable<RKSVGLayerTypeEnum>* table) const override;
};
