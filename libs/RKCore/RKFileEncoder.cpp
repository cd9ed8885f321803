#include "RKFileEncoder.h"

#include "RKFileHandler.h"

#include <QDebug>
#include <QFileInfo>
#include <QtEndian>

#include <zlib.h>

const QByteArray RKFileEncoder::CLP_MAGIC = QByteArrayLiteral("RKCLP01\n");

namespace {

// Larger claims than this are taken for damage rather than allocated.
constexpr quint32 MaximumDecodedSize = 256u * 1024u * 1024u;

// The inverse of qCompress() (a big-endian 32-bit length, then a zlib stream), without
// qUncompress()'s own warnings: null on any damage.
QByteArray uncompress(const QByteArray& payload)
{
    if (payload.size() < 4)
        return QByteArray();
    const quint32 expected = qFromBigEndian<quint32>(payload.constData());
    if (expected > MaximumDecodedSize)
        return QByteArray();
    QByteArray result(static_cast<int>(expected), Qt::Uninitialized);
    uLongf length = expected;
    const int status = ::uncompress(reinterpret_cast<Bytef*>(result.data()), &length,
        reinterpret_cast<const Bytef*>(payload.constData() + 4), static_cast<uLong>(payload.size() - 4));
    if (status != Z_OK || length != expected)
        return QByteArray();
    return result;
}

}

QByteArray RKFileEncoder::encodeAndCopyCLP(const QFileInfo& file)
{
    const QByteArray bytes = RKFileHandler::readBinaryFile(file);
    if (!bytes.startsWith(CLP_MAGIC))
        return bytes;
    const QByteArray svg = uncompress(bytes.mid(CLP_MAGIC.size()));
    if (svg.isEmpty())
        qWarning().noquote() << QStringLiteral("Damaged encoded file \"%1\"").arg(file.absoluteFilePath());
    return svg;
}

QByteArray RKFileEncoder::encode(const QByteArray& svg)
{
    return CLP_MAGIC + qCompress(svg);
}
