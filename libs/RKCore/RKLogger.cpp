#include "RKLogger.h"

#include "RKDirectoryConfig.h"

#include <QDateTime>
#include <QDebug>
#include <QFile>

QString RKLogger::logFile() const
{
    return RKSingleton<RKDirectoryConfig>::instance().versionIndependentWritableResource(QStringLiteral("logs/legacy.log"));
}

void RKLogger::legacyLog(const QString& line)
{
    const QString path = logFile();
    QMutexLocker lock(&myMutex);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
        qWarning().noquote() << QStringLiteral("Could not write log file \"%1\": %2").arg(path, file.errorString());
        return;
    }
    const QString stamped = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs) + QLatin1Char(' ') + line + QLatin1Char('\n');
    file.write(stamped.toUtf8());
}
