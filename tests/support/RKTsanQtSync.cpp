// ThreadSanitizer builds only: Qt's libraries are not instrumented, so TSan does not see
// QMutex, QReadWriteLock and QWaitCondition synchronise, and reports every access that
// they guard as a race. These definitions interpose Qt's own (the test executables and
// rkcalendar export them), call the real functions, and tell TSan about the happens-before
// order they make. A read lock only acquires, and its unlock releases a second address that
// write locks acquire too, so that readers are not ordered among themselves.
// Only calls from outside QtCore arrive here: QtCore binds its own calls internally.

#include <QMutex>
#include <QReadWriteLock>
#include <QRunnable>
#include <QThread>
#include <QThreadPool>
#include <QVector>
#include <QWaitCondition>

#include <dlfcn.h>

#include <functional>

extern "C" void __tsan_acquire(void* address);
extern "C" void __tsan_release(void* address);
extern "C" void __tsan_ignore_thread_begin();
extern "C" void __tsan_ignore_thread_end();

namespace {

template <class F>
F real(const char* symbol)
{
    void* found = dlsym(RTLD_NEXT, symbol);
    if (!found)
        abort();
    return reinterpret_cast<F>(found);
}

void* readersOf(const void* lock)
{
    return const_cast<char*>(static_cast<const char*>(lock)) + 1;
}

// The modes in which this thread holds read-write locks, innermost last (true = read).
thread_local QVector<QPair<const void*, bool>> heldLocks;

void lockedForRead(QReadWriteLock* lock)
{
    __tsan_acquire(lock);
    heldLocks.append(qMakePair(static_cast<const void*>(lock), true));
}

void lockedForWrite(QReadWriteLock* lock)
{
    __tsan_acquire(lock);
    __tsan_acquire(readersOf(lock));
    heldLocks.append(qMakePair(static_cast<const void*>(lock), false));
}

// A pool thread between two runnables, where it runs QThreadPool's own code only (see
// below): TSan ignores the thread's accesses there. The ignoring ends before the thread
// does, as TSan requires, when the thread's locals are destroyed.
class PoolBookkeeping
{
public:
    ~PoolBookkeeping() { leave(); }
    void enter()
    {
        __tsan_ignore_thread_begin();
        myIgnoring = true;
    }
    void leave()
    {
        if (myIgnoring)
            __tsan_ignore_thread_end();
        myIgnoring = false;
    }

private:
    bool myIgnoring = false;
};
thread_local PoolBookkeeping poolBookkeeping;

/**
 * Stands in for a runnable or function given to a QThreadPool. The pool hands work to its
 * threads through a queue under its private mutex, so TSan sees neither that the work was
 * written before a pool thread runs it, nor the pool threads' own bookkeeping (queue pages
 * and thread lists allocated by one thread and freed or grown by another, the runnable
 * deleted after it ran) as ordered. The wrapper is released when started and acquired when
 * run; between two runnables a pool thread executes nothing but QThreadPool's code, so TSan
 * ignores that thread's accesses there. Owns a runnable whose autoDelete() is true, as the
 * pool would; QThreadPool::tryTake() and cancel() do not find the original runnable.
 */
class AnnotatedRunnable : public QRunnable
{
public:
    AnnotatedRunnable(QRunnable* runnable, std::function<void()> function)
        : myRunnable(runnable)
        , myFunction(std::move(function))
    {
        __tsan_release(this);
    }
    ~AnnotatedRunnable() override
    {
        if (myRunnable && myRunnable->autoDelete())
            delete myRunnable; // dropped by QThreadPool::clear() before it ran
    }
    /// Hands the runnable back to the caller when the pool refused the work.
    void disown() { myRunnable = nullptr; }

    void run() override
    {
        poolBookkeeping.leave();
        __tsan_acquire(this);
        if (myRunnable) {
            QRunnable* runnable = myRunnable;
            myRunnable = nullptr;
            const bool owned = runnable->autoDelete();
            runnable->run();
            if (owned)
                delete runnable;
        } else {
            myFunction();
            myFunction = nullptr;
        }
        poolBookkeeping.enter();
    }

private:
    QRunnable* myRunnable;
    std::function<void()> myFunction;
};

using StartRunnable = void (*)(QThreadPool*, QRunnable*, int);
using TryStartRunnable = bool (*)(QThreadPool*, QRunnable*);

StartRunnable realStart()
{
    static const auto fn = real<StartRunnable>("_ZN11QThreadPool5startEP9QRunnablei");
    return fn;
}

TryStartRunnable realTryStart()
{
    static const auto fn = real<TryStartRunnable>("_ZN11QThreadPool8tryStartEP9QRunnable");
    return fn;
}

bool tryStartAnnotated(QThreadPool* pool, AnnotatedRunnable* wrapper)
{
    if (realTryStart()(pool, wrapper))
        return true;
    wrapper->disown();
    delete wrapper;
    return false;
}

}

void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto fn = real<void (*)(QMutex*)>("_ZN6QMutex4lockEv");
    fn(this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int timeout) QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto fn = real<bool (*)(QMutex*, int)>("_ZN6QMutex7tryLockEi");
    const bool locked = fn(this, timeout);
    if (locked)
        __tsan_acquire(this);
    return locked;
}

