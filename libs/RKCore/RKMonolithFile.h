#pragma once

#include "rkcore_export.h"

#include <QString>

/**
 * A monolith is one packed file that holds a tree of files; a path inside it
 * continues past the packed file's own path ("/x/pack.rkm/cards/a.svg").
 */
class RKCORE_EXPORT RKMonolithFile
{
public:
    /// True when some proper ancestor of `absolutePath` is an existing regular file.
    static bool isMonolithPath(const QString& absolutePath);
};
