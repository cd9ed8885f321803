#include "RKFileHandler.h"

#include "RKDirectoryConfig.h"

#include <QDir>
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
