// ThreadSanitizer builds only: Qt's libraries are not instrumented, so TSan does not see
// QMutex, QReadWriteLock and QWaitCondition synchronise, and reports every access that
// they guard as a race. These definitions interpose Qt's own (the test executables export
// them), call the real functions, and tell TSan about the happens-before order they make.
// A read lock only acquires, and its unlock releases a second address that write locks
// acquire too, so that readers are not ordered among themselves.

#include <QMutex>
#include <QReadWriteLock>
#include <QVector>
#include <QWaitCondition>

#include <dlfcn.h>

extern "C" void __tsan_acquire(void* address);
extern "C" void __tsan_release(void* address);

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

// Longer access histories, so that reports name both sides of a race.
extern "C" const char* __tsan_default_options()
{
    return "history_size=7";
}
