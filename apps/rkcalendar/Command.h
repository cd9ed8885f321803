#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <functional>

/// Exit codes of the tool: 1 for failures of the machine (I/O, missing data), 2 for bad input.
enum ExitCode { ExitOk = 0, ExitFailure = 1, ExitUsage = 2 };

class CommandContext;

/**
 * One sub-command of rkcalendar. main() builds a QCommandLineParser from `options`
 * (plus --verbose and --help), rejects unknown options, missing values, a single-valued
 * option given twice and positional arguments outside [minArguments, maxArguments], and
 * only then calls `run`.
 */
struct Command {
    QString name;
    QString arguments;                 ///< positional part of the synopsis, e.g. "[YYYY-MM]"
    QString description;               ///< one line
    QList<QCommandLineOption> options; ///< the command's own options
    std::function<int(CommandContext&)> run;
    QStringList repeatable;            ///< options that may be given more than once
    int minArguments = 0;
    int maxArguments = 0;
    bool needsData = true;             ///< fails early when the data directory is missing
    bool needsGui = false;             ///< runs under a QGuiApplication (drawing, fonts)
};

class CommandRegistry
{
public:
    static void add(const Command& command);
    static const QList<Command>& all();
    static const Command* find(const QString& name);
};

/// A static instance of this in a command's source file registers the command.
struct CommandRegistration {
    explicit CommandRegistration(const Command& command) { CommandRegistry::add(command); }
};

/// What a running command sees: its parsed options and the two output streams.
class CommandContext
{
public:
    CommandContext(const Command& command, const QCommandLineParser& parser, QTextStream& out, QTextStream& err)
        : myCommand(command), myParser(parser), myOut(out), myErr(err)
    {
    }

    const QString& name() const { return myCommand.name; }
    bool isSet(const QString& option) const { return myParser.isSet(option); }
    /// The option's value, or `fallback` when it was not given.
    QString value(const QString& option, const QString& fallback = QString()) const
    {
        return myParser.isSet(option) ? myParser.value(option) : fallback;
    }
    QStringList values(const QString& option) const { return myParser.values(option); }
    QStringList positional() const { return myParser.positionalArguments(); }
    bool verbose() const { return myParser.isSet(QStringLiteral("verbose")); }

    QTextStream& out() { return myOut; }
    QTextStream& err() { return myErr; }

    /// Writes "rkcalendar <command>: <message>" to stderr and returns `code`.
    int fail(int code, const QString& message);
    int usageError(const QString& message) { return fail(ExitUsage, message); }
    /// The same line without ending the command.
    void warn(const QString& message);

private:
    const Command& myCommand;
    const QCommandLineParser& myParser;
    QTextStream& myOut;
    QTextStream& myErr;
};

/// A value option "--name <valueName>" for Command::options.
QCommandLineOption valueOption(const QString& name, const QString& description, const QString& valueName);
/// A flag "--name" for Command::options.
QCommandLineOption flagOption(const QString& name, const QString& description);
