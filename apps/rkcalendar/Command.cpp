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

CommandOptions::CommandOptions(const QStringList& args, const QStringList& valueOptions, const QStringList& flagOptions)
{
    for (int i = 0; i < args.size() && myError.isEmpty(); ++i) {
        const QString& arg = args.at(i);
        if (!arg.startsWith(QLatin1String("--")) || arg == QLatin1String("--")) {
            myPositional << arg;
            continue;
        }
        QString name = arg.mid(2);
        QString value;
        bool inlineValue = false;
        const int eq = name.indexOf(QLatin1Char('='));
        if (eq >= 0) {
            value = name.mid(eq + 1);
            name.truncate(eq);
            inlineValue = true;
        }
        if (flagOptions.contains(name) && !inlineValue) {
            myValues.insert(name, QStringLiteral("1"));
        } else if (valueOptions.contains(name)) {
            if (!inlineValue) {
                if (i + 1 >= args.size()) {
                    myError = QStringLiteral("option --%1 needs a value").arg(name);
                    break;
                }
                value = args.at(++i);
            }
            myValues.insert(name, value);
        } else {
            QStringList known;
            for (const QString& o : valueOptions + flagOptions)
                known << QStringLiteral("--") + o;
            myError = QStringLiteral("unknown option --%1 (valid: %2)").arg(name, known.isEmpty() ? QStringLiteral("none") : known.join(QStringLiteral(", ")));
        }
    }
}
