#include "RKXmlFileSniffer.h"

#include <QByteArray>
#include <QFile>

#include <algorithm>

namespace {

const int headLength = 100;
const int tailLength = 50;
// A sequential device (pipe, character device) is read at most this far looking for its end.
const qint64 sequentialLimit = qint64(64) * 1024 * 1024;

// The name of the first tag that is not a declaration or instruction; false when the head has none.
bool firstTagName(const QByteArray& head, QByteArray* name)
{
    for (int lt = head.indexOf('<'); lt >= 0; lt = head.indexOf('<', lt + 1)) {
        if (lt + 1 >= head.size())
            return false;
        const char next = head.at(lt + 1);
        if (next == '!' || next == '?')
            continue;
        for (int i = lt + 1; i < head.size(); ++i) {
            const char c = head.at(i);
            if (c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '>') {
                *name = head.mid(lt + 1, i - lt - 1);
                return true;
            }
        }
        return false;
    }
    return false;
}

}

bool RKXmlFileSniffer::isProbablyXML(QFile* file)
{
    if (!file->open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    const QByteArray head = file->read(headLength);
    QByteArray name;
    if (!firstTagName(head, &name)) {
        file->close();
        return false;
    }
    // Only the last bytes matter: seek to them instead of reading a large file whole.
    QByteArray tail;
    if (!file->isSequential()) {
        const qint64 size = file->size();
        if (size > head.size())
            file->seek(std::max<qint64>(head.size(), size - tailLength));
        tail = head + file->read(tailLength);
    } else {
        tail = head;
        qint64 total = head.size();
        while (!file->atEnd() && total < sequentialLimit) {
            const QByteArray chunk = file->read(64 * 1024);
            if (chunk.isEmpty())
                break;
            total += chunk.size();
            tail = tail.right(tailLength) + chunk;
        }
    }
    file->close();
    tail = tail.right(tailLength).trimmed();
    return tail.contains('/' + name) || tail.contains("/>");
}
