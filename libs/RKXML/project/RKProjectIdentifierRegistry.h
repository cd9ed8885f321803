#pragma once

#include "RKProjectIdentifier.h"
#include "rkxml_export.h"

#include <RKSingleton.h>

#include <QSet>

#include <shared_mutex>

/**
 * The identifiers that are final. Entries are only ever added; nothing is saved.
 * Safe from any thread: identifiers read from documents on worker threads register
 * themselves while the GUI thread asks; a read-write lock guards the set.
 */
class RKXML_EXPORT RKProjectIdentifierRegistry : public RKSingleton<RKProjectIdentifierRegistry>
{
    friend class RKSingleton<RKProjectIdentifierRegistry>;

public:
    /// Adds `id`; adding it again has no further effect.
    void finalize(const RKProjectIdentifier& id);
    bool isFinalized(const RKProjectIdentifier& id) const;

private:
    RKProjectIdentifierRegistry() = default;

    mutable std::shared_mutex myLock;
    QSet<RKProjectIdentifier> myFinalized;
};
