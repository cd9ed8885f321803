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
int runWords(CommandContext& context)
{
    if (!context.isSet(QStringLiteral("locale")))
        return context.usageError(QStringLiteral("--locale is required (e.g. --locale fr_FR)"));
    const QString name = context.value(QStringLiteral("locale"));
    const RKLocale locale = RKLocale::decodeName(name);
    if (!locale.isValid())
        return context.usageError(
            QStringLiteral("malformed locale \"%1\" (expected language_COUNTRY, e.g. fr_FR)").arg(name));

    const RKCalendarWordsRegistry& registry = RKSingleton<RKCalendarWordsRegistry>::instance();
    const RKCalendarWords words = registry.words(locale);
    if (!words.language().isValid())
        return context.usageError(
            QStringLiteral("no calendar words for %1; valid locales: %2").arg(locale.name(), validLocales(registry)));
    if (words.language() != locale)
        context.warn(QStringLiteral("no words of its own for %1; falling back to those of %2")
                         .arg(locale.name(), words.language().name()));
    printWords(words, context.out());
    if (!words.isValid())
        return context.fail(ExitFailure, QStringLiteral("the words of %1 are incomplete (%2 months, %3 weekdays)")
                                             .arg(words.language().name())
                                             .arg(words.monthNames().count())
                                             .arg(words.daysOfWeek().count()));
    return ExitOk;
}

Command wordsCommand()
{
    Command command;
    command.name = QStringLiteral("words");
    command.description = QStringLiteral("weekday, month and calendar-week words of a locale");
    command.options = {valueOption(QStringLiteral("locale"), QStringLiteral("calendar locale, e.g. fr_FR (required)"),
        QStringLiteral("locale"))};
    command.run = runWords;
    return command;
}

const CommandRegistration registration(wordsCommand());

}
