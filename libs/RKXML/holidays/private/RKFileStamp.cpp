#include "private/RKFileStamp.h"

#include <QFile>
#include <qplatformdefs.h>

RKFileStamp RKFileStamp::of(const QFileInfo& info)
{
    RKFileStamp stamp;
    stamp.path = info.filePath().isEmpty() ? QString() : info.absoluteFilePath();
    if (stamp.path.isEmpty())
        return stamp;
    QT_STATBUF buffer;
    if (QT_STAT(QFile::encodeName(stamp.path).constData(), &buffer) != 0 || (buffer.st_mode & S_IFMT) != S_IFREG)
        return stamp;
    stamp.exists = true;
    stamp.modifiedSeconds = static_cast<qint64>(buffer.st_mtime);
#if defined(Q_OS_LINUX)
    stamp.modifiedNanoseconds = static_cast<qint64>(buffer.st_mtim.tv_nsec);
#endif
    stamp.size = static_cast<qint64>(buffer.st_size);
    stamp.inode = static_cast<quint64>(buffer.st_ino);
    return stamp;
}

bool RKFileStamp::operator==(const RKFileStamp& other) const
{
    return path == other.path && exists == other.exists && modifiedSeconds == other.modifiedSeconds
        && modifiedNanoseconds == other.modifiedNanoseconds && size == other.size && inode == other.inode;
}
