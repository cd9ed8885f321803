#pragma once

#include "RKSingleton.h"
#include "rkcore_export.h"

#include <QMutex>
#include <QString>

/**
 * Appends lines to the application's legacy log file ("logs/legacy.log" in the
 * writable directory), each prefixed with an ISO 8601 UTC time stamp.
 * Thread-safe; a log file that cannot be opened drops the line with a warning.
 */
class RKCORE_EXPORT RKLogger : public RKSingleton<RKLogger>
{
    friend class RKSingleton<RKLogger>;

public:
    void legacyLog(const QString& line);
    QString logFile() const;

private:
    RKLogger() = default;
    QMutex myMutex;
};
