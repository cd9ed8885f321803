#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <functional>

/// Exit codes of the tool.
enum ExitCode { ExitOk = 0, ExitFailure = 1, ExitUsage = 2 };

/// One sub-command of rkcalendar. `run` gets the arguments after the command name.
struct Command {
    QString name;
    QString synopsis;    ///< e.g. "holidays --locale L [--province P] --year Y"
    QString description; ///< one line
    std::function<int(const QStringList& args, QTextStream& out, QTextStream& err)> run;
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

/**
 * "--name value" / "--name=value" options after a command. Unknown options and
 * missing values are reported through error(); positional arguments are kept in order.
 */
class CommandOptions
{
public:
    CommandOptions(const QStringList& args, const QStringList& valueOptions, const QStringList& flagOptions = {});
    bool isValid() const { return myError.isEmpty(); }
    QString error() const { return myError; }
    bool has(const QString& name) const { return myValues.contains(name); }
    QString value(const QString& name, const QString& fallback = QString()) const { return myValues.value(name, fallback); }
    QStringList positional() const { return myPositional; }

private:
    QHash<QString, QString> myValues;
    QStringList myPositional;
    QString myError;
};
