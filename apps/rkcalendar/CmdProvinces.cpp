// rkcalendar provinces: the provinces of a holiday locale with their titles.

#include "Command.h"
#include "HolidayCommandSupport.h"

#include <RKCalendariumHolidayCalculator.h>

using namespace HolidayCommandSupport;

namespace {

int runProvinces(const QStringList& args, QTextStream& out, QTextStream& err)
{
    const CommandOptions options(args, {QStringLiteral("locale")});
    if (!options.isValid()) {
        err << "rkcalendar provinces: " << options.error() << '\n';
        return ExitUsage;
    }
    if (!options.positional().isEmpty()) {
        err << "rkcalendar provinces: unexpected argument \"" << options.positional().first() << "\"\n";
        return ExitUsage;
    }
    RKLocale locale;
    if (!parseHolidayLocale(options.value(QStringLiteral("locale")), locale, err))
        return ExitUsage;

    const QHash<QString, QString> titles = provinceTitles(locale);
    for (const QString& province : RKCalendariumHolidayCalculator::instance().availableProvinces(locale))
        out << province << '\t' << titles.value(province) << '\n';
    return ExitOk;
}

const CommandRegistration registration({QStringLiteral("provinces"), QStringLiteral("provinces --locale L"),
    QStringLiteral("provinces of a holiday locale: code, title (tab-separated)"), runProvinces});

} // namespace
