// rkcalendar provinces: the provinces of a holiday locale with their titles.

#include "Command.h"
#include "HolidayCommandSupport.h"

#include <RKCalendariumHolidayCalculator.h>

using namespace HolidayCommandSupport;

namespace {

int runProvinces(CommandContext& context)
{
    RKLocale locale;
    if (!parseHolidayLocale(context.value(QStringLiteral("locale")), locale, context))
        return ExitUsage;

    const QHash<QString, QString> titles = provinceTitles(locale);
    for (const QString& province : RKCalendariumHolidayCalculator::instance().availableProvinces(locale))
        context.out() << province << '\t' << titles.value(province) << '\n';
    return ExitOk;
}

Command provincesCommand()
{
    Command command;
    command.name = QStringLiteral("provinces");
    command.description = QStringLiteral("provinces of a holiday locale: code, title (tab-separated)");
    command.options = {valueOption(QStringLiteral("locale"), QStringLiteral("holiday locale, e.g. de_DE (required)"),
        QStringLiteral("locale"))};
    command.run = runProvinces;
    return command;
}

const CommandRegistration registration(provincesCommand());

} // namespace
