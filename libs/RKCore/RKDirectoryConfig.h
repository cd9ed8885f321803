#pragma once

#include "RKSingleton.h"
#include "rkcore_export.h"

#include <QFileInfo>
#include <QMutex>
#include <QString>
#include <QStringList>

/**
 * Where resources are found and where user files are written.
 *
 * Read-only resources are searched, in order, in the directories of the
 * environment variable RKXML_RESOURCE_PATH (colon-separated), then in the
 * shipped data directory (RKXML_DATA_DIR when set, else the installed data
 * directory beside the library, else the source tree's data/ of the build).
 * The writable directory is RKXML_WRITABLE_DIR when set, else the user's
 * configuration directory from QStandardPaths (test mode respected).
 * The environment is read once, when the instance is created; tests that
 * change it call reload().
 */
class RKCORE_EXPORT RKDirectoryConfig : public RKSingleton<RKDirectoryConfig>
{
    friend class RKSingleton<RKDirectoryConfig>;

public:
    /// Search directories for read-only resources, in order of precedence.
    QStringList resourceDirectories() const;
    /// The shipped data directory (the last search directory).
    QString shippedDataDirectory() const;

    /**
     * Absolute path of the resource `relativePath` (e.g. "international/CalendarLanguages.xml").
     * With `writable` false: the first search directory that holds it; when none does, the path
     * it would have in the shipped data directory (so a reader's diagnostic names it).
     * With `writable` true: its path in the writable directory.
     */
    QString resource(const QString& relativePath, bool writable = false) const;

    /// Path of `fileName` in the writable directory, shared by every version of the application.
    /// The directory is created when missing.
    QString versionIndependentWritableResource(const QString& fileName) const;
    QString writableDirectory() const;

    /**
     * Path of `relativePath` in the application's program-data directory
     * (RKXML_PROGRAM_DATA_DIR when set, else "programdata" inside the writable directory).
     */
    QString programDataTLMPath(const QString& relativePath) const;

    /**
     * Resolves a resource identifier: an absolute path that exists is taken as it stands;
     * otherwise `id` is looked up relative to each search directory in order.
     * An empty QFileInfo when nothing is found.
     */
    QFileInfo findInGlintoraDirs(const QString& id) const;

    /// The icon resource "icons/<name>" (see resource()); the file need not exist.
    QFileInfo guiwidgetsIconsFile(const QString& name) const;

    void reload();

private:
    RKDirectoryConfig();
    mutable QMutex myMutex;
    QStringList mySearchDirectories;
    QString myWritableDirectory;
};
