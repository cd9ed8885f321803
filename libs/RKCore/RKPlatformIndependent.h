#pragma once

#include "RKSingleton.h"
#include "rkcore_export.h"

#include <QObject>
#include <atomic>

/**
 * Platform policy for writing files: whether a failed safe save may fall back
 * to writing the target in place (off unless enabled), and a notification that
 * a file was written (for file watchers and platform indexers).
 */
class RKCORE_EXPORT RKPlatformIndependent : public QObject, public RKSingleton<RKPlatformIndependent>
{
    Q_OBJECT
    friend class RKSingleton<RKPlatformIndependent>;

public:
    bool allowsInPlaceWriteFallback() const { return myInPlaceFallback.load(); }
    void setAllowsInPlaceWriteFallback(bool allowed) { myInPlaceFallback.store(allowed); }

    /// Emits fileWritten(); callable from any thread.
    void notifyFileWritten(const QString& absolutePath);

Q_SIGNALS:
    void fileWritten(const QString& absolutePath);

private:
    RKPlatformIndependent() = default;
    std::atomic<bool> myInPlaceFallback{false};
};
