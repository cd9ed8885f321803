#pragma once

#include "RKCalendariumContentKey.h"
#include "RKSVGCompilerInstructions.h"
#include "rkxml_export.h"

#include <RKSingleton.h>

#include <QHash>
#include <QObject>

#include <mutex>

/**
 * The instruction sets of calendar pages by content key, built on first request
 * by RKSVGCompilerInstructionsFactory and kept until clear(). No size limit.
 *
 * Thread-safe: one mutex guards the table and is held while the factory
 * builds a missing set, so each set is built once however many threads ask
 * for it, and a thread asking for any key waits for a running build.
 */
class RKXML_EXPORT RKSVGCompilerInstructionsCache : public QObject, public RKSingleton<RKSVGCompilerInstructionsCache>
{
    Q_OBJECT
    friend class RKSingleton<RKSVGCompilerInstructionsCache>;

public:
    ~RKSVGCompilerInstructionsCache() override;

    /// The set for `key` (a copy), built and stored on first request.
    RKSVGCompilerInstructions instructions(const RKCalendariumContentKey& key);
    /// A new set from the factory, not stored.
    RKSVGCompilerInstructions createInstructions(const RKCalendariumContentKey& key) const;
    /// Number of sets held.
    int size() const;

public slots:
    /**
     * Forgets every set, and the factory's words per locale. Call it when
     * anything that feeds the factory changes (holiday configuration, holiday
     * caches, calendar words).
     */
    void clear();

private:
    RKSVGCompilerInstructionsCache();

    mutable std::mutex myMutex; // plain, not recursive: the factory never calls back
    QHash<RKCalendariumContentKey, RKSVGCompilerInstructions> myTable;
};
