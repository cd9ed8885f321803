#pragma once

#include "rkcore_export.h"

#include <QFileInfo>
#include <QString>

/// Kinds of resource file with a fixed place inside a resource directory.
enum RKResourceType : unsigned int {
    RKResourceMoonPhases = 0x4000,   ///< "moonphases/moonphases.xml"
    RKResourceHolidays = 0x10000000, ///< "holidays/<name>.xml", name = a locale name
};

/**
 * One resource file of a known type, found through RKDirectoryConfig.
 */
class RKCORE_EXPORT RKResourceFile
{
public:
    RKResourceFile(unsigned int type, const QString& name = QString());
    virtual ~RKResourceFile() = default;

    unsigned int type() const { return myType; }
    QString name() const { return myName; }
    /// Path relative to a resource directory; empty for an unknown type.
    QString relativePath(const QString& variant = QString()) const;

    /**
     * The file: with `writable` its place in the writable directory, otherwise the first
     * match in the resource search path (or its would-be place in the shipped data when
     * none exists). `variant`, when not empty, replaces the file's base name.
     * An unknown type gives an empty QFileInfo.
     */
    QFileInfo fileInfo(bool writable, const QString& variant) const;

private:
    unsigned int myType;
    QString myName;
};
