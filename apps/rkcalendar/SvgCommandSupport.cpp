#include "SvgCommandSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

#include <algorithm>

namespace {
// Qt's DOM recurses per level when it builds, copies and frees a tree, and overflows the
// stack somewhere below 30000 levels; real drawings stay far below this limit.
const int MAX_DEPTH = 5000;

// The deepest element nesting of well-formed text (0 when it is not well-formed).
int nestingDepth(const QByteArray& bytes)
{
    QXmlStreamReader reader(bytes);
    reader.setNamespaceProcessing(false);
    int depth = 0;
    int deepest = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement)
            deepest = std::max(deepest, ++depth);
        else if (token == QXmlStreamReader::EndElement)
            --depth;
        if (deepest > MAX_DEPTH)
            break;
    }
    return deepest;
}
}

QDomDocument readSvgFile(CommandContext& context, const QString& path, int* exitCode)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        *exitCode = context.fail(ExitFailure, QStringLiteral("cannot read \"%1\": %2")
                                                  .arg(path, QFileInfo::exists(path) && !QFileInfo(path).isFile()
                                                          ? QStringLiteral("not a file") : file.errorString()));
        return QDomDocument();
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        *exitCode = context.fail(ExitFailure, QStringLiteral("cannot read \"%1\": %2").arg(path, file.errorString()));
        return QDomDocument();
    }
    if (nestingDepth(bytes) > MAX_DEPTH) {
        *exitCode = context.usageError(
            QStringLiteral("\"%1\" nests elements more than %2 levels deep").arg(path).arg(MAX_DEPTH));
        return QDomDocument();
    }
    QDomDocument document;
    QString message;
    int line = 0;
    int column = 0;
    if (!document.setContent(bytes, false, &message, &line, &column)) {
        *exitCode = context.usageError(
            QStringLiteral("\"%1\" is not XML (line %2, column %3: %4)").arg(path).arg(line).arg(column).arg(message));
        return QDomDocument();
    }
    const QString root = document.documentElement().tagName();
    if (root != QLatin1String("svg")) {
        *exitCode = context.usageError(QStringLiteral("\"%1\" is not an SVG document (its root element is \"%2\", not \"svg\")")
                                           .arg(path, root));
        return QDomDocument();
    }
    *exitCode = ExitOk;
    return document;
}

bool ensureDirectory(CommandContext& context, const QString& path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isDir()) {
        context.fail(ExitFailure, QStringLiteral("\"%1\" is not a directory").arg(path));
        return false;
    }
    if (!info.exists() && !QDir().mkpath(path)) {
        context.fail(ExitFailure, QStringLiteral("cannot create the directory \"%1\"").arg(path));
        return false;
    }
    return true;
}
