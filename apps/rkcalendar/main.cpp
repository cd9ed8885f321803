// rkcalendar: the command-line front of the library. main() parses the command line of
// the chosen command, checks the data directory, hides the library's diagnostics unless
// --verbose, and turns a failed write to standard output into exit code 1.

#include "Command.h"

#include <RKDirectoryConfig.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>

#include <csignal>
#include <memory>

#include <unistd.h>

namespace {

const char* const VERSION = "0.1.0";
const char* const PROBE_FILE = "international/CalendarLanguages.xml";

bool verboseMessages = false;

void messageFilter(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (!verboseMessages && type != QtCriticalMsg && type != QtFatalMsg)
        return;
    const QByteArray text = qFormatLogMessage(type, context, message).toLocal8Bit();
    fprintf(stderr, "%s\n", text.constData());
}

QString synopsis(const Command& command)
{
    QString text = command.name;
    if (!command.options.isEmpty())
        text += QStringLiteral(" [options]");
    if (!command.arguments.isEmpty())
        text += QLatin1Char(' ') + command.arguments;
    return text;
}

void printOverview(QTextStream& out)
{
    out << "Usage: rkcalendar <command> [options]\n\n"
           "Makes calendar pages and calendar data: calendar words, public holidays,\n"
           "school vacations and moon phases.\n\n"
           "Commands:\n";
    for (const Command& command : CommandRegistry::all())
        out << "  " << command.name.leftJustified(12) << command.description << '\n';
    out << "  " << QStringLiteral("help").leftJustified(12) << "help on a command (rkcalendar help <command>)\n"
        << "\nOptions: --help, --version; every command takes --help and --verbose.\n"
           "Resources are read from $RKXML_RESOURCE_PATH (colon-separated) and the shipped data\n"
           "directory ($RKXML_DATA_DIR overrides it).\n";
}

QList<QCommandLineOption> commonOptions()
{
    return {QCommandLineOption(QStringLiteral("verbose"), QStringLiteral("show the library's diagnostics")),
        QCommandLineOption({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("show this help"))};
}

void printCommandHelp(const Command& command, QTextStream& out)
{
    out << "Usage: rkcalendar " << synopsis(command) << "\n\n" << command.description << "\n\nOptions:\n";
    const QList<QCommandLineOption> options = command.options + commonOptions();
    QList<QPair<QString, QString>> rows;
    int width = 0;
    for (const QCommandLineOption& option : options) {
        QStringList names;
        for (const QString& name : option.names())
            names << (name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name;
        QString left = names.join(QStringLiteral(", "));
        if (!option.valueName().isEmpty())
            left += QStringLiteral(" <%1>").arg(option.valueName());
        if (command.repeatable.contains(option.names().constLast()))
            left += QStringLiteral(" ...");
        rows.append({left, option.description()});
        width = qMax(width, left.size());
    }
    for (const auto& row : qAsConst(rows))
        out << "  " << row.first.leftJustified(width + 2) << row.second << '\n';
}

// Every option the parser saw more than once that the command does not allow to repeat.
QString repeatedOption(const Command& command, const QCommandLineParser& parser)
{
    QStringList seen;
    for (const QString& name : parser.optionNames()) {
        QString canonical = name;
        for (const QCommandLineOption& option : command.options) {
            if (option.names().contains(name))
                canonical = option.names().constLast();
        }
        if (seen.contains(canonical) && !command.repeatable.contains(canonical))
            return canonical;
        seen << canonical;
    }
    return QString();
}

// QCommandLineParser's message in the tool's own style.
QString parseError(const QCommandLineParser& parser)
{
    const QStringList unknown = parser.unknownOptionNames();
    if (!unknown.isEmpty())
        return QStringLiteral("unknown option %1%2")
            .arg(unknown.first().size() == 1 ? QStringLiteral("-") : QStringLiteral("--"), unknown.first());
    QString text = parser.errorText();
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text.isEmpty() ? text : text.left(1).toLower() + text.mid(1);
}

// Where the shipped data should be, when the words file cannot be read from anywhere.
QString missingDataDirectory()
{
    const RKDirectoryConfig& directories = RKDirectoryConfig::instance();
    QFile probe(directories.resource(QString::fromLatin1(PROBE_FILE)));
    if (probe.open(QIODevice::ReadOnly) && probe.read(1).size() == 1)
        return QString();
    return directories.shippedDataDirectory();
}

} // namespace

int main(int argc, char** argv)
{
    // A closed pipe must give a write error (and exit code 1), not kill the process.
    std::signal(SIGPIPE, SIG_IGN);

    QStringList args;
    for (int i = 0; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    const QString name = args.value(1);
    const Command* command = CommandRegistry::find(name);
    // Installed first, so that the GUI platform's start-up notes stay quiet too.
    verboseMessages = args.contains(QStringLiteral("--verbose"));
    qInstallMessageHandler(messageFilter);
    std::unique_ptr<QCoreApplication> app;
    if (command && command->needsGui) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        app.reset(new QGuiApplication(argc, argv));
    } else {
        app.reset(new QCoreApplication(argc, argv));
    }
    QCoreApplication::setApplicationName(QStringLiteral("rkcalendar"));
    QCoreApplication::setApplicationVersion(QString::fromLatin1(VERSION));

    QFile stdoutFile;
    stdoutFile.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered, QFileDevice::DontCloseHandle);
    QTextStream out(&stdoutFile);
    QTextStream err(stderr);
    out.setCodec("UTF-8");
    err.setCodec("UTF-8");

    int code = ExitOk;
    if (args.size() < 2) {
        printOverview(err);
        code = ExitUsage;
    } else if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
        printOverview(out);
    } else if (name == QLatin1String("--version")) {
        out << "rkcalendar " << VERSION << '\n';
    } else if (name == QLatin1String("help")) {
        const QString topic = args.value(2);
        const Command* about = CommandRegistry::find(topic);
        if (topic.isEmpty()) {
            printOverview(out);
        } else if (about) {
            printCommandHelp(*about, out);
        } else {
            err << "rkcalendar help: unknown command \"" << topic << "\"\n";
            code = ExitUsage;
        }
    } else if (!command) {
        err << "rkcalendar: unknown command \"" << name << "\" (rkcalendar --help lists the commands)\n";
        code = ExitUsage;
    } else {
        QCommandLineParser parser;
        parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
        parser.addOptions(command->options);
        parser.addOptions(commonOptions());
        CommandContext context(*command, parser, out, err);
        QStringList commandArgs = args.mid(2);
        commandArgs.prepend(args.first());
        const QStringList positional = parser.parse(commandArgs) ? parser.positionalArguments() : QStringList();
        const QString repeated = parser.errorText().isEmpty() ? repeatedOption(*command, parser) : QString();
        verboseMessages = parser.isSet(QStringLiteral("verbose"));
        if (!parser.errorText().isEmpty()) {
            code = context.usageError(parseError(parser) + QStringLiteral(" (rkcalendar help %1)").arg(name));
        } else if (parser.isSet(QStringLiteral("help"))) {
            printCommandHelp(*command, out);
        } else if (!repeated.isEmpty()) {
            code = context.usageError(QStringLiteral("--%1 given more than once").arg(repeated));
        } else if (positional.size() > command->maxArguments) {
            code = context.usageError(
                QStringLiteral("unexpected argument \"%1\"").arg(positional.value(command->maxArguments)));
        } else if (positional.size() < command->minArguments) {
            code = context.usageError(QStringLiteral("missing argument: %1").arg(command->arguments));
        } else if (command->needsData && !missingDataDirectory().isEmpty()) {
            code = context.fail(ExitFailure,
                QStringLiteral("the data directory is missing or unreadable: looked for %1 in %2 (set RKXML_DATA_DIR)")
                    .arg(QString::fromLatin1(PROBE_FILE), missingDataDirectory()));
        } else {
            code = command->run(context);
        }
    }

    out.flush();
    if (out.status() != QTextStream::Ok || stdoutFile.error() != QFileDevice::NoError) {
        err << "rkcalendar" << (command ? QStringLiteral(" ") + name : QString())
            << ": cannot write to standard output: " << stdoutFile.errorString() << '\n';
        code = ExitFailure;
    }
    err.flush();
    return code;
}
