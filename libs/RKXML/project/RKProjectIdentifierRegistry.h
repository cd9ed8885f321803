#pragma once

#include "RKProjectIdentifier.h"
#include "rkxml_export.h"

#include <RKSingleton.h>

#include <QSet>

/**
 * The identifiers that are final. Entries are only ever added; nothing is saved.
 * Meant for the GUI thread: it takes no lock of its own.
 */
class RKXML_EXPORT RKProjectIdentifierRegistry : public RKSingleton<RKProjectIdentifierRegistry>
{
    friend class RKSingleton<RKProjectIdentifierRegistry>;

public:
    void finalize(const RKProjectIdentifier& id) { myFinalized.insert(id); }
    bool isFinalized(const RKProjectIdentifier& id) const { return myFinalized.contains(id); }

private:
    RKProjectIdentifierRegistry() = default;
    QSet<RKProjectIdentifier> myFinalized;
};
