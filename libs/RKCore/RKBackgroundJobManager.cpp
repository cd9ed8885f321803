#include "RKBackgroundJobManager.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QRunnable>
#include <QThread>

#include <memory>

struct RKBackgroundJobManager::Entry {
    std::unique_ptr<RKBackgroundJob> job;
    RKBackgroundTask task;
    uint hash = 0;
    int priority = 0;
};

class RKBackgroundJobManager::Runner : public QRunnable
{
public:
    Runner(RKBackgroundJobManager* manager, Entry* entry) : myManager(manager), myEntry(entry) {}
    void run() override { myManager->run(myEntry); }

private:
    RKBackgroundJobManager* myManager;
    Entry* myEntry;
};

namespace {
void drainBackgroundJobs()
{
    RKBackgroundJobManager::instance().shutdown();
}
}

RKBackgroundJobManager::RKBackgroundJobManager()
{
    myPool.setMaxThreadCount(qMax(1, QThread::idealThreadCount()));
    if (QCoreApplication::instance())
        qAddPostRoutine(drainBackgroundJobs);
}

RKBackgroundJobManager::~RKBackgroundJobManager()
{
    shutdown();
}

RKBackgroundTask RKBackgroundJobManager::schedule(RKBackgroundJob* job, const RKBackgroundJobPriority& priority)
{
    if (!job)
        return RKBackgroundTask();
    std::unique_ptr<RKBackgroundJob> owned(job);
    if (priority.value() >= RKBackgroundJobPriority::Immediately) {
        RKBackgroundTask task = RKBackgroundTask::create();
        task.setState(RKBackgroundTask::Running);
        task.setState(owned->doStuff() ? RKBackgroundTask::Succeeded : RKBackgroundTask::Failed);
        return task;
    }

    const uint hash = owned->hash();
    QMutexLocker lock(&myMutex);
    if (myShuttingDown)
        return RKBackgroundTask();
    for (auto it = myJobs.constFind(hash); it != myJobs.constEnd() && it.key() == hash; ++it) {
        if (*it.value()->job == *owned)
            return it.value()->task;
    }
    auto* entry = new Entry;
    entry->job = std::move(owned);
    entry->task = RKBackgroundTask::create();
    entry->hash = hash;
    entry->priority = priority.value();
    myJobs.insert(hash, entry);
    myPool.start(new Runner(this, entry), entry->priority);
    return entry->task;
}

void RKBackgroundJobManager::run(Entry* entry)
{
    {
        QMutexLocker lock(&myMutex);
        if (myShuttingDown) {
            lock.unlock();
            finish(entry, RKBackgroundTask::Failed);
            return;
        }
    }
    if (!entry->job->isReady()) {
        // Back into the queue behind the others; the pause keeps a job that stays
        // unready from spinning a core.
        QThread::msleep(5);
        QMutexLocker lock(&myMutex);
        if (!myShuttingDown) {
            myPool.start(new Runner(this, entry), entry->priority);
            return;
        }
        lock.unlock();
        finish(entry, RKBackgroundTask::Failed);
        return;
    }
    entry->task.setState(RKBackgroundTask::Running);
    const bool ok = entry->job->doStuff();
    finish(entry, ok ? RKBackgroundTask::Succeeded : RKBackgroundTask::Failed);
}

void RKBackgroundJobManager::finish(Entry* entry, RKBackgroundTask::State state)
{
    entry->task.setState(state);
    std::unique_ptr<Entry> done(entry);
    QMutexLocker lock(&myMutex);
    myJobs.remove(entry->hash, entry);
    if (myJobs.isEmpty())
        myIdle.wakeAll();
}

bool RKBackgroundJobManager::waitForIdle(int msecs)
{
    const QDeadlineTimer deadline = msecs < 0 ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(msecs);
    QMutexLocker lock(&myMutex);
    while (!myJobs.isEmpty()) {
        if (!myIdle.wait(&myMutex, deadline))
            return myJobs.isEmpty();
    }
    return true;
}

int RKBackgroundJobManager::pendingJobCount() const
{
    QMutexLocker lock(&myMutex);
    return myJobs.size();
}

void RKBackgroundJobManager::shutdown()
{
    {
        QMutexLocker lock(&myMutex);
        myShuttingDown = true;
    }
    // Runners of waiting jobs that the pool has not started are removed; their entries
    // are finished here. Runners that already started finish their own entries.
    myPool.clear();
    myPool.waitForDone();
    QMutexLocker lock(&myMutex);
    for (Entry* entry : qAsConst(myJobs)) {
        entry->task.setState(RKBackgroundTask::Failed);
        delete entry;
    }
    myJobs.clear();
    myIdle.wakeAll();
}
