// rkcalendar holidays: the marked days of one year or a range of years, one line per date.

#include "Command.h"
#include "HolidayCommandSupport.h"
#include "IcsWriter.h"

using namespace HolidayCommandSupport;

namespace {

int runHolidays(CommandContext& context)
{
    RKLocale locale;
    RKCalendariumHolidayConfig config;
    if (!configFromOptions(context, QStringLiteral("holidays"), locale, config))
        return ExitUsage;

    int from = 0;
    int to = 0;
    const bool single = context.isSet(QStringLiteral("year"));
    const bool range = context.isSet(QStringLiteral("from")) || context.isSet(QStringLiteral("to"));
    if (single == range)
        return context.usageError(QStringLiteral("give either --year Y or --from Y1 --to Y2"));
    if (single) {
        if (!parseYear(QStringLiteral("year"), context.value(QStringLiteral("year")), from, context))
            return ExitUsage;
        to = from;
    } else {
        if (!parseYear(QStringLiteral("from"), context.value(QStringLiteral("from")), from, context)
            || !parseYear(QStringLiteral("to"), context.value(QStringLiteral("to")), to, context))
            return ExitUsage;
        if (from > to)
            return context.usageError(QStringLiteral("--from %1 is after --to %2").arg(from).arg(to));
    }

    const QString format = context.value(QStringLiteral("format"), QStringLiteral("text"));
    if (format != QLatin1String("text") && format != QLatin1String("ics"))
        return context.usageError(QStringLiteral("unknown format \"%1\" (valid: text, ics)").arg(format));
    for (const QString& warning : coverageWarnings(locale, config, from, to))
        context.warn(QStringLiteral("warning: ") + warning);

    QList<MarkedDay> days;
    for (int year = from; year <= to; ++year)
        days += markedDaysOfYear(year, config);
    QTextStream& out = context.out();
    if (format == QLatin1String("ics")) {
        const QString province = context.value(QStringLiteral("province"));
        out << IcsWriter(province.isEmpty() ? locale.name() : locale.name() + QLatin1Char(' ') + province).calendar(days);
        return ExitOk;
    }
    for (const MarkedDay& day : qAsConst(days)) {
        out << day.date.toString(Qt::ISODate) << '\t' << typeKeywords(day.type) << '\t'
            << day.names.join(QStringLiteral("; ")) << '\n';
    }
    return ExitOk;
}

Command holidaysCommand()
{
    Command command;
    command.name = QStringLiteral("holidays");
    command.description = QStringLiteral("marked days of a year or years: date, type keywords, names (or iCalendar)");
    command.options = holidayOptions(QStringLiteral("holidays"))
        + QList<QCommandLineOption>{valueOption(QStringLiteral("year"), QStringLiteral("one year"), QStringLiteral("year")),
              valueOption(QStringLiteral("from"), QStringLiteral("first year of a range"), QStringLiteral("year")),
              valueOption(QStringLiteral("to"), QStringLiteral("last year of a range"), QStringLiteral("year")),
              valueOption(QStringLiteral("format"),
                  QStringLiteral("text (tab-separated lines, the default) or ics (an iCalendar file)"),
                  QStringLiteral("format"))};
    command.run = runHolidays;
    return command;
}

const CommandRegistration registration(holidaysCommand());

} // namespace
