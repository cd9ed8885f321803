#pragma once

#include "rkcore_export.h"

#include <QStringList>

/**
 * A piece of work for RKBackgroundJobManager. doStuff() runs on a worker thread, so it
 * must only touch thread-safe services and its own data. Equal jobs (operator==, with
 * hash() agreeing) are interchangeable: the manager drops a job equal to one it has not
 * finished yet.
 */
class RKCORE_EXPORT RKBackgroundJob
{
public:
    virtual ~RKBackgroundJob() = default;

    /// A new job doing the same work; owned by the caller.
    virtual RKBackgroundJob* clone() const = 0;
    /// Names of the resources the job works on, for diagnostics; none by default.
    virtual QStringList resources() const { return QStringList(); }
    /// The work; true on success. Called once, on a worker thread.
    virtual bool doStuff() const = 0;
    virtual bool operator==(const RKBackgroundJob& other) const = 0;
    virtual bool operator!=(const RKBackgroundJob& other) const { return !(*this == other); }
    virtual uint hash() const = 0;
    /// Whether the job can run now. A job that is not ready when its turn comes waits
    /// in the queue behind the others. Always ready by default.
    virtual bool isReady() const { return true; }

protected:
    RKBackgroundJob() = default;
    RKBackgroundJob(const RKBackgroundJob&) = default;
    RKBackgroundJob& operator=(const RKBackgroundJob&) = default;
};
