#include "RKDocumentCache.h"

#include <QDebug>

namespace {
constexpr int MaximumDocuments = 100;

QDomDocument deepCopy(const QDomDocument& document)
{
    return document.cloneNode(true).toDocument();
}
}

RKDocumentCache::RKDocumentCache()
    : myDocuments(MaximumDocuments)
{
}

RKDocumentCache::~RKDocumentCache() = default;

QDomDocument RKDocumentCache::document(RKDocumentCacheItem* item)
{
    if (!item) {
        qWarning().noquote() << QStringLiteral("has theSVG==nullptr");
        return QDomDocument();
    }
    QMutexLocker lock(&myMutex);
    if (const QDomDocument* cached = myDocuments.object(item))
        return deepCopy(*cached);
    auto* parsed = new QDomDocument(item->document());
    const QDomDocument copy = deepCopy(*parsed);
    myDocuments.insert(item, parsed, 1);
    return copy;
}

int RKDocumentCache::maximumCacheSize() const
{
    QMutexLocker lock(&myMutex);
    return myDocuments.maxCost();
}

int RKDocumentCache::currentCacheSize() const
{
    QMutexLocker lock(&myMutex);
    return myDocuments.totalCost();
}

bool RKDocumentCache::isEmpty() const
{
    QMutexLocker lock(&myMutex);
    return myDocuments.isEmpty();
}

void RKDocumentCache::clearCache()
{
    QMutexLocker lock(&myMutex);
    myDocuments.clear();
}
