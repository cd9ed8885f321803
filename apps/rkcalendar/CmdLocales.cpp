#include "Command.h"

#include <RKCalendarWordsRegistry.h>

namespace {

// One line per calendar language, in the order of the languages file, each
// locale once: "de_DE<TAB>German (Germany)".
int runLocales(CommandContext& context)
{
    const QList<RKLocale> languages = RKSingleton<RKCalendarWordsRegistry>::instance().availalbleCalendarLanguages();
    if (languages.isEmpty())
        return context.fail(ExitFailure, QStringLiteral("no calendar languages found (international/CalendarLanguages.xml)"));
    QList<RKLocale> printed;
    for (const RKLocale& locale : languages) {
        if (printed.contains(locale))
            continue;
        printed << locale;
        context.out() << locale.name() << '\t' << locale.englishName() << '\n';
    }
    return ExitOk;
}

Command localesCommand()
{
    Command command;
    command.name = QStringLiteral("locales");
    command.description = QStringLiteral("the calendar languages (locale, tab, name in English)");
    command.run = runLocales;
    return command;
}

const CommandRegistration registration(localesCommand());

} // namespace