void QMutex::unlock() noexcept
{
    static const auto fn = real<void (*)(QMutex*)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    fn(this);
}

void QReadWriteLock::lockForRead()
{
    static const auto fn = real<void (*)(QReadWriteLock*)>("_ZN14QReadWriteLock11lockForReadEv");
    fn(this);
    lockedForRead(this);
}

bool QReadWriteLock::tryLockForRead()
{
    static const auto fn = real<bool (*)(QReadWriteLock*)>("_ZN14QReadWriteLock14tryLockForReadEv");
    const bool locked = fn(this);
    if (locked)
        lockedForRead(this);
    return locked;
}

bool QReadWriteLock::tryLockForRead(int timeout)
{
    static const auto fn = real<bool (*)(QReadWriteLock*, int)>("_ZN14QReadWriteLock14tryLockForReadEi");
    const bool locked = fn(this, timeout);
    if (locked)
        lockedForRead(this);
    return locked;
}

void QReadWriteLock::lockForWrite()
{
    static const auto fn = real<void (*)(QReadWriteLock*)>("_ZN14QReadWriteLock12lockForWriteEv");
    fn(this);
    lockedForWrite(this);
}

bool QReadWriteLock::tryLockForWrite()
{
    static const auto fn = real<bool (*)(QReadWriteLock*)>("_ZN14QReadWriteLock15tryLockForWriteEv");
    const bool locked = fn(this);
    if (locked)
        lockedForWrite(this);
    return locked;
}

bool QReadWriteLock::tryLockForWrite(int timeout)
{
    static const auto fn = real<bool (*)(QReadWriteLock*, int)>("_ZN14QReadWriteLock15tryLockForWriteEi");
    const bool locked = fn(this, timeout);
    if (locked)
        lockedForWrite(this);
    return locked;
}

void QReadWriteLock::unlock()
{
    static const auto fn = real<void (*)(QReadWriteLock*)>("_ZN14QReadWriteLock6unlockEv");
    bool read = false;
    for (int i = heldLocks.size() - 1; i >= 0; --i) {
        if (heldLocks.at(i).first == this) {
            read = heldLocks.at(i).second;
            heldLocks.remove(i);
            break;
        }
    }
    __tsan_release(read ? readersOf(this) : static_cast<void*>(this));
    fn(this);
}

bool QWaitCondition::wait(QMutex* lockedMutex, QDeadlineTimer deadline)
{
    static const auto fn = real<bool (*)(QWaitCondition*, QMutex*, QDeadlineTimer)>(
        "_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    __tsan_release(lockedMutex);
    const bool woken = fn(this, lockedMutex, deadline);
    __tsan_acquire(lockedMutex);
    return woken;
}

bool QWaitCondition::wait(QMutex* lockedMutex, unsigned long time)
{
    static const auto fn = real<bool (*)(QWaitCondition*, QMutex*, unsigned long)>("_ZN14QWaitCondition4waitEP6QMutexm");
    __tsan_release(lockedMutex);
    const bool woken = fn(this, lockedMutex, time);
    __tsan_acquire(lockedMutex);
    return woken;
}

void QThreadPool::start(QRunnable* runnable, int priority)
{
    if (runnable)
        realStart()(this, new AnnotatedRunnable(runnable, nullptr), priority);
}

bool QThreadPool::tryStart(QRunnable* runnable)
{
    return runnable && tryStartAnnotated(this, new AnnotatedRunnable(runnable, nullptr));
}

void QThreadPool::start(std::function<void()> functionToRun, int priority)
{
    if (functionToRun)
        realStart()(this, new AnnotatedRunnable(nullptr, std::move(functionToRun)), priority);
}

bool QThreadPool::tryStart(std::function<void()> functionToRun)
{
    return functionToRun && tryStartAnnotated(this, new AnnotatedRunnable(nullptr, std::move(functionToRun)));
}

// Qt starts its threads detached, and QThread::wait() sees that a thread ended through
// state under Qt's own mutex, so TSan never sees the join. The thread releases when it
// emits finished() (on that thread, after run() returned); wait() acquires when it returns
// true. A thread started twice releases twice, which orders nothing wrongly.
void QThread::start(Priority priority)
{
    static const auto fn = real<void (*)(QThread*, Priority)>("_ZN7QThread5startENS_8PriorityE");
    connect(this, &QThread::finished, [this] { __tsan_release(this); });
    fn(this, priority);
}

bool QThread::wait(QDeadlineTimer deadline)
{
    static const auto fn = real<bool (*)(QThread*, QDeadlineTimer)>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool finished = fn(this, deadline);
    if (finished)
        __tsan_acquire(this);
    return finished;
}

bool QThread::wait(unsigned long time)
{
    static const auto fn = real<bool (*)(QThread*, unsigned long)>("_ZN7QThread4waitEm");
    const bool finished = fn(this, time);
    if (finished)
        __tsan_acquire(this);
    return finished;
}

// Longer access histories, so that reports name both sides of a race.
extern "C" const char* __tsan_default_options()
{
    return "history_size=7";
}
