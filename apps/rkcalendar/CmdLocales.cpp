#include "Command.h"

#include <RKCalendarWordsRegistry.h>

namespace {

// One line per calendar language, in the order of the languages file, each
// locale once: "de_DE<TAB>German (Germany)".
int runLocales(const QStringList& args, QTextStream& out, QTextStream& err)
{
    const CommandOptions options(args, {});
    if (!options.isValid() || !options.positional().isEmpty()) {
        err << "rkcalendar locales: "
            << (options.isValid() ? QStringLiteral("unexpected argument \"%1\"").arg(options.positional().first()) : options.error())
            << '\n';
        return ExitUsage;
    }

    const QList<RKLocale> languages = RKSingleton<RKCalendarWordsRegistry>::instance().availalbleCalendarLanguages();
    if (languages.isEmpty()) {
        err << "rkcalendar locales: no calendar languages found (international/CalendarLanguages.xml)\n";
        return ExitFailure;
    }
    QList<RKLocale> printed;
    for (const RKLocale& locale : languages) {
        if (printed.contains(locale))
            continue;
        printed << locale;
        out << locale.name() << '\t' << locale.englishName() << '\n';
    }
    return ExitOk;
}

const CommandRegistration registration({QStringLiteral("locales"), QStringLiteral("locales"),
    QStringLiteral("list the calendar languages (locale, tab, name in English)"), runLocales});

}
