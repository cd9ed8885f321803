#include "RKSafeSave.h"

#include "RKCanonicalXmlWriter.h"
#include "RKXmlFileSniffer.h"

#include <RKErrorHistory.h>
#include <RKMonolithFile.h>
#include <RKPlatformIndependent.h>

#include <QFile>
#include <QUuid>

#include <cerrno>
#include <unistd.h>

namespace {

// Pushes the file's data from the kernel to the device, so that the rename that follows
// never publishes a file whose blocks are not yet written. Devices that cannot be
// synchronised (pipes, character devices) report EINVAL: there is nothing to wait for.
bool syncToDisk(QFile* file)
{
    if (!file->flush())
        return false;
    const int handle = file->handle();
    if (handle < 0)
        return false;
    if (::fdatasync(handle) == 0)
        return true;
    return errno == EINVAL || errno == EROFS;
}

void removeIfPresent(const QString& path)
{
    if (QFileInfo::exists(path) || QFileInfo(path).isSymLink())
        QFile::remove(path);
}

bool writeInPlace(const QDomDocument& document, const QString& path, RKErrorHistory* history)
{
    QFile direct(path);
    return RKSafeSave::writeFile(document, &direct, history);
}

}

bool RKSafeSave::save(const QDomDocument& document, const QFileInfo& target, RKErrorHistory* history)
{
    const QString targetPath = target.absoluteFilePath();
    // A directory is never replaced by a file: renaming it away as the "backup" would succeed
    // and hide the user's directory behind a file of the same name.
    if (target.isDir()) {
        if (history)
            history->appendCouldNotOpenFileForReadWriteAccess(target);
        return false;
    }
    if (RKMonolithFile::isMonolithPath(targetPath))
        return writeInPlace(document, targetPath, history);

    QFile temporary(target.absolutePath() + QStringLiteral("/.") + QUuid::createUuid().toString());
    const QString temporaryPath = temporary.fileName();
    bool saved = writeFile(document, &temporary, history);
    if (saved)
        saved = createBackup(target, history);
    if (saved)
        saved = moveIntoPlace(target, &temporary, history);
    if (saved) {
        RKPlatformIndependent::instance().notifyFileWritten(targetPath);
        return true;
    }
    removeIfPresent(temporaryPath);

    if (RKPlatformIndependent::instance().allowsInPlaceWriteFallback())
        return writeInPlace(document, targetPath, history);
    return false;
}

bool RKSafeSave::writeFile(const QDomDocument& document, QFile* file, RKErrorHistory* history)
{
    if (!file->open(QIODevice::ReadWrite | QIODevice::Truncate | QIODevice::Text)) {
        if (history)
            history->appendCouldNotOpenFileForReadWriteAccess(QFileInfo(*file));
        return false;
    }
    // A full device usually shows only at the flush: the writer's bytes were still in
    // QFile's buffer. Any failure here fails the step, whatever the file looks like after.
    bool written = RKCanonicalXmlWriter::write(document, file, 4);
    if (written)
        written = syncToDisk(file) && file->error() == QFileDevice::NoError;
    file->close();
    if (written)
        written = file->error() == QFileDevice::NoError;
    if (!written) {
        if (history)
            history->append(RKErrorEvent(RKErrorEvent::SavingFailed, QStringLiteral("saving failed"), -1));
        return false;
    }
    return RKXmlFileSniffer::isProbablyXML(file);
}

bool RKSafeSave::createBackup(const QFileInfo& target, RKErrorHistory* history)
{
    const QFileInfo current(target.absoluteFilePath());
    if (!current.exists())
        return true;
    // An empty file gets ".bak", any other "~": established names that users look for.
    const QString backupPath = current.absoluteFilePath() + (current.size() == 0 ? QStringLiteral(".bak") : QStringLiteral("~"));
    const QFileInfo backup(backupPath);
    if (backup.exists() || backup.isSymLink()) {
        if (!QFile::remove(backupPath)) {
            if (history)
                history->appendCouldNotDeleteFile(backup);
            return false;
        }
    }
    if (!QFile::rename(current.absoluteFilePath(), backupPath)) {
        if (history)
            history->appendCouldNotRenameFile(current, backup);
        return false;
    }
    return true;
}

bool RKSafeSave::moveIntoPlace(const QFileInfo& target, QFile* temporary, RKErrorHistory* history)
{
    const bool renamed = temporary->rename(target.absoluteFilePath());
    if (!renamed && history)
        history->appendCouldNotOpenFileForReadWriteAccess(target);
    return renamed;
}
