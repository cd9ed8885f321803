// Key/value text: deserialise, serialise, deserialise again (the two lists equal); and the
// pairs as attributes through the canonical writer and back.
#include "FuzzSupport.h"

#include <RKKeyValuePair.h>
#include <RKXMLBuilder.h>

FUZZ_PLAIN_INITIALIZE

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = QString::fromUtf8(fuzz::bytes(data, size));
    const RKKeyValuePairList list = RKKeyValuePairList::deserialize(text);
    const RKKeyValuePairList again = RKKeyValuePairList::deserialize(list.serializeCSV());
    fuzz::require(again == list);
    for (int i = 0; i < list.count(); ++i) {
        list.intValue(list.at(i).key());
        list.realValue(list.at(i).key());
        list.colorValue(list.at(i).key());
        list.angleValue(list.at(i).key());
    }

    // Values as attributes under a fixed, valid name: written and read back whole.
    RKKeyValuePairList named;
    for (int i = 0; i < list.count(); ++i)
        named.setValue(QStringLiteral("k%1").arg(i), list.at(i).value());
    QDomDocument document;
    QDomElement root = RKXMLBuilder::buildRootElement(document, QStringLiteral("pairs"));
    named.toXml(root);
    const QString written = RKXMLBuilder::toString(document, 1);
    QDomDocument read;
    fuzz::require(read.setContent(written, false));
    QDomDocument rewritten;
    QDomElement rewrittenRoot = RKXMLBuilder::buildRootElement(rewritten, QStringLiteral("pairs"));
    RKKeyValuePairList::fromXML(read.documentElement()).toXml(rewrittenRoot);
    fuzz::require(RKXMLBuilder::toString(rewritten, 1) == written);
    return 0;
}
