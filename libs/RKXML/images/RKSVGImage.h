#pragma once

#include "RKSVGImageAbstract.h"
#include "rkxml_export.h"

#include <QFileInfo>

/**
 * An SVG file on disk (clip art, a background, a frame), plain or in the encoded
 * clip-art form. Holds only the path: document() reads the file anew on each call, so
 * the file may change underneath; the hash follows the path, not the content.
 * document() touches no shared state, so the document cache may call it on any thread.
 */
class RKXML_EXPORT RKSVGImage final : public RKSVGImageAbstract
{
public:
    /// From the element that buildXML() writes: the path in "fileName" (absent: empty); a
    /// relative path is looked up in the resource directories.
    RKSVGImage(const QDomElement& element, bool encodedFile, bool normalizeFill);
    RKSVGImage(const QFileInfo& file, const RKCssSheetTitleIdMap& sheets,
        const QMap<QString, QString>& inheritedAttributes, bool encodedFile, bool normalizeFill);

    /// File name without directory.
    QString fileName() const;
    QString absoluteFilePath() const;
    /// The path after its last "/glintora/" segment; the whole path when it has none.
    QString id() const;

    /**
     * The file parsed without namespace processing; with normalizeFill, closed shapes
     * without a fill get an explicit black one. An unreadable or broken file gives an
     * empty document and one warning naming the file (and the line of a parse error).
     */
    QDomDocument document() const override;
    /// The absolute file path.
    QString uniqueName() const override;
    /// qHash of the absolute path; 1 instead of 0.
    uint calcHashValue() const override;
    RKSVGImageType type() const override;
    /// The file exists now.
    bool isValid() const override;
    /// calcHashValue(), not cached.
    uint hashValue() const override;
    /// The abstract form plus "fileName", made as short as the resource directories allow.
    QDomElement buildXML(QDomElement& parent) const override;

private:
    QFileInfo myFile;
    const bool myEncodedFile;
    const bool myNormalizeFill;
};
