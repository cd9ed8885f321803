#include "RKResourceFile.h"

#include "RKDirectoryConfig.h"

RKResourceFile::RKResourceFile(unsigned int type, const QString& name)
    : myType(type)
    , myName(name)
{
}

QString RKResourceFile::relativePath(const QString& variant) const
{
    switch (myType) {
    case RKResourceHolidays:
        return QStringLiteral("holidays/%1.xml").arg(variant.isEmpty() ? myName : variant);
    case RKResourceMoonPhases:
        return QStringLiteral("moonphases/%1.xml").arg(variant.isEmpty() ? QStringLiteral("moonphases") : variant);
    default:
        return QString();
    }
}

QFileInfo RKResourceFile::fileInfo(bool writable, const QString& variant) const
{
    const QString relative = relativePath(variant);
    if (relative.isEmpty())
        return QFileInfo();
    return QFileInfo(RKSingleton<RKDirectoryConfig>::instance().resource(relative, writable));
}
