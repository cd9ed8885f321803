#pragma once

#include <QDomDocument>
#include <QFileInfo>
#include <QList>
#include <QString>

/**
 * The shipped calendar templates: "templates/<name>.svg" in the resource
 * directories, a directory earlier in the search order hiding a template of the
 * same name in a later one. The template's one-line description is the text of
 * the <title> child of its root element.
 */
namespace TemplateCommandSupport {

struct TemplateInfo {
    QString name;        ///< file name without ".svg", e.g. "wall-month"
    QFileInfo file;
    QString description; ///< empty when the file has no <title>
};

/// All templates, sorted by name. Reads each file once.
QList<TemplateInfo> availableTemplates();

/// The template called `name`; an empty file information when there is none.
QFileInfo findTemplate(const QString& name);

/// Parses `file` (no namespace processing, as the compiler expects); false and `error` set on failure.
bool loadTemplate(const QFileInfo& file, QDomDocument& document, QString& error);

/// The text of the root element's first <title> child, simplified.
QString templateDescription(const QDomDocument& document);

} // namespace TemplateCommandSupport
