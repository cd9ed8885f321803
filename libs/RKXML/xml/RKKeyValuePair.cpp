#include "RKKeyValuePair.h"

#include "private/RKXmlCharacterFilter.h"

#include <QDebug>
#include <QDomNamedNodeMap>
#include <QLocale>

#include <algorithm>

namespace {

const QChar backslash(QLatin1Char('\\'));

// Index of the first `separator` not preceded by an escaping backslash, or -1.
int firstUnescaped(const QString& text, QChar separator, int from)
{
    for (int i = from; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == backslash)
            ++i;
        else if (c == separator)
            return i;
    }
    return -1;
}

QString shortestNumber(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

}

// ---------------------------------------------------------------- RKKeyValuePair

RKKeyValuePair::RKKeyValuePair(const QString& key, const QString& value)
    : myKey(key)
    , myValue(value)
{
}

bool RKKeyValuePair::operator==(const RKKeyValuePair& other) const
{
    return myKey == other.myKey && myValue == other.myValue;
}

bool RKKeyValuePair::operator<(const RKKeyValuePair& other) const
{
    if (myKey != other.myKey)
        return myKey < other.myKey;
    return myValue < other.myValue;
}

uint RKKeyValuePair::hashValue() const
{
    return qHash(myKey, 0);
}

QString RKKeyValuePair::serializeCSV() const
{
    return escaped(myKey) + QLatin1Char('=') + escaped(myValue);
}

QString RKKeyValuePair::escaped(const QString& text)
{
    QString result = text;
    // The backslash first, so that the backslashes added below are not doubled.
    result.replace(backslash, QLatin1String("\\\\"));
    result.replace(QLatin1Char(','), QLatin1String("\\,"));
    result.replace(QLatin1Char('='), QLatin1String("\\="));
    result.replace(QLatin1Char('/'), QLatin1String("\\/"));
    return result;
}

QString RKKeyValuePair::unEscaped(const QString& text)
{
    QString result = text;
    result.replace(QLatin1String("\\/"), QLatin1String("/"));
    result.replace(QLatin1String("\\,"), QLatin1String(","));
    result.replace(QLatin1String("\\="), QLatin1String("="));
    result.replace(QLatin1String("\\\\"), QLatin1String("\\"));
    return result;
}

RKKeyValuePair RKKeyValuePair::deserializeCSV(const QString& text)
{
    const int equals = firstUnescaped(text, QLatin1Char('='), 0);
    if (equals < 0) {
        qWarning().noquote() << QStringLiteral("Error decoding ") + text;
        return RKKeyValuePair();
    }
    return RKKeyValuePair(unEscaped(text.left(equals)), unEscaped(text.mid(equals + 1)));
}

// ---------------------------------------------------------------- RKKeyValuePairList

void RKKeyValuePairList::sort()
{
    std::sort(myPairs.begin(), myPairs.end());
}

QString RKKeyValuePairList::serializeCSV() const
{
    QStringList texts;
    texts.reserve(myPairs.size());
    for (const RKKeyValuePair& pair : myPairs)
        texts << pair.serializeCSV();
    return texts.join(QLatin1Char(','));
}

RKKeyValuePairList RKKeyValuePairList::deserialize(const QString& text)
{
    RKKeyValuePairList list;
    if (text.isEmpty())
        return list;
    int from = 0;
    for (;;) {
        const int comma = firstUnescaped(text, QLatin1Char(','), from);
        if (comma < 0) {
            list.myPairs.append(RKKeyValuePair::deserializeCSV(text.mid(from)));
            return list;
        }
        list.myPairs.append(RKKeyValuePair::deserializeCSV(text.mid(from, comma - from)));
        from = comma + 1;
    }
}

void RKKeyValuePairList::toXml(QDomElement& element) const
{
    RKXmlCharacterFilter filter;
    for (const RKKeyValuePair& pair : myPairs)
        element.setAttribute(filter(pair.key()), filter(pair.value()));
}

RKKeyValuePairList RKKeyValuePairList::fromXML(const QDomElement& element)
{
    RKKeyValuePairList list;
    const QDomNamedNodeMap attributes = element.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        const QDomAttr attr = attributes.item(i).toAttr();
        list.myPairs.append(RKKeyValuePair(attr.name(), attr.value()));
    }
    return list;
}

int RKKeyValuePairList::indexOf(const QString& key) const
{
    for (int i = 0; i < myPairs.size(); ++i) {
        if (myPairs.at(i).key() == key)
            return i;
    }
    return -1;
}

void RKKeyValuePairList::setValue(const QString& key, const QString& value)
{
    const int index = indexOf(key);
    if (index >= 0)
        myPairs[index].setValue(value);
    else
        myPairs.append(RKKeyValuePair(key, value));
}

void RKKeyValuePairList::setValue(const QString& key, int value)
{
    setValue(key, QString::number(value));
}

void RKKeyValuePairList::setValue(const QString& key, unsigned int value)
{
    setValue(key, QString::number(value));
}

void RKKeyValuePairList::setValue(const QString& key, double value)
{
    setValue(key, shortestNumber(value));
}

void RKKeyValuePairList::setValue(const QString& key, const RKAngle& value)
{
    setValue(key, shortestNumber(value.degrees()));
}

void RKKeyValuePairList::setValue(const QString& key, const QColor& value)
{
    if (!value.isValid()) {
        setValue(key, QString());
        return;
    }
    setValue(key, value.name(value.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb));
}

QString RKKeyValuePairList::value(const QString& key) const
{
    const int index = indexOf(key);
    return index >= 0 ? myPairs.at(index).value() : QString();
}

double RKKeyValuePairList::realValue(const QString& key) const
{
    return value(key).toDouble();
}

int RKKeyValuePairList::intValue(const QString& key) const
{
    return value(key).toInt();
}

unsigned int RKKeyValuePairList::uintValue(const QString& key) const
{
    return value(key).toUInt();
}

RKAngle RKKeyValuePairList::angleValue(const QString& key) const
{
    return RKAngle::fromString(value(key));
}

QColor RKKeyValuePairList::colorValue(const QString& key) const
{
    const QString text = value(key);
    if (text.isEmpty())
        return QColor();
    QColor color;
    color.setNamedColor(text);
    return color;
}

QDebug operator<<(QDebug debug, const RKKeyValuePairList& list)
{
    QDebugStateSaver saver(debug);
    debug.nospace() << "RKKeyValuePairList(";
    for (int i = 0; i < list.count(); ++i) {
        if (i > 0)
            debug << ", ";
        debug << list.at(i).key() << '=' << list.at(i).value();
    }
    debug << ')';
    return debug;
}
