// Colour tables read from the input, and extract/apply on the input as an SVG: after a table
// that maps a colour found to its inverse is applied, extraction no longer finds that colour.
#include "FuzzSupport.h"

#include <RKColorReplacementInstructions.h>
#include <RKXMLBuilder.h>

FUZZ_PLAIN_INITIALIZE

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QDomDocument document;
    if (!fuzz::parse(fuzz::bytes(data, size), &document))
        return 0;
    RKColorReplacementInstructions fromXml = RKColorReplacementInstructions::fromXML(document.documentElement());
    fromXml.containsReplacements();
    QDomDocument copy = document.cloneNode(true).toDocument();
    fromXml.apply(copy);
    QDomDocument written;
    QDomElement root = RKXMLBuilder::buildRootElement(written, QStringLiteral("root"));
    fromXml.toXML(root, true);
    fuzz::require(RKColorReplacementInstructions::fromXML(root).matches(fromXml));

    RKColorReplacementInstructions found;
    found.extract(document);
    const QList<quint32> colors = found.replacements().keys();
    // A table of one colour replaces it wherever extraction found it (within one value only
    // the first table entry present is replaced, so one entry at a time).
    for (int i = 0; i < colors.size() && i < 3; ++i) {
        RKColorReplacementInstructions single;
        single.insert(QColor::fromRgba(colors.at(i)), QColor::fromRgba(~colors.at(i) | 0xff000000u));
        QDomDocument swapped = document.cloneNode(true).toDocument();
        single.apply(swapped);
        RKColorReplacementInstructions after;
        after.extract(swapped);
        fuzz::require(!after.replacements().contains(colors.at(i)));
    }
    // The whole table: nothing appears that is neither found nor a target.
    RKColorReplacementInstructions swap;
    for (quint32 argb : colors)
        swap.insert(QColor::fromRgba(argb), QColor::fromRgba(~argb | 0xff000000u));
    swap.apply(document);
    RKColorReplacementInstructions after;
    after.extract(document);
    for (quint32 argb : after.replacements().keys())
        fuzz::require(found.replacements().contains(argb) || found.replacements().contains(~argb | 0xff000000u));
    return 0;
}
