// rkcalendar compile: one calendar template filled for a month, written as SVG.
//
// The page's instructions come from the process's instruction cache, whose factory
// asks a calculated holiday cache (holidays, school vacations, moon pictures); the
// compiler applies them and puts the chosen colour scheme into the page. Output goes
// through the canonical writer, so the same input always gives the same bytes.

#include "Command.h"
#include "HolidayCommandSupport.h"
#include "TemplateCommandSupport.h"

#include <RKCalendariumContentKey.h>
#include <RKCssSheetParser.h>
#include <RKCssSheetTitleIdMap.h>
#include <RKSVGCompiler.h>
#include <RKSVGCompilerInstructionsCache.h>
#include <RKXMLBuilder.h>

#include <QSaveFile>

using namespace HolidayCommandSupport;
using namespace TemplateCommandSupport;

namespace {

const int INDENT = 1;

// The compiled page as the canonical writer gives it, to stdout or through a file that
// only replaces `path` once it is complete.
int writePage(const QDomDocument& page, const QString& path, CommandContext& context)
{
    if (path.isEmpty()) {
        context.out() << RKXMLBuilder::toString(page, INDENT);
        return ExitOk;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return context.fail(ExitFailure, QStringLiteral("cannot write \"%1\": %2").arg(path, file.errorString()));
    if (!RKXMLBuilder::saveCanonicalXML(page, &file, INDENT) || !file.commit()) {
        file.cancelWriting();
        return context.fail(ExitFailure, QStringLiteral("cannot write \"%1\": %2").arg(path, file.errorString()));
    }
    return ExitOk;
}

int runCompile(CommandContext& context)
{
    const QString name = context.value(QStringLiteral("template"));
    const QFileInfo file = findTemplate(name);
    if (!file.exists()) {
        const QString what = name.isEmpty() ? QStringLiteral("--template is required")
                                            : QStringLiteral("unknown template \"%1\"").arg(name);
        return context.usageError(QStringLiteral("%1 (valid: %2)").arg(what, templateNames()));
    }
    if (!context.isSet(QStringLiteral("month")))
        return context.usageError(QStringLiteral("--month is required (YYYY-MM, e.g. 2026-12)"));
    QDate first;
    if (!parseMonth(context.value(QStringLiteral("month")), first, context))
        return ExitUsage;

    RKLocale locale;
    const QString province = context.value(QStringLiteral("province"));
    const QString features = context.value(QStringLiteral("features"), QLatin1String(ALL_FEATURES));
    if (!parseCalendarLocale(context.value(QStringLiteral("locale")), locale, context)
        || !checkProvince(locale, province, context) || !checkFeatures(features, context))
        return ExitUsage;

    QDomDocument page;
    QString error;
    if (!loadTemplate(file, page, error))
        return context.fail(ExitFailure, QStringLiteral("cannot read template %1: %2").arg(file.filePath(), error));
    const RKCssSheetTitleIdMap sheets = RKCssSheetParser::findStyleSheets(page, file);
    const QString requested = context.value(QStringLiteral("style"));
    const QString style = findStyleTitle(sheets, requested);
    if (style.isEmpty()) {
        return context.usageError(QStringLiteral("unknown style \"%1\" for template %2 (valid: %3)")
                                      .arg(requested, name, styleTitles(sheets)));
    }

    const RKCalendariumContentKey key(
        RKCalendariumContentConfig(first, makeConfig(locale, province, features)), RKProjectIdentifier());
    RKSVGCompilerInstructions instructions;
    {
        const HolidayCacheRegistration holidays;
        instructions = RKSingleton<RKSVGCompilerInstructionsCache>::instance().instructions(key);
    }

    RKSVGCompiler compiler;
    compiler.setDomDocument(page, false);
    compiler.setInstructions(instructions);
    compiler.setStandardCss(sheets.standardSheet());
    compiler.setCss(sheets.value(style, QString()));
    compiler.update();
    return writePage(compiler.domDocument(), context.value(QStringLiteral("output")), context);
}

Command compileCommand()
{
    Command command;
    command.name = QStringLiteral("compile");
    command.description = QStringLiteral("a calendar template filled for a month, as SVG");
    command.options = QList<QCommandLineOption>{
        valueOption(QStringLiteral("template"), QStringLiteral("template name, see 'rkcalendar templates' (required)"),
            QStringLiteral("name")),
        valueOption(QStringLiteral("month"), QStringLiteral("the page's month, YYYY-MM (required)"), QStringLiteral("month")),
        valueOption(QStringLiteral("locale"), QStringLiteral("calendar language, e.g. de_DE (required)"),
            QStringLiteral("locale")),
        valueOption(QStringLiteral("style"), QStringLiteral("colour scheme: Standard, Blue, Green (default: the template's)"),
            QStringLiteral("title")),
        QCommandLineOption({QStringLiteral("o"), QStringLiteral("output")},
            QStringLiteral("file to write (default: standard output)"), QStringLiteral("file"))}
        + regionOptions(QLatin1String(ALL_FEATURES));
    command.run = runCompile;
    command.needsGui = true; // fitting long texts into their room measures fonts
    return command;
}

const CommandRegistration registration(compileCommand());

} // namespace
