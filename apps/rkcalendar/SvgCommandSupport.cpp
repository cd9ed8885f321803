#include "SvgCommandSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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
