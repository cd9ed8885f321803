#pragma once

#include <QFileInfo>
#include <QString>

/**
 * What identifies one state of a file on disk: modification time, size and inode
 * from one stat() call. QFileInfo's times go through local-time conversions that
 * cost tens of microseconds per query; the stamp is taken on every vacation and
 * moon phase query, so it must stay cheap. A missing file or a directory gives a
 * stamp with exists == false.
 */
struct RKFileStamp {
    QString path;
    bool exists = false;
    qint64 modifiedSeconds = 0;
    qint64 modifiedNanoseconds = 0;
    qint64 size = -1;
    quint64 inode = 0;

    static RKFileStamp of(const QFileInfo& info);
    bool operator==(const RKFileStamp& other) const;
    bool operator!=(const RKFileStamp& other) const { return !(*this == other); }
};
