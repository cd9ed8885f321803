#include "RKMonolithFile.h"

#include <QDir>
#include <QFileInfo>

bool RKMonolithFile::isMonolithPath(const QString& absolutePath)
{
    QString path = QDir::cleanPath(absolutePath);
    for (int slash = path.lastIndexOf(QLatin1Char('/')); slash > 0; slash = path.lastIndexOf(QLatin1Char('/'))) {
        path.truncate(slash);
        const QFileInfo ancestor(path);
        if (ancestor.exists())
            return ancestor.isFile();
    }
    return false;
}
