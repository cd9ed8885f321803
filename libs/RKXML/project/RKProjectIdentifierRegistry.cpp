#include "RKProjectIdentifierRegistry.h"

#include <mutex>

void RKProjectIdentifierRegistry::finalize(const RKProjectIdentifier& id)
{
    std::unique_lock<std::shared_mutex> lock(myLock);
    myFinalized.insert(id);
}

bool RKProjectIdentifierRegistry::isFinalized(const RKProjectIdentifier& id) const
{
    std::shared_lock<std::shared_mutex> lock(myLock);
    return myFinalized.contains(id);
}
