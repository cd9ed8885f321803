#include "RKDocumentCacheItem.h"

bool RKDocumentCacheItem::operator==(const RKDocumentCacheItem& other) const
{
    return hashValue() == other.hashValue();
}

uint RKDocumentCacheItem::hashValue() const
{
    uint hash = hashCache.load(std::memory_order_relaxed);
    if (hash == 0) {
        hash = calcHashValue();
        hashCache.store(hash, std::memory_order_relaxed);
    }
    return hash;
}
