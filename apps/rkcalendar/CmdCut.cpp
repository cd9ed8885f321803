#include "Command.h"
#include "SvgCommandSupport.h"

#include <RKSVGCutter.h>
#include <RKXMLBuilder.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QUuid>

namespace {

QString number(double value)
{
    return QString::number(value, 'g', 10);
}

// A snippet as a stand-alone file: the source's namespace declarations on its root and
// its bounding box as the view, so that it draws on its own.
QByteArray snippetFile(const RKSVGSnippet& snippet, const QDomElement& sourceRoot)
{
    QDomDocument document;
    document.setContent(snippet.content());
    QDomElement root = document.documentElement();
    const QDomNamedNodeMap attributes = sourceRoot.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        const QDomAttr attribute = attributes.item(i).toAttr();
        if (attribute.name() == QLatin1String("xmlns") || attribute.name().startsWith(QLatin1String("xmlns:")))
            root.setAttribute(attribute.name(), attribute.value());
    }
    const QRectF box = snippet.boundingBox();
    if (!box.isEmpty()) {
        root.setAttribute(QStringLiteral("viewBox"),
            QStringList{ number(box.x()), number(box.y()), number(box.width()), number(box.height()) }.join(QLatin1Char(' ')));
        root.setAttribute(QStringLiteral("width"), number(box.width()));
        root.setAttribute(QStringLiteral("height"), number(box.height()));
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    RKXMLBuilder::saveCanonicalXML(document, &buffer, 4);
    return bytes;
}

// Why a mark's "id" cannot name its file, or an empty string.
QString idProblem(const QString& id, const QHash<QString, int>& seen)
{
    static const QRegularExpression usable(QStringLiteral("^[A-Za-z0-9_][A-Za-z0-9_.-]*$"));
    if (id.isEmpty())
        return QStringLiteral("a marked element has no \"id\"");
    if (!usable.match(id).hasMatch())
        return QStringLiteral("the id \"%1\" cannot name a file (letters, digits, \"_\", \".\" and \"-\" only)").arg(id);
    if (seen.value(id) > 1)
        return QStringLiteral("the id \"%1\" is used by %2 marked elements").arg(id).arg(seen.value(id));
    return QString();
}

/*
 * Cuts the elements marked by --attribute/--value out of an SVG file. Prints one line per
 * piece: id, bounding box (x, y, width, height) and matrix (a b c d e f, SVG order), tab-
 * separated. With --out-dir each piece is written to <id>.svg there: all files go to hidden
 * temporary files first and are renamed into place only when every one was written.
 */
int runCut(CommandContext& context)
{
    int code = ExitOk;
    const QString input = context.positional().value(0);
    const QDomDocument document = readSvgFile(context, input, &code);
    if (document.isNull())
        return code;
    if (!context.isSet(QStringLiteral("value")))
        return context.usageError(QStringLiteral("--value is required (the value that marks a piece)"));
    const QString attribute = context.value(QStringLiteral("attribute"), QStringLiteral("class"));
    if (attribute.trimmed().isEmpty())
        return context.usageError(QStringLiteral("--attribute must not be empty"));

    const RKSVGCutter cutter(attribute, context.value(QStringLiteral("value")));
    const QList<RKSVGSnippet> snippets = cutter.cut(document.documentElement());

    const bool writeFiles = context.isSet(QStringLiteral("out-dir"));
    const QString directory = context.value(QStringLiteral("out-dir"));
    if (writeFiles) {
        QHash<QString, int> seen;
        for (const RKSVGSnippet& snippet : snippets)
            ++seen[snippet.ID()];
        for (const RKSVGSnippet& snippet : snippets) {
            const QString problem = idProblem(snippet.ID(), seen);
            if (!problem.isEmpty())
                return context.usageError(problem + QStringLiteral("; nothing written"));
        }
        if (!ensureDirectory(context, directory))
            return ExitFailure;
        QStringList temporaries;
        auto discard = [&temporaries]() {
            for (const QString& path : qAsConst(temporaries))
                QFile::remove(path);
        };
        for (const RKSVGSnippet& snippet : snippets) {
            const QByteArray bytes = snippetFile(snippet, document.documentElement());
            QFile file(QDir(directory).filePath(QStringLiteral(".") + QUuid::createUuid().toString(QUuid::WithoutBraces)));
            const bool opened = file.open(QIODevice::WriteOnly);
            if (opened)
                temporaries << file.fileName();
            if (!opened || file.write(bytes) != bytes.size() || !file.flush()) {
                const QString error = file.errorString();
                file.close();
                discard();
                return context.fail(ExitFailure, QStringLiteral("cannot write into \"%1\": %2; nothing written").arg(directory, error));
            }
        }
        for (int i = 0; i < snippets.size(); ++i) {
            const QString target = QDir(directory).filePath(snippets.at(i).ID() + QStringLiteral(".svg"));
            QFile::remove(target);
            if (!QFile::rename(temporaries.at(i), target)) {
                discard();
                return context.fail(ExitFailure, QStringLiteral("cannot create \"%1\"").arg(target));
            }
        }
    }

    for (const RKSVGSnippet& snippet : snippets) {
        const QRectF box = snippet.boundingBox();
        const QTransform m = snippet.matrix();
        context.out() << QStringList{ snippet.ID(), number(box.x()), number(box.y()), number(box.width()), number(box.height()),
                             number(m.m11()), number(m.m12()), number(m.m21()), number(m.m22()), number(m.dx()), number(m.dy()) }
                             .join(QLatin1Char('\t'))
                      << '\n';
    }
    if (snippets.isEmpty())
        context.warn(QStringLiteral("no element has %1=\"%2\"").arg(attribute, context.value(QStringLiteral("value"))));
    return ExitOk;
}

Command cutCommand()
{
    Command command;
    command.name = QStringLiteral("cut");
    command.arguments = QStringLiteral("in.svg");
    command.description = QStringLiteral("cut marked pieces out of an SVG file; index of id, box and matrix");
    command.options = {
        valueOption(QStringLiteral("attribute"), QStringLiteral("attribute that marks a piece (default class)"), QStringLiteral("name")),
        valueOption(QStringLiteral("value"), QStringLiteral("value the attribute must have (required)"), QStringLiteral("value")),
        valueOption(QStringLiteral("out-dir"), QStringLiteral("write each piece to <id>.svg in this directory"), QStringLiteral("dir")),
    };
    command.minArguments = 1;
    command.maxArguments = 1;
    command.needsData = false;
    command.needsGui = true;
    command.run = runCut;
    return command;
}

const CommandRegistration registration(cutCommand());

}
