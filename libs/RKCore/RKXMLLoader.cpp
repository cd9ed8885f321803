#include "RKXMLLoader.h"

#include <QDebug>
#include <QFile>

QDomDocument RKXMLLoader::loadDocument(const QString& path)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        qWarning().noquote() << QStringLiteral("Could not read XML file \"%1\": %2")
                                    .arg(path, path.isEmpty() ? QStringLiteral("no file name") : file.errorString());
        return QDomDocument();
    }
    return parse(file.readAll(), path);
}

QDomDocument RKXMLLoader::loadDocument(const QFileInfo& file)
{
    return loadDocument(file.filePath().isEmpty() ? QString() : file.absoluteFilePath());
}

QDomElement RKXMLLoader::loadDocumentElement(const QString& path)
{
    return loadDocument(path).documentElement();
}

QDomElement RKXMLLoader::loadDocumentElement(const QFileInfo& file)
{
    return loadDocument(file).documentElement();
}

QDomDocument RKXMLLoader::parse(const QByteArray& data, const QString& origin)
{
    QDomDocument document;
    QString message;
    int line = 0;
    int column = 0;
    if (!document.setContent(data, false, &message, &line, &column)) {
        qWarning().noquote() << QStringLiteral("XML parse error in \"%1\" at line %2, column %3: %4")
                                    .arg(origin)
                                    .arg(line)
                                    .arg(column)
                                    .arg(message);
        return QDomDocument();
    }
    return document;
}
