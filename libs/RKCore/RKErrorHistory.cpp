#include "RKErrorHistory.h"

RKErrorEvent::RKErrorEvent(int type, const QString& text, int index)
    : myType(type)
    , myText(text)
    , myIndex(index)
{
}

bool RKErrorEvent::operator==(const RKErrorEvent& other) const
{
    return myType == other.myType && myText == other.myText && myIndex == other.myIndex;
}

void RKErrorHistory::append(const RKErrorEvent& event)
{
    QMutexLocker lock(&myMutex);
    myEvents.append(event);
}

void RKErrorHistory::appendCouldNotOpenFileForReadWriteAccess(const QFileInfo& file)
{
    append(RKErrorEvent(RKErrorEvent::CouldNotOpenFileForReadWriteAccess,
        QStringLiteral("could not open file for read/write access: %1").arg(file.absoluteFilePath())));
}

void RKErrorHistory::appendCouldNotDeleteFile(const QFileInfo& file)
{
    append(RKErrorEvent(RKErrorEvent::CouldNotDeleteFile,
        QStringLiteral("could not delete file: %1").arg(file.absoluteFilePath())));
}

void RKErrorHistory::appendCouldNotRenameFile(const QFileInfo& from, const QFileInfo& to)
{
    append(RKErrorEvent(RKErrorEvent::CouldNotRenameFile,
        QStringLiteral("could not rename file %1 to %2").arg(from.absoluteFilePath(), to.absoluteFilePath())));
}

QList<RKErrorEvent> RKErrorHistory::events() const
{
    QMutexLocker lock(&myMutex);
    return myEvents;
}

int RKErrorHistory::count() const
{
    QMutexLocker lock(&myMutex);
    return myEvents.size();
}

bool RKErrorHistory::isEmpty() const
{
    return count() == 0;
}

bool RKErrorHistory::contains(int typeMask) const
{
    QMutexLocker lock(&myMutex);
    for (const RKErrorEvent& event : myEvents) {
        if (event.type() & typeMask)
            return true;
    }
    return false;
}

void RKErrorHistory::clear()
{
    QMutexLocker lock(&myMutex);
    myEvents.clear();
}
