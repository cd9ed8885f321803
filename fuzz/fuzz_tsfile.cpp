// Translation files: read a file made from the input, merge into it, and read again: every
// pair merged must read back.
#include "FuzzSupport.h"

#include <RKTSFileCreator.h>

FUZZ_PLAIN_INITIALIZE

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray input = fuzz::bytes(data, size);
    const QFileInfo file(fuzz::writeFile(QStringLiteral("input.ts"), input));
    const RKTSFileCreator creator;
    const QHash<QString, QString> table = creator.readTranslations(file);

    // The input's text as a source, merged into a fresh file: it must read back.
    const QFileInfo merged(fuzz::writeFile(QStringLiteral("merged.ts"), QByteArray()));
    QFile::remove(merged.absoluteFilePath());
    QHash<QString, QString> additions = table;
    const QString text = QString::fromUtf8(input.left(200)).simplified();
    if (!text.isEmpty())
        additions.insert(text, QStringLiteral("x"));
    creator.merge(merged, additions);
    fuzz::require(creator.readTranslations(merged).size() >= (additions.isEmpty() ? 0 : 1));
    return 0;
}
