#include "RKTSFileCreator.h"

#include <RKApplicationLocale.h>
#include <RKXMLLoader.h>

#include <QFile>

#include "private/RKXmlCharacterFilter.h"

QHash<QString, QString> RKTSFileCreator::readTranslations(const QFileInfo& file) const
{
    QHash<QString, QString> table;
    // A file that does not exist yet is the normal start of a merge, not a failure to report.
    if (!QFileInfo::exists(file.absoluteFilePath()))
        return table;
    const QDomDocument document = RKXMLLoader::loadDocument(file);
    const QDomElement context = document.documentElement().firstChildElement(QStringLiteral("context"));
    for (QDomElement message = context.firstChildElement(QStringLiteral("message")); !message.isNull();
         message = message.nextSiblingElement(QStringLiteral("message"))) {
        const QString source = message.firstChildElement(QStringLiteral("source")).text().simplified();
        const QString translation = message.firstChildElement(QStringLiteral("translation")).text().simplified();
        if (!source.isEmpty() && !translation.isEmpty())
            table.insert(source, translation);
    }
    return table;
}

void RKTSFileCreator::save(const QFileInfo& file, const QHash<QString, QString>& table) const
{
    QFile out(file.absoluteFilePath());
    // Read-write without truncation: the established behaviour keeps a longer old file's tail.
    if (!out.open(QIODevice::ReadWrite))
        return;
    QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n");
    text += QStringLiteral("<TS version=\"2.1\" language=\"%1\">\n").arg(RKApplicationLocale::instance().languageToCode());
    text += QStringLiteral("<context>\n");
    // Characters XML cannot hold would make the next read reject the whole file.
    RKXmlCharacterFilter filter;
    text += QStringLiteral("    <name>Translations</name>\n");
    for (auto it = table.constBegin(); it != table.constEnd(); ++it) {
        text += QStringLiteral("    <message>\n");
        text += QStringLiteral("        <source>%1</source>\n").arg(filter(it.key()).toHtmlEscaped());
        text += QStringLiteral("        <translation>%1</translation>\n").arg(filter(it.value()).toHtmlEscaped());
        text += QStringLiteral("    </message>\n");
    }
    text += QStringLiteral("</context>\n");
    text += QStringLiteral("</TS>\n");
    out.write(text.toUtf8());
    out.close();
}

bool RKTSFileCreator::merge(const QFileInfo& file, const QHash<QString, QString>& additions) const
{
    QHash<QString, QString> table = readTranslations(file);
    bool changed = false;
    for (auto it = additions.constBegin(); it != additions.constEnd(); ++it) {
        if (table.value(it.key()) != it.value()) {
            table.insert(it.key(), it.value());
            changed = true;
        }
    }
    if (changed)
        save(file, table);
    return changed;
}
