#pragma once

#include <QDomDocument>
#include <QFileInfo>

class QFile;
class RKErrorHistory;

/**
 * The steps of the safe save behind RKXMLBuilder::saveUTF8: write a hidden temporary file
 * beside the target and push it to the disk, move the previous file to its backup, rename
 * the temporary file into place. `history` may be null everywhere.
 */
class RKSafeSave
{
public:
    static bool save(const QDomDocument& document, const QFileInfo& target, RKErrorHistory* history);
    /**
     * Writes the document into `file` (truncated). False, with "saving failed" recorded, when
     * writing, flushing or syncing fails or the writer stops early, even if what reached the
     * disk happens to look like XML; false too when it does not look like XML. The file is
     * left as it is: the caller removes a temporary file.
     */
    static bool writeFile(const QDomDocument& document, QFile* file, RKErrorHistory* history);
    static bool createBackup(const QFileInfo& target, RKErrorHistory* history);
    static bool moveIntoPlace(const QFileInfo& target, QFile* temporary, RKErrorHistory* history);
};
