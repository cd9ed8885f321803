#pragma once

#include "rkxml_export.h"

#include <RKAngle.h>
#include <RKDistance.h>
#include <RKDistanceUnit.h>

#include <QColor>
#include <QDomDocument>
#include <QDomElement>
#include <QFileInfo>
#include <QFont>
#include <QImage>
#include <QRectF>
#include <QString>

class QFile;
class QIODevice;
class RKErrorHistory;

/**
 * Builds DOM trees with typed attributes (the mirror of RKXMLParser) and writes
 * documents canonically: attributes sorted by name, so that saving the same
 * content twice gives the same bytes. saveUTF8() saves safely through a hidden
 * temporary file, keeping the previous version as a backup.
 */
class RKXML_EXPORT RKXMLBuilder
{
public:
    // Builders: each creates the element in the parent's document and appends it as the last child.
    static QDomElement buildRootElement(QDomDocument& document, const QString& tagName);
    static QDomElement buildDomElement(QDomNode& parent, const QString& tagName);
    static QDomElement buildDomElement(QDomNode& parent, const QString& tagName, const QString& text);
    static QDomElement buildDomElement(QDomNode& parent, const QString& tagName, int value);
    static QDomElement buildDomElement(QDomNode& parent, const QString& tagName, const QString& attrName, const QString& attrValue);
    static QDomElement buildDomElement(QDomNode& parent, const QString& tagName, const QString& attrName, bool value);
    static QDomElement buildDomElementCData(QDomNode& parent, const QString& tagName, const QString& text);
    /**
     * Appends `text` to `element` as CDATA. A CDATA section cannot hold "]]>", and QDom writes
     * sections as they are, so the text is split there over several sections ("]]" ends one,
     * ">" starts the next): the written document stays well-formed and reads back as `text`.
     */
    static void appendCData(QDomElement& element, const QString& text);
    /// Text: the image as Base64 PNG; attribute "format": its QImage::Format number. A null image gives an empty element.
    static QDomElement buildDomElement(QDomNode& parent, const QString& tagName, const QImage& image);
    /// Appends <?xml version="1.0" encoding="UTF-8"?> to the document.
    static void buildUTF8ProcessingInstructions(QDomDocument& document);

    static void addAttribute(QDomElement& element, const QString& name, const QString& value);
    static void addAttribute(QDomElement& element, const QString& name, int value);
    /// "yes" or "no".
    static void addAttribute(QDomElement& element, const QString& name, bool value);
    static void addAttribute(QDomElement& element, const QString& name, const char* value) = delete; // would pick bool
    /// "bold", "face", "italic", "size".
    static void addAttribute(QDomElement& element, const QFont& font);
    /// QColor::name(): "#rrggbb", or "#aarrggbb" when not opaque.
    static void addAttribute(QDomElement& element, const QString& name, const QColor& color);
    /// "#rrggbb", plus ",A" (alpha in upper-case hexadecimal) when not opaque.
    static void addColorAttributeEx(QDomElement& element, const QString& name, const QColor& color);
    /// The distance in `unit`, 6 significant digits.
    static void addAttribute(QDomElement& element, const QString& name, const RKDistance& distance, const RKDistanceUnit& unit);
    /// "left", "top", "height", "width" of the normalised rectangle.
    static void addRect(QDomElement& element, const QRectF& rect);
    /// Whole degrees.
    static void addRotation(QDomElement& element, const RKAngle& angle, const QString& name);

    /// Replaces & < > ' " by their entities (the ampersand first).
    static QString escape(const QString& text);
    /// The longest prefix of `text` whose escaped length stays within `maxLength`.
    static QString saveLeft(const QString& text, int maxLength);

    /**
     * Writes the document element and its following siblings canonically; false on a writer
     * error. Characters XML cannot hold (C0 controls but tab, LF, CR; U+FFFE, U+FFFF; unpaired
     * surrogates) are written as U+FFFD, with one warning per document.
     */
    static bool saveCanonicalXML(const QDomDocument& document, QIODevice* device, int indent);
    static QString toString(const QDomDocument& document, int indent);
    /**
     * Safe save: writes a hidden temporary file beside `target`, flushes it to disk, moves the
     * previous file to its backup ("~" appended, ".bak" for an empty file) and renames the
     * temporary file into place. Failures are recorded in `history` (may be null); the previous
     * content stays readable in the target or its backup.
     * A write, flush or sync error (a full disk, a file size limit) or a writer that stops
     * early fails the save even when the cut-short file would pass isProbablyXML(): the
     * temporary file is removed, target and backup are left untouched.
     */
    static bool saveUTF8(const QDomDocument& document, const QFileInfo& target, RKErrorHistory* history);
    /// Writes `file` (truncated): false on any write error, else the verdict of isProbablyXML().
    static bool tryToSaveToTempFile(const QDomDocument& document, QFile* file, RKErrorHistory* history);
    static bool tryToCreateBackupFile(const QFileInfo& target, RKErrorHistory* history);
    static bool tryToCopyTempFileToRealFile(const QFileInfo& target, QFile* temporary, RKErrorHistory* history);
    /// Cheap check that a written file starts with a tag that its last 50 bytes close.
    static bool isProbablyXML(QFile* file);
};
