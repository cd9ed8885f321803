// rkcalendar templates: the shipped calendar templates, one per line:
// "wall-month<TAB>Wall calendar month page ...".

#include "Command.h"
#include "TemplateCommandSupport.h"

namespace {

int runTemplates(CommandContext& context)
{
    const QList<TemplateCommandSupport::TemplateInfo> templates = TemplateCommandSupport::availableTemplates();
    if (templates.isEmpty())
        return context.fail(ExitFailure, QStringLiteral("no templates found (templates/*.svg in the data directories)"));
    for (const TemplateCommandSupport::TemplateInfo& info : templates)
        context.out() << info.name << '\t' << info.description << '\n';
    return ExitOk;
}

Command templatesCommand()
{
    Command command;
    command.name = QStringLiteral("templates");
    command.description = QStringLiteral("the shipped calendar templates (name, tab, description)");
    command.run = runTemplates;
    return command;
}

const CommandRegistration registration(templatesCommand());

} // namespace
