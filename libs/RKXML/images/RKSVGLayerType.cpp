#include "RKSVGLayerType.h"

RKSVGLayerType::RKSVGLayerType(const QString& csv)
    : RKEnumWrapper<RKSVGLayerTypeEnum>(RKSVGLayerTypeNone)
{
    decodeFrom(csv);
}

void RKSVGLayerType::fillTable(RKEnumToStringTable<RKSVGLayerTypeEnum>* table) const
{
    struct Row {
        const char* word;
        RKSVGLayerTypeEnum value;
    };
    static const Row rows[] = {
        {"transfer", RKSVGLayerTypeTransfer},
        {"render", RKSVGLayerTypeRender},
        {"reference", RKSVGLayerTypeReference},
    };
    for (const Row& row : rows)
        table->insert(QLatin1String(row.word), row.value);
    table->setUnknownWord(QString());
    table->setUnknownValue(RKSVGLayerTypeNone);
}
