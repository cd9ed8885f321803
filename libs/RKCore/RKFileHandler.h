#pragma once

#include "rkcore_export.h"

#include <QByteArray>
#include <QString>

class QFileInfo;

/// File helpers shared by the libraries.
class RKCORE_EXPORT RKFileHandler
{
public:
    /**
     * The shortest installation-independent form of `absolutePath`: the path relative to a
     * resource search directory of RKDirectoryConfig (e.g. "css/default.css"), chosen so that
     * RKDirectoryConfig::findInGlintoraDirs() of the result finds the same file again.
     * A path outside every search directory, or one that a directory earlier in the search
     * order would shadow, is returned cleaned but absolute. Relative or empty input is
     * returned unchanged. Checks the file system once per candidate directory.
     */
    static QString makeSVGPathMinimal(const QString& absolutePath);

    /**
     * The whole content of `file`. A file that cannot be opened gives an empty array and
     * the warning "Could not read file "<path>": <reason>". Re-entrant.
     */
    static QByteArray readBinaryFile(const QFileInfo& file);
};
