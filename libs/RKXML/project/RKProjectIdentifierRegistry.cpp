#include "RKProjectIdentifierRegistry.h"

void RKProjectIdentifierRegistry::finalize(const RKProjectIdentifier& id)
{
    QWriteLocker lock(&myLock);
    myFinalized.insert(id);
}

bool RKProjectIdentifierRegistry::isFinalized(const RKProjectIdentifier& id) const
{
    QReadLocker lock(&myLock);
    return myFinalized.contains(id);
}
