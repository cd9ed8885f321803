#pragma once

#include "RKCssSheet.h"
#include "RKCssSheetTitleIdMap.h"
#include "rkxml_export.h"

#include <RKSingleton.h>

#include <QCache>
#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <QVector>

#include <mutex>

/**
 * Process-wide caches of CSS texts by sheet id and of the sheet maps listed by
 * files (includes), at most 100 entries each, least recently used evicted.
 *
 * Thread-safe: one class-wide recursive mutex guards both caches and is held
 * while a file is read or parsed. Parsing an include re-enters styleSheetsIn()
 * on the same thread, hence the recursion. Lock order: this cache, then
 * RKCssSheetRegistry; never the reverse.
 *
 * Include cycles: the files whose maps are being built are kept on a stack
 * (guarded by the same mutex, so it only ever holds the owning thread's chain).
 * A file already on the stack is not read again: it contributes an empty map
 * and a warning. Maps completed inside such a cut cycle are incomplete and are
 * not cached; the outermost file of the cycle is complete and is.
 */
class RKXML_EXPORT RKCssSheetCache : public RKSingleton<RKCssSheetCache>
{
    friend class RKSingleton<RKCssSheetCache>;

public:
    /// The CSS text of sheet `id`, loaded with loadCss() and cached on a miss (also when empty).
    QString cssString(const QString& id);
    /// cssString(sheet.id()) for a valid sheet, else an empty string.
    QString cssString(const RKCssSheet& sheet);
    /// Uncached: a generated sheet's text, else the registry's file read from disk, else empty.
    QString loadCss(const QString& id) const;
    /**
     * The sheet map listed by the processing instructions of `file`, parsed and cached on a
     * miss. An unreadable file gives an empty map (not cached) and a warning.
     */
    RKCssSheetTitleIdMap styleSheetsIn(const QFileInfo& file);

    int maximumCacheSize() const;
    /// Number of cached CSS texts.
    int currentCacheSize() const;
    /// Empties both caches.
    void clearCache();
    /// Both caches are empty.
    bool isEmpty() const;

private:
    RKCssSheetCache();

    static std::recursive_mutex ourMutex;
    QCache<QString, QString> myCssTexts;
    QCache<QString, RKCssSheetTitleIdMap> myMaps;
    QStringList myFilesBeingRead;
    QVector<bool> myIncomplete;
};
