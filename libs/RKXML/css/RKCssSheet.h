#pragma once

#include "rkxml_export.h"

#include <QDir>
#include <QDomProcessingInstruction>
#include <QFileInfo>
#include <QString>

/**
 * One CSS file named by a template. Holds only the file's path; reading is
 * done on request and never cached here (see RKCssSheetCache). Copies are
 * independent and may be used from any thread.
 */
class RKXML_EXPORT RKCssSheet
{
public:
    /// A sheet without a file: not valid, empty id.
    RKCssSheet() = default;
    explicit RKCssSheet(const QFileInfo& file);
    /// The file named by the last "href" pseudo-attribute of `instruction`, resolved
    /// against `baseDir`. Without an "href" the sheet has no file.
    RKCssSheet(const QDomProcessingInstruction& instruction, const QDir& baseDir);
    virtual ~RKCssSheet() = default;

    /// The file exists (checked on every call).
    bool isValid() const;
    QFileInfo fileInfo() const;
    /// The absolute path after its last "/glintora/" segment, or the whole absolute path.
    QString id() const;

    /**
     * The file's text, read as UTF-8, with patchStrangeFonts() applied. Invalid UTF-8 and NUL
     * bytes become U+FFFD; the rest of the sheet is kept whole. A path not ending in ".css"
     * gives a null string without touching the disk; a file that cannot be opened gives an
     * empty string and a warning. Reads the whole file.
     */
    QString readCssFromFile() const;
    /// Substitutes a font that print output lacks by fonts that exist everywhere.
    static void patchStrangeFonts(QString* css);

private:
    // A path rather than a QFileInfo: QFileInfo fills its caches lazily, which
    // would race when copies of a cached sheet are used from several threads.
    QString myAbsolutePath;
};
