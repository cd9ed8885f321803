#pragma once

// Runs the built rkcalendar as a separate process, for the tests of its commands.

#include "RKTestSupport.h"

#include <QProcess>
#include <QProcessEnvironment>

struct RKToolResult {
    int exitCode = -1; ///< -1 when the tool crashed or hung
    QString out;
    QString err;
    QStringList lines() const { return out.split(QLatin1Char('\n'), Qt::SkipEmptyParts); }
};

/**
 * Runs rkcalendar with `args` on the shipped data, the writable directory of
 * isolateUserFiles(), and `extraEnvironment` on top (e.g. RKXML_RESOURCE_PATH).
 */
inline RKToolResult runRkcalendar(const QStringList& args, const QProcessEnvironment& extraEnvironment = {},
    const QString& workingDirectory = QString())
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("RKXML_DATA_DIR"), shippedDataPath(QString()));
    env.insert(QStringLiteral("RKXML_WRITABLE_DIR"), QString::fromLocal8Bit(qgetenv("RKXML_WRITABLE_DIR")));
    for (const QString& key : extraEnvironment.keys())
        env.insert(key, extraEnvironment.value(key));
    process.setProcessEnvironment(env);
    if (!workingDirectory.isEmpty())
        process.setWorkingDirectory(workingDirectory);
    process.start(QStringLiteral(RKXML_RKCALENDAR_BINARY), args);
    RKToolResult result;
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
        return result;
    result.exitCode = process.exitCode();
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

/// The blank-separated words of a command line.
inline QStringList commandWords(const QString& commandLine)
{
    return commandLine.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}
