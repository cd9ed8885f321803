#include "Command.h"

#include <algorithm>

namespace {
QList<Command>& registry()
{
    static QList<Command> commands;
    return commands;
}
}

void CommandRegistry::add(const Command& command)
{
    QList<Command>& commands = registry();
    const auto position = std::lower_bound(commands.begin(), commands.end(), command,
        [](const Command& a, const Command& b) { return a.name < b.name; });
    commands.insert(position, command);
}

const QList<Command>& CommandRegistry::all()
{
    return registry();
}

const Command* CommandRegistry::find(const QString& name)
{
    for (const Command& command : registry()) {
        if (command.name == name)
            return &command;
    }
    return nullptr;
}

int CommandContext::fail(int code, const QString& message)
{
    warn(message);
    return code;
}

void CommandContext::warn(const QString& message)
{
    myErr << "rkcalendar " << myCommand.name << ": " << message << '\n';
    myErr.flush();
}

QCommandLineOption valueOption(const QString& name, const QString& description, const QString& valueName)
{
    return QCommandLineOption(name, description, valueName);
}

QCommandLineOption flagOption(const QString& name, const QString& description)
{
    return QCommandLineOption(name, description);
}
