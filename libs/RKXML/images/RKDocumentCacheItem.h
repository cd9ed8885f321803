#pragma once

#include "rkxml_export.h"

#include <QDomDocument>
#include <QString>

#include <atomic>

/**
 * Something whose parsed DOM document RKDocumentCache can hold. The cache keys on the
 * item's address, so items must live as long as anything draws them.
 *
 * Items are destroyed through their concrete type (the destructor is not virtual).
 */
class RKXML_EXPORT RKDocumentCacheItem
{
public:
    /// A freshly parsed document; may be slow (reads a file). Called under the document
    /// cache's lock, possibly on a worker thread.
    virtual QDomDocument document() const = 0;
    /// A name that tells the item apart in diagnostics.
    virtual QString uniqueName() const = 0;
    /// Equal when the hash values are equal.
    virtual bool operator==(const RKDocumentCacheItem& other) const;
    /// The hash, computed anew; never 0 (0 means "not yet computed").
    virtual uint calcHashValue() const = 0;

    /// calcHashValue(), computed once. Any thread may ask; a race only repeats the work.
    uint hashValue() const;

protected:
    RKDocumentCacheItem() = default;
    ~RKDocumentCacheItem() = default;
    RKDocumentCacheItem(const RKDocumentCacheItem&) = delete;
    RKDocumentCacheItem& operator=(const RKDocumentCacheItem&) = delete;

private:
    mutable std::atomic<uint> hashCache{0};
};
