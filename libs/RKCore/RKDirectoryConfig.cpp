#include "RKDirectoryConfig.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <dlfcn.h>

namespace {

// Directory of the shared library this code lives in (build or install tree).
QString libraryDirectory()
{
    Dl_info info;
    if (dladdr(reinterpret_cast<void*>(&libraryDirectory), &info) && info.dli_fname)
        return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absolutePath();
    return QString();
}

QString findShippedData()
{
    const QString fromEnv = qEnvironmentVariable("RKXML_DATA_DIR");
    if (!fromEnv.isEmpty())
        return QDir(fromEnv).absolutePath();
    const QString libDir = libraryDirectory();
    // Installed: <prefix>/lib/libRKCore.so next to <prefix>/share/rkxml.
    if (!libDir.isEmpty()) {
        const QString installed = QDir(libDir + QStringLiteral("/../share/rkxml")).absolutePath();
        if (QFileInfo(installed).isDir() && QDir(installed) != QDir(QStringLiteral(RKXML_SOURCE_DATA_DIR)))
            return installed;
    }
    if (QFileInfo(QStringLiteral(RKXML_INSTALL_DATA_DIR)).isDir()
        && !QFileInfo(QStringLiteral(RKXML_SOURCE_DATA_DIR)).isDir())
        return QStringLiteral(RKXML_INSTALL_DATA_DIR);
    return QStringLiteral(RKXML_SOURCE_DATA_DIR);
}

}

RKDirectoryConfig::RKDirectoryConfig()
{
    reload();
}

void RKDirectoryConfig::reload()
{
    QStringList dirs;
    const QString path = qEnvironmentVariable("RKXML_RESOURCE_PATH");
    for (const QString& dir : path.split(QLatin1Char(':'), Qt::SkipEmptyParts))
        dirs << QDir(dir).absolutePath();
    dirs << findShippedData();

    QString writable = qEnvironmentVariable("RKXML_WRITABLE_DIR");
    if (writable.isEmpty())
        writable = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    if (writable.isEmpty())
        writable = QDir::homePath() + QStringLiteral("/.config/rkxml");

    QMutexLocker lock(&myMutex);
    mySearchDirectories = dirs;
    myWritableDirectory = QDir(writable).absolutePath();
}

QStringList RKDirectoryConfig::resourceDirectories() const
{
    QMutexLocker lock(&myMutex);
    return mySearchDirectories;
}

QString RKDirectoryConfig::shippedDataDirectory() const
{
    QMutexLocker lock(&myMutex);
    return mySearchDirectories.last();
}

QString RKDirectoryConfig::writableDirectory() const
{
    QMutexLocker lock(&myMutex);
    return myWritableDirectory;
}

QString RKDirectoryConfig::resource(const QString& relativePath, bool writable) const
{
    if (writable)
        return versionIndependentWritableResource(relativePath);
    const QStringList dirs = resourceDirectories();
    for (const QString& dir : dirs) {
        const QString candidate = QDir(dir).filePath(relativePath);
        if (QFileInfo::exists(candidate))
            return QDir::cleanPath(candidate);
    }
    return QDir::cleanPath(QDir(dirs.last()).filePath(relativePath));
}

QString RKDirectoryConfig::versionIndependentWritableResource(const QString& fileName) const
{
    const QString dir = writableDirectory();
    const QString path = QDir::cleanPath(QDir(dir).filePath(fileName));
    QDir().mkpath(QFileInfo(path).absolutePath());
    return path;
}

QString RKDirectoryConfig::programDataTLMPath(const QString& relativePath) const
{
    QString base = qEnvironmentVariable("RKXML_PROGRAM_DATA_DIR");
    if (base.isEmpty())
        base = QDir(writableDirectory()).filePath(QStringLiteral("programdata"));
    return QDir::cleanPath(QDir(base).filePath(relativePath));
}

QFileInfo RKDirectoryConfig::findInGlintoraDirs(const QString& id) const
{
    if (id.isEmpty())
        return QFileInfo();
    const QFileInfo direct(id);
    if (direct.isAbsolute())
        return direct.exists() ? direct : QFileInfo();
    for (const QString& dir : resourceDirectories()) {
        const QFileInfo candidate(QDir(dir).filePath(id));
        if (candidate.exists())
            return QFileInfo(QDir::cleanPath(candidate.absoluteFilePath()));
    }
    return QFileInfo();
}

QFileInfo RKDirectoryConfig::guiwidgetsIconsFile(const QString& name) const
{
    return QFileInfo(resource(QStringLiteral("icons/") + name));
}
