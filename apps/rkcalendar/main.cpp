#include "Command.h"

#include <QCoreApplication>

namespace {

void printUsage(QTextStream& out)
{
    out << "Usage: rkcalendar <command> [options]\n\n"
           "Turns calendar data into printable calendar content: calendar words,\n"
           "public holidays, school vacations and moon phases.\n\n"
           "Commands:\n";
    for (const Command& command : CommandRegistry::all())
        out << "  " << command.synopsis.leftJustified(58) << " " << command.description << '\n';
    out << "  " << QStringLiteral("help").leftJustified(58) << " this text\n";
    out << "\nResources are read from $RKXML_RESOURCE_PATH (colon-separated) and the shipped data directory.\n";
}

}

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("rkcalendar"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    out.setCodec("UTF-8");
    err.setCodec("UTF-8");

    QStringList args = app.arguments().mid(1);
    if (args.isEmpty() || args.first() == QLatin1String("help") || args.first() == QLatin1String("--help")
        || args.first() == QLatin1String("-h")) {
        printUsage(out);
        return ExitOk;
    }
    const QString name = args.takeFirst();
    const Command* command = CommandRegistry::find(name);
    if (!command) {
        err << "rkcalendar: unknown command \"" << name << "\"\n\n";
        err.flush();
        printUsage(err);
        return ExitUsage;
    }
    const int code = command->run(args, out, err);
    out.flush();
    err.flush();
    return code;
}
