#include "RKTemplateSVGMetaDataElement.h"

RKTemplateSVGMetaDataElement::RKTemplateSVGMetaDataElement(RKTemplateSVGMetaDataElementEnum value)
    : RKEnumWrapper(value)
{
}

RKTemplateSVGMetaDataElement::RKTemplateSVGMetaDataElement(const QString& text)
{
    decodeFrom(text);
}

void RKTemplateSVGMetaDataElement::fillTable(RKEnumToStringTable<RKTemplateSVGMetaDataElementEnum>* table) const
{
    // Saved documents depend on these numbers: "vako:category" is 17 although inserted second.
    static const struct {
        const char* word;
        RKTemplateSVGMetaDataElementEnum value;
    } words[] = {
        {"vako:subcategory", RKMetaSubcategory}, {"vako:category", RKMetaCategory}, {"vako:product", RKMetaProduct},
        {"vako:ref_subclass1", RKMetaRefSubclass1}, {"vako:ref_subclass2", RKMetaRefSubclass2},
        {"vako:thumbnail", RKMetaThumbnail}, {"vako:content_type", RKMetaContentType},
        {"vako:ref_content_id", RKMetaRefContentId}, {"vako:rotation", RKMetaRotation},
        {"vako:designElementId", RKMetaDesignElementId}, {"vako:designElementType", RKMetaDesignElementType},
        {"vako:keyaccount", RKMetaKeyaccount}, {"vako:multipage", RKMetaMultipage}, {"vako:priceclass", RKMetaPriceclass},
        {"vako:duplicate-of", RKMetaDuplicateOf}, {"vako:properties", RKMetaProperties}, {"tlm-holidays", RKMetaTlmHolidays},
        {"vako:product_variant", RKMetaProductVariant}, {"vako:pagetype", RKMetaPagetype}, {"vako:logo", RKMetaLogo},
    };
    for (const auto& w : words)
        table->insert(QString::fromLatin1(w.word), w.value);
}
