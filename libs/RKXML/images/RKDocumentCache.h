#pragma once

#include "RKDocumentCacheItem.h"
#include "rkxml_export.h"

#include <RKCacheMonitoringInterface.h>
#include <RKSingleton.h>

#include <QCache>
#include <QDomDocument>
#include <QMutex>
#include <QObject>

/**
 * The parsed, uncompiled documents of images, so that each file is read and parsed once.
 *
 * Keyed by the item's address (not its hash): two image objects for one file are cached
 * twice, and an item must not be deleted while it may be drawn. At most 100 documents are
 * held; the least recently used goes first.
 *
 * Thread-safe: one mutex, held while an item parses its document and while a copy is
 * made, so parsing is serialised across all images.
 */
class RKXML_EXPORT RKDocumentCache : public QObject,
                                     public RKCacheMonitoringInterface,
                                     public RKSingleton<RKDocumentCache>
{
    Q_OBJECT
    friend class RKSingleton<RKDocumentCache>;

public:
    ~RKDocumentCache() override;

    /**
     * A deep copy of `item`'s document, which the caller may change: parsed with
     * item->document() on the first request. A null item gives an empty document and
     * the warning "has theSVG==nullptr".
     */
    QDomDocument document(RKDocumentCacheItem* item);

    /// 100 (documents).
    int maximumCacheSize() const override;
    /// Documents held.
    int currentCacheSize() const override;
    bool isEmpty() const override;
    void clearCache() override;

private:
    RKDocumentCache();

    mutable QMutex myMutex;
    QCache<RKDocumentCacheItem*, QDomDocument> myDocuments;
};
