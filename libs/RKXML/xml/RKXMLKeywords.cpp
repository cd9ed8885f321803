#include "RKXMLKeywords.h"

RKXMLKeywords::RKXMLKeywords()
{
    initAlignments();
}

void RKXMLKeywords::initAlignments()
{
    static const struct {
        const char* word;
        int value;
    } words[] = {
        {"alignleft", 1}, {"alignleading", 1}, {"alignright", 2}, {"aligntrailing", 2},
        {"alignhcenter", 4}, {"alignjustify", 8}, {"alignabsolute", 16}, {"alignhorizontal_mask", 31},
        {"aligntop", 32}, {"alignbottom", 64}, {"alignvcenter", 128}, {"alignvertical_mask", 224},
        {"aligncenter", 132},
    };
    for (const auto& w : words)
        myAlignments.insert(QString::fromLatin1(w.word), Qt::Alignment(w.value));
    myAlignments.setUnknownWord(QStringLiteral("unknown"));
    myAlignments.setUnknownValue(Qt::AlignLeft);
}

Qt::Alignment RKXMLKeywords::alignment(const QString& words) const
{
    return myAlignments.fromCommaSeparatedString(words);
}

QString RKXMLKeywords::alignmentString(Qt::Alignment alignment) const
{
    return myAlignments.toCommaSeparatedString(alignment);
}
