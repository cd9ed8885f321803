#pragma once

#include "Command.h"

#include <RKCssSheetTitleIdMap.h>
#include <RKLocale.h>

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

/// The names of availableTemplates(), comma-separated, for messages.
QString templateNames();

/**
 * Any calendar language: the words are all a page needs; holidays come where the locale
 * has a file. On failure writes a message with the valid locales and returns false.
 */
bool parseCalendarLocale(const QString& text, RKLocale& locale, CommandContext& context);

/**
 * The title of `sheets` that `requested` names, as the template writes it or in any case
 * ("blue" for "Blue"); an empty `requested` takes the template's default. Empty when
 * nothing matches.
 */
QString findStyleTitle(const RKCssSheetTitleIdMap& sheets, const QString& requested);

/// Sheet titles sorted, comma-separated, for messages.
QString styleTitles(const RKCssSheetTitleIdMap& sheets);

/**
 * Keeps a calculated holiday cache registered with the process's instructions factory
 * while it lives, so that pages compiled meanwhile (on any thread) get holidays, school
 * vacations and moon pictures.
 */
class HolidayCacheRegistration
{
public:
    HolidayCacheRegistration();
    ~HolidayCacheRegistration();
    HolidayCacheRegistration(const HolidayCacheRegistration&) = delete;
    HolidayCacheRegistration& operator=(const HolidayCacheRegistration&) = delete;

private:
    struct Private;
    Private* d;
};

} // namespace TemplateCommandSupport
