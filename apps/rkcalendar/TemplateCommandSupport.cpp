#include "TemplateCommandSupport.h"

#include <RKCalculatedHolidayCache.h>
#include <RKCalendarWordsRegistry.h>
#include <RKDirectoryConfig.h>
#include <RKSVGCompilerInstructionsFactory.h>

#include <QDir>
#include <QFile>
#include <QMap>

namespace TemplateCommandSupport {

namespace {
const QString TEMPLATE_DIRECTORY = QStringLiteral("templates");
const QString TEMPLATE_SUFFIX = QStringLiteral(".svg");
}

QList<TemplateInfo> availableTemplates()
{
    QMap<QString, QFileInfo> byName;
    for (const QString& directory : RKDirectoryConfig::instance().resourceDirectories()) {
        const QDir dir(QDir(directory).filePath(TEMPLATE_DIRECTORY));
        for (const QFileInfo& file : dir.entryInfoList({QLatin1Char('*') + TEMPLATE_SUFFIX}, QDir::Files, QDir::Name)) {
            if (!byName.contains(file.completeBaseName()))
                byName.insert(file.completeBaseName(), file);
        }
    }
    QList<TemplateInfo> templates;
    for (auto it = byName.cbegin(); it != byName.cend(); ++it) {
        QDomDocument document;
        QString error;
        templates << TemplateInfo{it.key(), it.value(),
            loadTemplate(it.value(), document, error) ? templateDescription(document) : QString()};
    }
    return templates;
}

QFileInfo findTemplate(const QString& name)
{
    // Only plain names: "../x" or "a/b" must not reach files outside the template directories.
    if (name.isEmpty() || name.contains(QLatin1Char('/')) || name.startsWith(QLatin1Char('.')))
        return QFileInfo();
    for (const QString& directory : RKDirectoryConfig::instance().resourceDirectories()) {
        const QFileInfo file(QDir(directory).filePath(TEMPLATE_DIRECTORY + QLatin1Char('/') + name + TEMPLATE_SUFFIX));
        if (file.isFile())
            return file;
    }
    return QFileInfo();
}

bool loadTemplate(const QFileInfo& file, QDomDocument& document, QString& error)
{
    QFile input(file.absoluteFilePath());
    if (!input.open(QIODevice::ReadOnly)) {
        error = input.errorString();
        return false;
    }
    QString message;
    int line = 0;
    int column = 0;
    if (!document.setContent(&input, false, &message, &line, &column)) {
        error = QStringLiteral("%1 at line %2, column %3").arg(message).arg(line).arg(column);
        return false;
    }
    return true;
}

QString templateDescription(const QDomDocument& document)
{
    return document.documentElement().firstChildElement(QStringLiteral("title")).text().simplified();
}

QString templateNames()
{
    QStringList names;
    for (const TemplateInfo& info : availableTemplates())
        names << info.name;
    return names.join(QStringLiteral(", "));
}

bool parseCalendarLocale(const QString& text, RKLocale& locale, CommandContext& context)
{
    const QList<RKLocale> known = RKSingleton<RKCalendarWordsRegistry>::instance().availalbleCalendarLanguages();
    const RKLocale parsed = RKLocale::decodeName(text);
    if (parsed.isValid() && known.contains(parsed)) {
        locale = parsed;
        return true;
    }
    QStringList names;
    for (const RKLocale& each : known) {
        if (!names.contains(each.name()))
            names << each.name();
    }
    const QString what = text.isEmpty() ? QStringLiteral("--locale is required")
                                         : QStringLiteral("unknown locale \"%1\"").arg(text);
    context.warn(QStringLiteral("%1 (valid: %2)").arg(what, names.join(QStringLiteral(", "))));
    return false;
}

QString findStyleTitle(const RKCssSheetTitleIdMap& sheets, const QString& requested)
{
    const QString wanted = requested.isEmpty() ? sheets.defaultCssSheetTitle() : requested;
    for (const QString& title : sheets.keys()) {
        if (title.compare(wanted, Qt::CaseInsensitive) == 0)
            return title;
    }
    return QString();
}

QString styleTitles(const RKCssSheetTitleIdMap& sheets)
{
    return sheets.keys().join(QStringLiteral(", "));
}

struct HolidayCacheRegistration::Private {
    RKCalculatedHolidayCache holidays;
};

HolidayCacheRegistration::HolidayCacheRegistration()
    : d(new Private)
{
    RKSingleton<RKSVGCompilerInstructionsFactory>::instance().addHolidayCache(&d->holidays);
}

HolidayCacheRegistration::~HolidayCacheRegistration()
{
    RKSingleton<RKSVGCompilerInstructionsFactory>::instance().removeHolidayCache(&d->holidays);
    delete d;
}

} // namespace TemplateCommandSupport
