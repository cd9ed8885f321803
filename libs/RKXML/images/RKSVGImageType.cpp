#include "RKSVGImageType.h"

RKSVGImageType::RKSVGImageType(const QString& csv)
    : RKEnumWrapper<RKSVGImageTypeEnum>(RKSVGImageTypeUnknown)
{
    decodeFrom(csv);
}

void RKSVGImageType::fillTable(RKEnumToStringTable<RKSVGImageTypeEnum>* table) const
{
    struct Row {
        const char* word;
        RKSVGImageTypeEnum value;
    };
    static const Row rows[] = {
        {"SVG_IMAGE_UNKNOWN", RKSVGImageTypeUnknown},
        {"SVG_IMAGE", RKSVGImageTypeSVGImage},
        {"SVG_IMAGE_CALENDAR", RKSVGImageTypeCalendar},
    };
    for (const Row& row : rows)
        table->insert(QLatin1String(row.word), row.value);
    table->setUnknownWord(QStringLiteral("SVG_IMAGE_UNKNOWN"));
    table->setUnknownValue(RKSVGImageTypeUnknown);
}
