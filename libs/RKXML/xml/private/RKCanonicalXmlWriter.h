#pragma once

#include <QDomDocument>

class QIODevice;

/**
 * Writes a DOM document canonically: the UTF-8 declaration, then the document element and
 * its following siblings, attributes sorted by name (UTF-16 code units), comments, CDATA
 * sections and text; instructions inside the tree and entity references are dropped.
 * Characters XML cannot hold are written as U+FFFD (one warning per document).
 */
class RKCanonicalXmlWriter
{
public:
    /// False when the device is null or the writer reports an error (for example a full disk).
    static bool write(const QDomDocument& document, QIODevice* device, int indent);
};
