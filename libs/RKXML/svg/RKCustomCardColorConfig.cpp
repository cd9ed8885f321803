#include "RKCustomCardColorConfig.h"

#include <RKDirectoryConfig.h>
#include <RKXMLLoader.h>

#include <QDebug>
#include <QDomNodeList>

namespace {
const QString str_COLORS_FILE = QStringLiteral("colors.xml");
const QString str_COLOR_ELEMENT = QStringLiteral("color");
const QString str_RGB = QStringLiteral("rgb");
const QString str_NAME = QStringLiteral("name");
const QString str_CUSTOM_COLOR = QStringLiteral("customColor");
const QString str_CSS_SUFFIX = QStringLiteral(".css");
}

RKCustomCardColorConfig::RKCustomCardColorConfig()
    : myColors(parseColors())
    , myCssSheets(colorsToCssSheets(myColors))
{
}

RKNamedColorList RKCustomCardColorConfig::parseColors() const
{
    RKNamedColorList colors;
    // The document itself is kept alive: elements alone lose their owner document.
    const QDomDocument document = RKXMLLoader::loadDocument(RKDirectoryConfig::instance().resource(str_COLORS_FILE));
    const QDomNodeList elements = document.elementsByTagName(str_COLOR_ELEMENT);
    for (int i = 0; i < elements.size(); ++i) {
        const QDomElement element = elements.at(i).toElement();
        const QString rgb = element.attribute(str_RGB);
        QColor color;
        color.setNamedColor(rgb);
        if (!color.isValid()) {
            qDebug().noquote() << QStringLiteral("custom card colour skipped, not a colour: \"%1\"").arg(rgb);
            continue;
        }
        colors.append(RKNamedColor(color, element.attribute(str_NAME)));
    }
    return colors;
}

RKCssSheetTitleIdMap RKCustomCardColorConfig::colorsToCssSheets(const RKNamedColorList& colors) const
{
    RKCssSheetTitleIdMap sheets;
    for (const RKNamedColor& named : colors) {
        const QString title = str_CUSTOM_COLOR + named.color().name();
        sheets.insert(title, title + str_CSS_SUFFIX);
    }
    return sheets;
}
