#pragma once

#include "RKBackgroundJob.h"
#include "RKBackgroundJobPriority.h"
#include "RKBackgroundTask.h"
#include "RKSingleton.h"
#include "rkcore_export.h"

#include <QHash>
#include <QMutex>
#include <QThreadPool>
#include <QWaitCondition>

/**
 * Runs RKBackgroundJobs on a pool of worker threads, one per processor core.
 *
 * A scheduled job that equals (operator==) a job still waiting or running is dropped,
 * and the handle of the earlier one is returned; so many requests for the same work
 * while it is under way cost one run. Higher priorities start first; priority
 * Immediately (4) runs the job at once on the calling thread instead.
 *
 * Thread-safe. When the QCoreApplication is destroyed, jobs still waiting are dropped
 * and the running ones are waited for, so no job outlives the application.
 */
class RKCORE_EXPORT RKBackgroundJobManager : public RKSingleton<RKBackgroundJobManager>
{
    friend class RKSingleton<RKBackgroundJobManager>;

public:
    ~RKBackgroundJobManager() override;

    /// Takes ownership of `job` (deleted after it ran or when dropped); null is ignored
    /// and gives an invalid handle.
    RKBackgroundTask schedule(RKBackgroundJob* job, const RKBackgroundJobPriority& priority);
    /// Blocks until no job is waiting or running, or `msecs` passed (negative: no limit).
    /// True when idle. Must not be called from a job.
    bool waitForIdle(int msecs = -1);
    /// Jobs waiting or running.
    int pendingJobCount() const;
    int workerCount() const { return myPool.maxThreadCount(); }
    /// Drops the waiting jobs and waits for the running ones.
    void shutdown();

private:
    struct Entry;
    class Runner;

    RKBackgroundJobManager();
    void run(Entry* entry);
    void finish(Entry* entry, RKBackgroundTask::State state);

    mutable QMutex myMutex;
    QWaitCondition myIdle;
    QMultiHash<uint, Entry*> myJobs;
    bool myShuttingDown = false;
    QThreadPool myPool;
};
