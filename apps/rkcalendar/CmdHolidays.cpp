// rkcalendar holidays: the marked days of one year or a range of years, one line per date.

#include "Command.h"
#include "HolidayCommandSupport.h"

using namespace HolidayCommandSupport;

namespace {

int runHolidays(const QStringList& args, QTextStream& out, QTextStream& err)
{
    const CommandOptions options(args, {QStringLiteral("locale"), QStringLiteral("province"), QStringLiteral("year"),
                                        QStringLiteral("from"), QStringLiteral("to"), QStringLiteral("features")});
    if (!options.isValid()) {
        err << "rkcalendar holidays: " << options.error() << '\n';
        return ExitUsage;
    }
    if (!options.positional().isEmpty()) {
        err << "rkcalendar holidays: unexpected argument \"" << options.positional().first() << "\"\n";
        return ExitUsage;
    }

    RKLocale locale;
    RKCalendariumHolidayConfig config;
    if (!configFromOptions(options, QStringLiteral("holidays"), err, locale, config))
        return ExitUsage;

    int from = 0;
    int to = 0;
    const bool single = options.has(QStringLiteral("year"));
    const bool range = options.has(QStringLiteral("from")) || options.has(QStringLiteral("to"));
    if (single == range) {
        err << "rkcalendar holidays: give either --year Y or --from Y1 --to Y2\n";
        return ExitUsage;
    }
    if (single) {
        if (!parseYear(QStringLiteral("year"), options.value(QStringLiteral("year")), from, err))
            return ExitUsage;
        to = from;
    } else {
        if (!parseYear(QStringLiteral("from"), options.value(QStringLiteral("from")), from, err)
            || !parseYear(QStringLiteral("to"), options.value(QStringLiteral("to")), to, err))
            return ExitUsage;
        if (from > to) {
            err << "rkcalendar holidays: --from " << from << " is after --to " << to << '\n';
            return ExitUsage;
        }
    }

    for (int year = from; year <= to; ++year) {
        for (const MarkedDay& day : markedDaysOfYear(year, config)) {
            out << day.date.toString(Qt::ISODate) << '\t' << typeKeywords(day.type) << '\t'
                << day.names.join(QStringLiteral("; ")) << '\n';
        }
    }
    return ExitOk;
}

const CommandRegistration registration({QStringLiteral("holidays"),
    QStringLiteral("holidays --locale L [--province P] (--year Y | --from Y1 --to Y2) [--features F,...]"),
    QStringLiteral("marked days: date, type keywords, names (tab-separated)"), runHolidays});

} // namespace
