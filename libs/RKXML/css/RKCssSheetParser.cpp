#include "RKCssSheetParser.h"

#include "RKCssSheetCache.h"

#include <RKFileHandler.h>

#include <QDebug>
#include <QDir>
#include <QRegularExpression>

namespace {
const QString str_HREF = QStringLiteral("href");
const QString str_TITLE = QStringLiteral("title");
const QString str_ALTERNATE = QStringLiteral("alternate");
const QString str_STYLESHEET = QStringLiteral("xml-stylesheet");
const QString str_STYLESHEETS = QStringLiteral("xml-stylesheets");
const QRegularExpression str_PSEUDO_ATTRIBUTE(QStringLiteral("(href|title|alternate)\\s*=\\s*\"([^ \"]+)\""));
const QRegularExpression str_INCLUDE(QStringLiteral("\\s*href\\s*=\\s*\"([^ \"]+)\"\\s*"));

QFileInfo resolve(const QFileInfo& svgFile, const QString& href)
{
    return QFileInfo(QDir::cleanPath(svgFile.absoluteDir().absoluteFilePath(href)));
}
}

RKCssSheetTitleIdMap RKCssSheetParser::findStyleSheets(const QDomDocument& svg, const QFileInfo& svgFile)
{
    RKCssSheetTitleIdMap map;
    if (!svgFile.exists())
        return map;
    for (QDomNode node = svg.firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (node.isProcessingInstruction())
            evaluateProcessingInstruction(node.toProcessingInstruction(), svgFile, &map);
    }
    return map;
}

void RKCssSheetParser::evaluateProcessingInstruction(const QDomProcessingInstruction& instruction,
    const QFileInfo& svgFile, RKCssSheetTitleIdMap* map)
{
    if (instruction.isNull() || !map)
        return;
    const QString target = instruction.target();
    if (target == str_STYLESHEET)
        evaluateStyleSheet(instruction.data(), svgFile, map);
    else if (target == str_STYLESHEETS)
        evaluateStylesInclude(instruction.data(), svgFile, map);
}

void RKCssSheetParser::parseTitleAndFileInfo(const QString& data, const QFileInfo& svgFile, QFileInfo* file,
    QString* title, bool* isDefault)
{
    QRegularExpressionMatchIterator it = str_PSEUDO_ATTRIBUTE.globalMatch(data);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        const QStringRef name = match.capturedRef(1);
        if (name == str_HREF)
            *file = resolve(svgFile, match.captured(2));
        else if (name == str_TITLE)
            *title = match.captured(2);
        else if (name == str_ALTERNATE)
            *isDefault = false;
    }
}

void RKCssSheetParser::evaluateStyleSheet(const QString& data, const QFileInfo& svgFile, RKCssSheetTitleIdMap* map)
{
    QFileInfo file;
    QString title;
    bool isDefault = true;
    parseTitleAndFileInfo(data, svgFile, &file, &title, &isDefault);
    if (file.filePath().isEmpty() || !file.isFile()) {
        const QString path = file.filePath().isEmpty() ? QString() : file.absoluteFilePath();
        qWarning().noquote() << QStringLiteral("Not inserted (file not found or no title): %1 %2").arg(data, path);
        return;
    }
    const QString id = RKFileHandler::makeSVGPathMinimal(file.absoluteFilePath());
    if (title.isEmpty()) {
        map->setStandardSheet(id);
        return;
    }
    map->insert(title, id);
    if (isDefault)
        map->setDefaultCssSheetTitle(title);
}

void RKCssSheetParser::evaluateStylesInclude(const QString& data, const QFileInfo& svgFile, RKCssSheetTitleIdMap* map)
{
    const QString href = str_INCLUDE.match(data).captured(1);
    const QFileInfo file = href.isEmpty() ? QFileInfo() : resolve(svgFile, href);
    if (file.filePath().isEmpty() || !file.isFile()) {
        qWarning().noquote() << QStringLiteral("failing to include ") + href;
        return;
    }
    map->merge(RKSingleton<RKCssSheetCache>::instance().styleSheetsIn(file));
}
