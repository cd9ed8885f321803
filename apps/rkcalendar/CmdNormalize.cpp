#include "Command.h"
#include "SvgCommandSupport.h"

#include <RKSVGNormalizer.h>
#include <RKXMLBuilder.h>

#include <QBuffer>
#include <QFileInfo>
#include <QSaveFile>

namespace {

/*
 * Runs the clip-art normaliser over one SVG file (optionally putting a logo into its
 * "vako:logo" places and giving closed shapes the default black fill) and writes the
 * result canonically to --output, through a temporary file renamed into place, or to
 * standard output.
 */
int runNormalize(CommandContext& context)
{
    int code = ExitOk;
    const QString input = context.positional().value(0);
    const QDomDocument document = readSvgFile(context, input, &code);
    if (document.isNull())
        return code;
    QDomDocument logo;
    if (context.isSet(QStringLiteral("logo"))) {
        logo = readSvgFile(context, context.value(QStringLiteral("logo")), &code);
        if (logo.isNull())
            return code;
    }

    QDomDocument result = RKSVGNormalizer::prepareDomDocument(document, QFileInfo(input), logo);
    if (context.isSet(QStringLiteral("fill")))
        RKSVGNormalizer::setDefaultFillAttribute(result);

    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!RKXMLBuilder::saveCanonicalXML(result, &buffer, 4))
        return context.fail(ExitFailure, QStringLiteral("cannot write the normalised document"));

    if (!context.isSet(QStringLiteral("output"))) {
        context.out() << QString::fromUtf8(bytes); // main() reports a failed write (exit code 1)
        return ExitOk;
    }
    const QString output = context.value(QStringLiteral("output"));
    QSaveFile file(output);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return context.fail(ExitFailure, QStringLiteral("cannot write \"%1\": %2").arg(output, file.errorString()));
    return ExitOk;
}

Command normalizeCommand()
{
    Command command;
    command.name = QStringLiteral("normalize");
    command.arguments = QStringLiteral("in.svg");
    command.description = QStringLiteral("normalise a clip-art SVG file (canonical output)");
    command.options = {
        valueOption(QStringLiteral("logo"), QStringLiteral("SVG file put into the \"vako:logo\" places"), QStringLiteral("logo.svg")),
        flagOption(QStringLiteral("fill"), QStringLiteral("give closed shapes without a fill an explicit black one")),
        QCommandLineOption({ QStringLiteral("o"), QStringLiteral("output") },
            QStringLiteral("write here (through a temporary file) instead of to standard output"), QStringLiteral("out.svg")),
    };
    command.minArguments = 1;
    command.maxArguments = 1;
    command.needsData = false;
    command.run = runNormalize;
    return command;
}

const CommandRegistration registration(normalizeCommand());

}
