#pragma once

#include "rkcore_export.h"

#include <QAtomicInt>
#include <QSharedPointer>

/**
 * Handle of a job given to RKBackgroundJobManager: whether it has run and with what result.
 * A default-constructed handle is invalid. Copies share the state; any thread may ask.
 */
class RKCORE_EXPORT RKBackgroundTask
{
public:
    enum State : int { Invalid = 0, Queued, Running, Succeeded, Failed };

    RKBackgroundTask() = default;
    virtual ~RKBackgroundTask() = default;

    bool isValid() const { return myState != nullptr; }
    State state() const { return myState ? static_cast<State>(myState->loadAcquire()) : Invalid; }
    bool isFinished() const { return state() == Succeeded || state() == Failed; }

private:
    friend class RKBackgroundJobManager;
    static RKBackgroundTask create()
    {
        RKBackgroundTask task;
        task.myState = QSharedPointer<QAtomicInt>::create(Queued);
        return task;
    }
    void setState(State state) const { myState->storeRelease(state); }

    QSharedPointer<QAtomicInt> myState;
};
