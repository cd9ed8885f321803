#pragma once

#include "RKCssSheet.h"
#include "rkxml_export.h"

#include <RKSingleton.h>

#include <QCache>
#include <QString>

#include <mutex>

/**
 * Turns sheet ids into files: an id is looked up with
 * RKDirectoryConfig::findInGlintoraDirs() (an existing absolute path as it
 * stands, else relative to each resource directory). Found sheets are cached,
 * at most 100, least recently used evicted. Thread-safe (own mutex, taken after
 * RKCssSheetCache's when both are held).
 */
class RKXML_EXPORT RKCssSheetRegistry : public RKSingleton<RKCssSheetRegistry>
{
    friend class RKSingleton<RKCssSheetRegistry>;

public:
    /// The sheet of `id`; a sheet without a file for an empty id, an invalid one and a
    /// warning for an id that names no file (not cached, so warned on every call).
    RKCssSheet document(const QString& id);
    /// A generated sheet, or document(id) is valid.
    bool isValidId(const QString& id);

    int maximumCacheSize() const;
    int currentCacheSize() const;
    void clearCache();
    bool isEmpty() const;

private:
    RKCssSheetRegistry();

    mutable std::mutex myMutex;
    QCache<QString, RKCssSheet> mySheets;
};
