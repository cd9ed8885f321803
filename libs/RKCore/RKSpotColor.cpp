#include "RKSpotColor.h"

RKSpotColor::RKSpotColor(const QString& keywordsCsv)
    : RKEnumWrapper<RKSpotColorEnum>(RKSpotColorNone)
{
    decodeFrom(keywordsCsv);
}

void RKSpotColor::fillTable(RKEnumToStringTable<RKSpotColorEnum>* table) const
{
    struct Row {
        const char* word;
        RKSpotColorEnum value;
    };
    static const Row rows[] = {
        {"gold", RKSpotColorGold},
        {"silver", RKSpotColorSilver},
        {"white", RKSpotColorWhite},
        {"varnish", RKSpotColorVarnish},
        {"copper", RKSpotColorCopper},
    };
    for (const Row& row : rows)
        table->insert(QLatin1String(row.word), row.value);
    table->setUnknownWord(QString());
    table->setUnknownValue(RKSpotColorNone);
}
