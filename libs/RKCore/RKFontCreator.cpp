#include "RKFontCreator.h"

QFont RKFontCreator::createDefaultFont() const
{
    QFont font(defaultFontFamily());
    font.setPointSize(12);
    font.setWeight(QFont::Normal);
    font.setStyle(QFont::StyleNormal);
    return font;
}

QString RKFontCreator::defaultFontFamily()
{
    return QStringLiteral("DejaVu Sans");
}
