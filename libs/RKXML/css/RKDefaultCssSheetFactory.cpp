#include "RKDefaultCssSheetFactory.h"

namespace {
const QString str_CUSTOM_COLOR_PREFIX = QStringLiteral("customColor");
const QString str_CSS_SUFFIX = QStringLiteral(".css");
const QString str_CUSTOM_FILL_CSS = QStringLiteral(".vakoCustomFill{fill: %1;}");
}

QString RKDefaultCssSheetFactory::color(const QString& id)
{
    const int frame = str_CUSTOM_COLOR_PREFIX.size() + str_CSS_SUFFIX.size();
    if (id.size() < frame || !id.startsWith(str_CUSTOM_COLOR_PREFIX) || !id.endsWith(str_CSS_SUFFIX))
        return QString();
    return id.mid(str_CUSTOM_COLOR_PREFIX.size(), id.size() - frame);
}

bool RKDefaultCssSheetFactory::cssAvailable(const QString& id)
{
    return !color(id).isEmpty();
}

QString RKDefaultCssSheetFactory::cssString(const QString& id)
{
    const QString text = color(id);
    return text.isEmpty() ? QString() : str_CUSTOM_FILL_CSS.arg(text);
}
