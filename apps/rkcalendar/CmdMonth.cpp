// rkcalendar month: one month as a grid for the terminal, with marked days and their names.
//
// Every column is CELL characters wide: the day number right-aligned in the first three,
// then up to three marker characters (holiday, school, moon phase). The first column
// holds the ISO week number.

#include "Command.h"
#include "HolidayCommandSupport.h"

#include <RKCalendarDayNames.h>
#include <RKCalendarWordsRegistry.h>
#include <RKCalendariumHolidayCalculator.h>

#include <QRegularExpression>

#include <unistd.h>

using namespace HolidayCommandSupport;

namespace {

const int CELL = 6;
const int NUMBER_WIDTH = 3;

struct PhaseMarker {
    RKCalendariumHolidayTypeEnum type;
    QChar symbol;
    const char* name;
};

// Dark areas drawn black, as seen from the northern hemisphere.
const PhaseMarker PHASES[] = {
    {RKCalendariumHolidayTypeNewMoon, QChar(0x25CF), "new moon"},
    {RKCalendariumHolidayTypeGrowingCrescent, QChar(0x25D0), "first quarter"},
    {RKCalendariumHolidayTypeFullMoon, QChar(0x25CB), "full moon"},
    {RKCalendariumHolidayTypeWaningCrescent, QChar(0x25D1), "last quarter"},
};

const int FREE = RKCalendariumHolidayTypeFree;
const int SHOW = RKCalendariumHolidayTypeShow;
const int SCHOOL = RKCalendariumHolidayTypeSchool;

const char* const ANSI_RESET = "\x1b[0m";
const char* const ANSI_FREE = "\x1b[1;31m";
const char* const ANSI_SHOW = "\x1b[1m";
const char* const ANSI_SCHOOL = "\x1b[32m";

QString markers(int type)
{
    QString text;
    if (type & FREE)
        text += QLatin1Char('*');
    else if (type & SHOW)
        text += QLatin1Char('+');
    if (type & SCHOOL)
        text += QLatin1Char('s');
    for (const PhaseMarker& phase : PHASES) {
        if (type & phase.type)
            text += phase.symbol;
    }
    return text;
}

const char* ansiFor(int type)
{
    if (type & FREE)
        return ANSI_FREE;
    if (type & SHOW)
        return ANSI_SHOW;
    if (type & SCHOOL)
        return ANSI_SCHOOL;
    return nullptr;
}

// "a-b, c" for sorted day numbers.
QString dayRanges(const QList<int>& days)
{
    QStringList pieces;
    for (int i = 0; i < days.size();) {
        int j = i;
        while (j + 1 < days.size() && days.at(j + 1) == days.at(j) + 1)
            ++j;
        pieces << (i == j ? QString::number(days.at(i)) : QStringLiteral("%1-%2").arg(days.at(i)).arg(days.at(j)));
        i = j + 1;
    }
    return pieces.join(QStringLiteral(", "));
}

bool parseColor(const QString& text, bool& color, CommandContext& context)
{
    if (text == QLatin1String("auto")) {
        color = isatty(STDOUT_FILENO) != 0;
        return true;
    }
    if (text == QLatin1String("always") || text == QLatin1String("never")) {
        color = text == QLatin1String("always");
        return true;
    }
    context.warn(QStringLiteral("--color \"%1\" (valid: auto, always, never)").arg(text));
    return false;
}

void printGrid(QTextStream& out, const QDate& first, const RKCalendarDayNames& names, const QHash<int, MarkedDay>& marks,
               bool color)
{
    out << names.monthLong(first.month()) << ' ' << first.year() << '\n';

    QString header = names.calendarWeekShort().rightJustified(NUMBER_WIDTH).leftJustified(CELL, QLatin1Char(' '), true);
    for (int weekday = 1; weekday <= 7; ++weekday)
        header += names.dayOfWeekShort(weekday).rightJustified(NUMBER_WIDTH).leftJustified(CELL, QLatin1Char(' '), true);
    while (header.endsWith(QLatin1Char(' ')))
        header.chop(1);
    out << header << '\n';

    const int days = first.daysInMonth();
    QDate monday = first.addDays(1 - first.dayOfWeek());
    while (monday <= QDate(first.year(), first.month(), days)) {
        QString line = QString::number(monday.weekNumber()).rightJustified(NUMBER_WIDTH).leftJustified(CELL);
        for (int i = 0; i < 7; ++i) {
            const QDate date = monday.addDays(i);
            if (date.month() != first.month()) {
                line += QString(CELL, QLatin1Char(' '));
                continue;
            }
            const int type = marks.value(date.day()).type.toInt();
            const QString number = QString::number(date.day()).rightJustified(NUMBER_WIDTH);
            const char* ansi = color ? ansiFor(type) : nullptr;
            line += ansi ? QString::fromLatin1(ansi) + number + QString::fromLatin1(ANSI_RESET) : number;
            line += markers(type).leftJustified(CELL - NUMBER_WIDTH);
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        out << line << '\n';
        monday = monday.addDays(7);
    }
}

void printNames(QTextStream& out, const QList<MarkedDay>& month)
{
    QList<int> school;
    QStringList moon;
    bool blank = false;
    for (const MarkedDay& day : month) {
        const int type = day.type.toInt();
        if (type & SCHOOL)
            school << day.date.day();
        for (const PhaseMarker& phase : PHASES) {
            if (type & phase.type)
                moon << QStringLiteral("%1 %2 %3").arg(phase.symbol).arg(day.date.day()).arg(QLatin1String(phase.name));
        }
        if (day.names.isEmpty())
            continue;
        if (!blank) {
            out << '\n';
            blank = true;
        }
        out << QString::number(day.date.day()).rightJustified(NUMBER_WIDTH) << ' '
            << markers(type & (FREE | SHOW)).leftJustified(1) << "  " << day.names.join(QStringLiteral("; ")) << '\n';
    }
    if (!school.isEmpty() || !moon.isEmpty())
        out << '\n';
    if (!school.isEmpty())
        out << "s   school vacation: " << dayRanges(school) << '\n';
    if (!moon.isEmpty())
        out << "moon: " << moon.join(QStringLiteral(", ")) << '\n';
}

int runMonth(CommandContext& context)
{
    const QStringList positional = context.positional();
    QDate first = QDate::currentDate();
    first = QDate(first.year(), first.month(), 1);
    if (!positional.isEmpty() && !parseMonth(positional.first(), first, context))
        return ExitUsage;

    RKLocale locale;
    RKCalendariumHolidayConfig config;
    if (!configFromOptions(context, QLatin1String(ALL_FEATURES), locale, config))
        return ExitUsage;
    for (const QString& warning : coverageWarnings(locale, config, first.year(), first.year()))
        context.warn(QStringLiteral("warning: ") + warning);
    bool color = false;
    if (!parseColor(context.value(QStringLiteral("color"), QStringLiteral("auto")), color, context))
        return ExitUsage;

    QList<MarkedDay> month;
    QHash<int, MarkedDay> byDay;
    for (const MarkedDay& day : markedDaysOfYear(first.year(), config)) {
        if (day.date.month() != first.month())
            continue;
        month << day;
        byDay.insert(day.date.day(), day);
    }
    QTextStream& out = context.out();
    printGrid(out, first, RKCalendarDayNames(locale), byDay, color);
    printNames(out, month);
    return ExitOk;
}

Command monthCommand()
{
    Command command;
    command.name = QStringLiteral("month");
    command.arguments = QStringLiteral("[YYYY-MM]");
    command.description = QStringLiteral("a month as a terminal grid with holidays, vacations and moon phases");
    command.options = holidayOptions(QLatin1String(ALL_FEATURES))
        + QList<QCommandLineOption>{valueOption(QStringLiteral("color"),
            QStringLiteral("auto, always or never (default: auto, colour on a terminal)"), QStringLiteral("when"))};
    command.maxArguments = 1;
    command.run = runMonth;
    return command;
}

const CommandRegistration registration(monthCommand());

} // namespace
