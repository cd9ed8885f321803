#pragma once

#include "rkxml_export.h"

#include <QFileInfo>
#include <QHash>
#include <QString>

/**
 * Keeps a simple translation file in the TS format: one context "Translations"
 * with source/translation pairs. Stateless; create one wherever needed.
 */
class RKXML_EXPORT RKTSFileCreator
{
public:
    RKTSFileCreator() = default;
    virtual ~RKTSFileCreator() = default;

    /**
     * Source to translation from the file's first context, both simplified; messages with an
     * empty source or translation are skipped, a later duplicate source wins. A missing file
     * gives an empty table silently; an unreadable one gives an empty table and one warning.
     */
    QHash<QString, QString> readTranslations(const QFileInfo& file) const;

    /**
     * Writes the table in a fixed layout, in the hash's iteration order. The file is not
     * truncated: when it was longer than the new text, its old tail stays after the new text.
     * A file that cannot be opened is left alone without a report. Characters XML cannot hold
     * are written as U+FFFD (one warning per file), so the file always reads back.
     */
    void save(const QFileInfo& file, const QHash<QString, QString>& table) const;

    /// Adds or updates the pairs; saves and returns true only when something changed.
    bool merge(const QFileInfo& file, const QHash<QString, QString>& additions) const;
};
