#pragma once

#include "rkcore_export.h"

#include <QFileInfo>
#include <QList>
#include <QMutex>
#include <QString>

/// One recorded failure: a bit-flag type, a text and an index (-1 when none applies).
class RKCORE_EXPORT RKErrorEvent
{
public:
    enum Type : int {
        CouldNotOpenFileForReadWriteAccess = 1 << 1,
        CouldNotDeleteFile = 1 << 2,
        CouldNotRenameFile = 1 << 3,
        SavingFailed = 1 << 22,
    };

    RKErrorEvent(int type = 0, const QString& text = QString(), int index = -1);
    virtual ~RKErrorEvent() = default;

    int type() const { return myType; }
    QString text() const { return myText; }
    int index() const { return myIndex; }
    bool operator==(const RKErrorEvent& other) const;

private:
    int myType;
    QString myText;
    int myIndex;
};

/// A caller-owned record of failures; safe to append to from several threads.
class RKCORE_EXPORT RKErrorHistory
{
public:
    RKErrorHistory() = default;
    virtual ~RKErrorHistory() = default;

    void append(const RKErrorEvent& event);
    void appendCouldNotOpenFileForReadWriteAccess(const QFileInfo& file);
    void appendCouldNotDeleteFile(const QFileInfo& file);
    void appendCouldNotRenameFile(const QFileInfo& from, const QFileInfo& to);

    QList<RKErrorEvent> events() const;
    int count() const;
    bool isEmpty() const;
    /// True when any recorded event has (one of) the given type bits.
    bool contains(int typeMask) const;
    void clear();

private:
    mutable QMutex myMutex;
    QList<RKErrorEvent> myEvents;
};
