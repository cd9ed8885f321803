#include "RKFileHandler.h"

#include "RKDirectoryConfig.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

QString RKFileHandler::makeSVGPathMinimal(const QString& absolutePath)
{
    if (absolutePath.isEmpty() || !QDir::isAbsolutePath(absolutePath))
        return absolutePath;
    const QString cleaned = QDir::cleanPath(absolutePath);

    QStringList candidates;
    const QStringList directories = RKDirectoryConfig::instance().resourceDirectories();
    for (const QString& directory : directories) {
        const QString prefix = QDir::cleanPath(directory) + QLatin1Char('/');
        if (cleaned.startsWith(prefix) && cleaned.size() > prefix.size())
            candidates << cleaned.mid(prefix.size());
    }
    // Nested search directories give several candidates: prefer the shortest that
    // resolves back to this very file.
    std::stable_sort(candidates.begin(), candidates.end(),
        [](const QString& a, const QString& b) { return a.size() < b.size(); });
    for (const QString& candidate : qAsConst(candidates)) {
        const QFileInfo found = RKDirectoryConfig::instance().findInGlintoraDirs(candidate);
        if (found.filePath().isEmpty() || QDir::cleanPath(found.absoluteFilePath()) == cleaned)
            return candidate;
    }
    return cleaned;
}

QByteArray RKFileHandler::readBinaryFile(const QFileInfo& file)
{
    const QString path = file.filePath().isEmpty() ? QString() : file.absoluteFilePath();
    QFile input(path);
    if (path.isEmpty() || !input.open(QIODevice::ReadOnly)) {
        qWarning().noquote() << QStringLiteral("Could not read file \"%1\": %2")
                                    .arg(path, path.isEmpty() ? QStringLiteral("no file name") : input.errorString());
        return QByteArray();
    }
    return input.readAll();
}
