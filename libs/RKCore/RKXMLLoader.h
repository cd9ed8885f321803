#pragma once

#include "rkcore_export.h"

#include <QDomDocument>
#include <QFileInfo>

/**
 * Reads XML files into DOM trees.
 *
 * A file that cannot be opened or parsed gives a null document (or element)
 * and exactly one warning naming the file (and, for a parse error, the line,
 * column and the parser's message). Namespace processing is off, so prefixed
 * names such as "vako:cal" stay as written.
 */
class RKCORE_EXPORT RKXMLLoader
{
public:
    static QDomDocument loadDocument(const QString& path);
    static QDomDocument loadDocument(const QFileInfo& file);
    static QDomElement loadDocumentElement(const QString& path);
    static QDomElement loadDocumentElement(const QFileInfo& file);
    /// Parses `data`; `origin` names it in the warning.
    static QDomDocument parse(const QByteArray& data, const QString& origin);
};
