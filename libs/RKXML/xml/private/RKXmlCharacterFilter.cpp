#include "RKXmlCharacterFilter.h"

#include <QDebug>

namespace {
const QChar str_REPLACEMENT(0xFFFD);

// Index of the first character XML cannot hold at or after `from`, or -1. A surrogate pair
// counts as one allowed character.
int firstBad(const QString& text, int from)
{
    const int size = text.size();
    const QChar* data = text.constData();
    for (int i = from; i < size; ++i) {
        const ushort u = data[i].unicode();
        if (u >= 0x20 && u < 0xD800)
            continue;
        if (u < 0x20) {
            if (u == 0x9 || u == 0xA || u == 0xD)
                continue;
            return i;
        }
        if (u >= 0xE000) {
            if (u == 0xFFFE || u == 0xFFFF)
                return i;
            continue;
        }
        // A high surrogate followed by a low one is a character outside the BMP.
        if (u < 0xDC00 && i + 1 < size && data[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        return i;
    }
    return -1;
}
}

RKXmlCharacterFilter::~RKXmlCharacterFilter()
{
    if (myReplaced)
        qWarning() << "Characters that XML cannot hold were written as U+FFFD.";
}

bool RKXmlCharacterFilter::isClean(const QString& text)
{
    return firstBad(text, 0) < 0;
}

QString RKXmlCharacterFilter::operator()(const QString& text)
{
    int bad = firstBad(text, 0);
    if (bad < 0)
        return text;
    myReplaced = true;
    QString result = text;
    while (bad >= 0) {
        result[bad] = str_REPLACEMENT;
        bad = firstBad(result, bad + 1);
    }
    return result;
}
