#include "Command.h"

#include <RKCalendarWordsRegistry.h>

namespace {

QString validLocales(const RKCalendarWordsRegistry& registry)
{
    QStringList names;
    for (const RKLocale& locale : registry.availalbleCalendarLanguages()) {
        if (!names.contains(locale.name()))
            names << locale.name();
    }
    return names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "));
}

void printWords(const RKCalendarWords& words, QTextStream& out)
{
    out << "locale\t" << words.language().name() << '\t' << words.language().englishName() << '\n';
    for (int day = 1; day <= 7; ++day)
        out << "day\t" << day << '\t' << words.shortDayOfWeek(day) << '\t' << words.longDayOfWeek(day) << '\n';
    for (int month = 1; month <= 12; ++month)
        out << "month\t" << month << '\t' << words.shortMonth(month) << '\t' << words.longMonth(month) << '\n';
    out << "week\t" << words.shortWeek() << '\t' << words.longWeek() << '\n';
}

/*
 * Prints the words the registry answers for a locale, one tab-separated line
 * each: "day N short long" (1 = Monday), "month N short long", "week short long".
 * A locale without words of its own gets those of another country of its
 * language, said on stderr; a language without any words is a usage error.
 */
int runWords(const QStringList& args, QTextStream& out, QTextStream& err)
{
    const CommandOptions options(args, {QStringLiteral("locale")});
    if (!options.isValid()) {
        err << "rkcalendar words: " << options.error() << '\n';
        return ExitUsage;
    }
    if (!options.positional().isEmpty()) {
        err << "rkcalendar words: unexpected argument \"" << options.positional().first() << "\"\n";
        return ExitUsage;
    }
    if (!options.has(QStringLiteral("locale"))) {
        err << "rkcalendar words: --locale is required (e.g. --locale fr_FR)\n";
        return ExitUsage;
    }
    const QString name = options.value(QStringLiteral("locale"));
    const RKLocale locale = RKLocale::decodeName(name);
    if (!locale.isValid()) {
        err << "rkcalendar words: malformed locale \"" << name << "\" (expected language_COUNTRY, e.g. fr_FR)\n";
        return ExitUsage;
    }

    const RKCalendarWordsRegistry& registry = RKSingleton<RKCalendarWordsRegistry>::instance();
    const RKCalendarWords words = registry.words(locale);
    if (!words.language().isValid()) {
        err << "rkcalendar words: no calendar words for " << locale.name() << "; valid locales: " << validLocales(registry)
            << '\n';
        return ExitUsage;
    }
    if (words.language() != locale)
        err << "rkcalendar words: no words of its own for " << locale.name() << "; falling back to those of "
            << words.language().name() << '\n';
    printWords(words, out);
    if (!words.isValid()) {
        err << "rkcalendar words: the words of " << words.language().name() << " are incomplete ("
            << words.monthNames().count() << " months, " << words.daysOfWeek().count() << " weekdays)\n";
        return ExitFailure;
    }
    return ExitOk;
}

const CommandRegistration registration({QStringLiteral("words"), QStringLiteral("words --locale L"),
    QStringLiteral("weekday, month and calendar-week words of a locale"), runWords});

}
