#include "RKTextTransform.h"

#include <QVector>

namespace {
const QString STR_TEXT_TRANSFORM = QStringLiteral("text-transform");
const QString STR_STYLE = QStringLiteral("style");

struct ModeWord {
    const char* word;
    RKTextTransform::Mode mode;
};
const ModeWord MODE_WORDS[] = {
    {"uppercase", RKTextTransform::Uppercase},
    {"lowercase", RKTextTransform::Lowercase},
    {"capitalize", RKTextTransform::Capitalize},
    {"none", RKTextTransform::None},
};

/// The value of `property` in a "name: value; ..." declaration list; null when absent.
QString styleProperty(const QString& style, const QString& property)
{
    QString found;
    for (const QStringRef& declaration : style.splitRef(QLatin1Char(';'))) {
        const int colon = declaration.indexOf(QLatin1Char(':'));
        if (colon < 0)
            continue;
        if (declaration.left(colon).trimmed().compare(property, Qt::CaseInsensitive) == 0)
            found = declaration.mid(colon + 1).trimmed().toString(); // the last declaration wins
    }
    return found;
}

QString capitalized(const QString& text)
{
    QString result;
    result.reserve(text.size());
    bool wordStart = true;
    for (const QChar ch : text) {
        if (ch.isSpace()) {
            wordStart = true;
            result += ch;
        } else if (wordStart && ch.isLetterOrNumber()) {
            wordStart = false;
            result += QString(ch).toUpper();
        } else {
            result += ch;
        }
    }
    return result;
}
}

RKTextTransform::Mode RKTextTransform::modeOf(const QString& value)
{
    const QString word = value.trimmed();
    for (const ModeWord& row : MODE_WORDS) {
        if (word.compare(QLatin1String(row.word), Qt::CaseInsensitive) == 0)
            return row.mode;
    }
    return None;
}

RKTextTransform RKTextTransform::parse(const QDomElement& element)
{
    if (element.isNull())
        return RKTextTransform();
    const QString fromStyle = styleProperty(element.attribute(STR_STYLE), STR_TEXT_TRANSFORM);
    if (!fromStyle.isNull())
        return RKTextTransform(modeOf(fromStyle));
    return RKTextTransform(modeOf(element.attribute(STR_TEXT_TRANSFORM)));
}

QString RKTextTransform::apply(const QString& text) const
{
    switch (myMode) {
    case Uppercase:
        return text.toUpper();
    case Lowercase:
        return text.toLower();
    case Capitalize:
        return capitalized(text);
    case None:
        break;
    }
    return text;
}
