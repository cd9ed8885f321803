#pragma once

#include "rkxml_export.h"

#include <RKEnumWrapper.h>

/// Metadata attributes of templates. Plain numbers, not bit flags.
enum RKTemplateSVGMetaDataElementEnum : int {
    RKMetaNone = 0,
    RKMetaSubcategory = 1,
    RKMetaProduct = 2,
    RKMetaRefSubclass1 = 3,
    RKMetaRefSubclass2 = 4,
    RKMetaThumbnail = 5,
    RKMetaContentType = 6,
    RKMetaRefContentId = 7,
    RKMetaRotation = 8,
    RKMetaDesignElementId = 9,
    RKMetaDesignElementType = 10,
    RKMetaKeyaccount = 11,
    RKMetaMultipage = 12,
    RKMetaPriceclass = 13,
    RKMetaDuplicateOf = 14,
    RKMetaProperties = 15,
    RKMetaTlmHolidays = 16,
    RKMetaCategory = 17,
    RKMetaProductVariant = 18,
    RKMetaPagetype = 19,
    RKMetaLogo = 20,
};

/**
 * One template metadata attribute by its word ("vako:category" is 17). Words are
 * matched case-insensitively; an unknown word is 0. Callers pass one word: two
 * words would OR two numbers.
 */
class RKXML_EXPORT RKTemplateSVGMetaDataElement : public RKEnumWrapper<RKTemplateSVGMetaDataElementEnum>
{
public:
    RKTemplateSVGMetaDataElement(RKTemplateSVGMetaDataElementEnum value = RKMetaNone);
    explicit RKTemplateSVGMetaDataElement(const QString& text);
    void fillTable(RKEnumToStringTable<RKTemplateSVGMetaDataElementEnum>* table) const override;
};
