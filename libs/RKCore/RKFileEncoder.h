#pragma once

#include "rkcore_export.h"

#include <QByteArray>

class QFileInfo;

/**
 * The encoded form of clip-art files: the eight bytes "RKCLP01\n" followed by the
 * qCompress'ed SVG. Plain files are accepted too, so callers need not know which form
 * a file has.
 */
class RKCORE_EXPORT RKFileEncoder
{
public:
    static const QByteArray CLP_MAGIC;

    /**
     * The SVG bytes of `file`: decompressed when the file is encoded, else the file as it
     * is. An encoded file whose data does not decompress gives an empty array and the
     * warning "Damaged encoded file "<path>""; an unreadable file gives an empty array
     * and RKFileHandler::readBinaryFile's warning. Re-entrant.
     */
    static QByteArray encodeAndCopyCLP(const QFileInfo& file);
    /// The encoded form of `svg`, as encodeAndCopyCLP() reads it.
    static QByteArray encode(const QByteArray& svg);
};
