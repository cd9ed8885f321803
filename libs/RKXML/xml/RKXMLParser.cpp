#include "RKXMLParser.h"

#include <RKFontCreator.h>

#include <QRegularExpression>
#include <QtMath>

#include <cfloat>
#include <climits>
#include <utility>

const QStringList RKXMLParser::myLeftNames = {QStringLiteral("left"), QStringLiteral("x"), QStringLiteral("lleft")};
const QStringList RKXMLParser::myTopNames = {QStringLiteral("top"), QStringLiteral("y")};
const QStringList RKXMLParser::myRightNames = {QStringLiteral("right")};
const QStringList RKXMLParser::myBottomNames = {QStringLiteral("bottom")};
const QStringList RKXMLParser::myCenterXNames = {QStringLiteral("centerX"), QStringLiteral("centerx")};
const QStringList RKXMLParser::myCenterYNames = {QStringLiteral("centerY"), QStringLiteral("centery")};
const QStringList RKXMLParser::myWidthNames = {QStringLiteral("width"), QStringLiteral("vako:width")};
const QStringList RKXMLParser::myHeightNames = {QStringLiteral("height"), QStringLiteral("vako:height")};
const QStringList RKXMLParser::myBooleanValueTrue = {QStringLiteral("1"), QStringLiteral("yes"), QStringLiteral("true"),
    QStringLiteral("on"), QStringLiteral("enabled")};
const QStringList RKXMLParser::myBooleanValueFalse = {QStringLiteral("0"), QStringLiteral("no"), QStringLiteral("false"),
    QStringLiteral("off"), QStringLiteral("disabled")};
const QString RKXMLParser::myWidthName = QStringLiteral("width");
const QString RKXMLParser::myHeightName = QStringLiteral("height");

namespace {

const QRegularExpression& letterRun()
{
    static const QRegularExpression expression(QStringLiteral("[A-Za-z_]*"));
    return expression;
}

const QString& dateTimeFormat()
{
    static const QString format = QStringLiteral("yyyyMMddHHmm");
    return format;
}

// Wrapping 32-bit arithmetic: the results real hardware gives, without signed overflow.
int wrapSub(int a, int b) { return static_cast<int>(static_cast<unsigned int>(a) - static_cast<unsigned int>(b)); }
int wrapTwice(int a) { return static_cast<int>(static_cast<unsigned int>(a) * 2u); }

inline bool isSpaceChar(QChar c)
{
    const ushort u = c.unicode();
    if (u < 128)
        return u == ' ' || (u >= '\t' && u <= '\r');
    return c.isSpace();
}

inline int digitOf(QChar c)
{
    const ushort u = c.unicode();
    if (u >= '0' && u <= '9')
        return u - '0';
    if (u < 128)
        return -1;
    return c.digitValue();
}

// qRound without undefined behaviour for values outside the int range or NaN.
int safeRound(double v)
{
    if (qIsNaN(v))
        return 0;
    if (v >= 2147483647.0)
        return INT_MAX;
    if (v <= -2147483648.0)
        return INT_MIN;
    return qRound(v);
}

QString mapValue(const QDomNamedNodeMap& map, const QString& name, bool* present)
{
    const QDomNode node = map.namedItem(name);
    *present = !node.isNull();
    return *present ? node.toAttr().value() : QString();
}

int angleFromDegrees(double degrees)
{
    const int r = safeRound(degrees);
    const int rest = r % 360;
    return r < 0 ? rest + 360 : rest;
}

}

// ---------------------------------------------------------------- raw strings

QString RKXMLParser::attribute(const QDomElement& element, const QString& name, const QString& defaultValue, bool trimmed)
{
    if (!element.hasAttribute(name))
        return defaultValue;
    const QString value = element.attribute(name);
    return trimmed ? value.trimmed() : value;
}

QString RKXMLParser::attribute(const QDomNamedNodeMap& map, const QString& name, const QString& defaultValue, bool trimmed)
{
    bool present;
    const QString value = mapValue(map, name, &present);
    if (!present)
        return defaultValue;
    return trimmed ? value.trimmed() : value;
}

QString RKXMLParser::attribute(const QDomNamedNodeMap& map, const QStringList& names, const QString& defaultValue, bool trimmed)
{
    for (const QString& name : names) {
        const QString value = attribute(map, name, QString(), trimmed);
        if (!value.isEmpty())
            return value;
    }
    return defaultValue;
}

QString RKXMLParser::lowerAttribute(const QDomElement& element, const QString& name, const QString& defaultValue)
{
    return attribute(element, name, defaultValue, true).toLower();
}

QString RKXMLParser::lowerAttribute(const QDomNamedNodeMap& map, const QString& name, const QString& defaultValue)
{
    return attribute(map, name, defaultValue, true).toLower();
}

QString RKXMLParser::referenceID(const QDomElement& element, const QString& defaultValue)
{
    return lowerAttribute(element, QStringLiteral("referenceid"), defaultValue);
}

QString RKXMLParser::text(const QDomNode& parent, const QString& tagName, const QString& defaultValue)
{
    const QString value = parent.firstChildElement(tagName).text();
    return value.isEmpty() ? defaultValue : value;
}

QString RKXMLParser::text(const QDomNode& node, const QString& childName, const QString& tagName, const QString& defaultValue)
{
    const QDomNode child = node.namedItem(childName);
    if (child.isNull())
        return defaultValue;
    return text(child, tagName, defaultValue);
}

// ---------------------------------------------------------------- integers

int RKXMLParser::fastDecodeInt(const QString& text, bool* ok)
{
    bool dummy;
    bool& success = ok ? *ok : dummy;
    const QChar* p = text.constData();
    const QChar* const end = p + text.size();
    if (p == end) {
        success = false;
        return 0;
    }
    while (p != end && isSpaceChar(*p))
        ++p;
    success = true;
    if (p == end)
        return 0;
    bool negative = false;
    if (p->unicode() == '-') {
        negative = true;
        if (++p == end)
            return 0;
    }
    unsigned int value = 0;
    for (; p != end; ++p) {
        const int digit = digitOf(*p);
        if (digit < 0)
            break;
        value = value * 10u + static_cast<unsigned int>(digit);
    }
    if (p != end) {
        // Only trailing white space may follow the digits.
        if (!isSpaceChar(*p)) {
            success = false;
            return 0;
        }
        for (; p != end; ++p) {
            if (!isSpaceChar(*p)) {
                success = false;
                return 0;
            }
        }
    }
    return static_cast<int>(negative ? 0u - value : value);
}

int RKXMLParser::intAttribute(const QDomElement& element, const QString& name, int defaultValue)
{
    const QString value = attribute(element, name, QString(), true);
    return value.isEmpty() ? defaultValue : fastDecodeInt(value, nullptr);
}

int RKXMLParser::intAttribute(const QDomNamedNodeMap& map, const QString& name, int defaultValue)
{
    const QString value = attribute(map, name, QString(), true);
    return value.isEmpty() ? defaultValue : fastDecodeInt(value, nullptr);
}

int RKXMLParser::intAttribute(const QDomNamedNodeMap& map, const QStringList& names, int defaultValue)
{
    int value = defaultValue;
    intAttribute(map, names, &value);
    return value;
}

bool RKXMLParser::intAttribute(const QDomNamedNodeMap& map, const QStringList& names, int* out)
{
    const QString value = attribute(map, names, QString(), true);
    if (value.isEmpty())
        return false;
    *out = fastDecodeInt(value, nullptr);
    return true;
}

int RKXMLParser::intValue(const QDomElement& element, int defaultValue)
{
    bool ok = false;
    const int value = fastDecodeInt(element.text(), &ok);
    return ok ? value : defaultValue;
}

int RKXMLParser::intText(const QDomNode& parent, const QString& tagName, int defaultValue)
{
    const QString value = text(parent, tagName, QString());
    return value.isEmpty() ? defaultValue : fastDecodeInt(value, nullptr);
}

RKIntRange RKXMLParser::intRange(const QDomElement& element, const QString& lowerName, const QString& upperName,
    int lowerDefault, int upperDefault)
{
    return RKIntRange(intAttribute(element, lowerName, lowerDefault), intAttribute(element, upperName, upperDefault));
}

// ---------------------------------------------------------------- floating point

double RKXMLParser::safeDouble(const QString& text)
{
    bool ok = false;
    double value = text.toDouble(&ok);
    if (ok)
        return value;
    const QString withPoint = normalizeDecimalPoint(text);
    value = withPoint.toDouble(&ok);
    if (ok)
        return value;
    QString stripped = withPoint;
    stripped.remove(letterRun());
    value = stripped.toDouble(&ok);
    return ok ? value : 0.0;
}

QString RKXMLParser::normalizeDecimalPoint(const QString& text)
{
    QString copy = text;
    copy.replace(QLatin1Char(','), QLatin1Char('.'));
    return copy;
}

double RKXMLParser::doubleAttribute(const QDomElement& element, const QString& name, double defaultValue)
{
    const QString value = attribute(element, name, QString(), true);
    return value.isEmpty() ? defaultValue : safeDouble(value);
}

double RKXMLParser::doubleAttribute(const QDomNamedNodeMap& map, const QString& name, double defaultValue)
{
    const QString value = attribute(map, name, QString(), true);
    return value.isEmpty() ? defaultValue : safeDouble(value);
}

double RKXMLParser::doubleAttribute(const QDomNamedNodeMap& map, const QStringList& names, double defaultValue)
{
    const QString value = attribute(map, names, QString(), true);
    return value.isEmpty() ? defaultValue : safeDouble(value);
}

double RKXMLParser::doubleText(const QDomNode& parent, const QString& tagName, double defaultValue)
{
    const QString value = text(parent, tagName, QString());
    return value.isEmpty() ? defaultValue : safeDouble(value);
}

int RKXMLParser::readAngle(const QDomElement& element, const QString& name, int defaultValue)
{
    return angleFromDegrees(doubleAttribute(element, name, defaultValue));
}

int RKXMLParser::readAngle(const QDomNamedNodeMap& map, const QString& name, int defaultValue)
{
    return angleFromDegrees(doubleAttribute(map, name, defaultValue));
}

// ---------------------------------------------------------------- booleans

bool RKXMLParser::booleanValue(const QString& text, bool defaultValue)
{
    const QString lower = text.toLower();
    if (myBooleanValueTrue.contains(lower))
        return true;
    if (myBooleanValueFalse.contains(lower))
        return false;
    return defaultValue;
}

bool RKXMLParser::boolAttribute(const QDomElement& element, const QString& name, bool defaultValue)
{
    return booleanValue(lowerAttribute(element, name, QString()), defaultValue);
}

bool RKXMLParser::boolAttribute(const QDomNamedNodeMap& map, const QString& name, bool defaultValue)
{
    return booleanValue(lowerAttribute(map, name, QString()), defaultValue);
}

bool RKXMLParser::boolText(const QDomNode& parent, const QString& tagName, bool defaultValue)
{
    return booleanValue(text(parent, tagName, QString()), defaultValue);
}

// ---------------------------------------------------------------- colours

QColor RKXMLParser::readColor(const QString& text)
{
    if (text.isNull())
        return QColor();
    QColor color;
    color.setNamedColor(text);
    if (color.isValid())
        return color;
    return QColor::fromRgba(text.simplified().toUInt(nullptr, 10));
}

static QColor absentColor(const QColor& defaultValue)
{
    return defaultValue.isValid() ? defaultValue : QColor(Qt::transparent);
}

QColor RKXMLParser::colorAttribute(const QDomElement& element, const QString& name, const QColor& defaultValue)
{
    if (!element.hasAttribute(name))
        return absentColor(defaultValue);
    return readColor(element.attribute(name));
}

QColor RKXMLParser::colorAttribute(const QDomNamedNodeMap& map, const QString& name, const QColor& defaultValue)
{
    bool present;
    const QString value = mapValue(map, name, &present);
    if (!present)
        return absentColor(defaultValue);
    return readColor(value.trimmed());
}

QColor RKXMLParser::colorAttribute(const QDomNamedNodeMap& map, const QStringList& names, const QColor& defaultValue)
{
    for (const QString& name : names) {
        bool present;
        const QString value = mapValue(map, name, &present);
        if (present)
            return readColor(value.trimmed());
    }
    return absentColor(defaultValue);
}

QColor RKXMLParser::colorAttributeEx(const QDomElement& element, const QString& name, const QColor& defaultValue)
{
    return parseExtendedColor(attribute(element, name, QString(), false), defaultValue);
}

QColor RKXMLParser::colorAttributeEx(const QDomNamedNodeMap& map, const QString& name, const QColor& defaultValue)
{
    return parseExtendedColor(attribute(map, name, QString(), false), defaultValue);
}

QColor RKXMLParser::parseExtendedColor(const QString& text, const QColor& defaultValue)
{
    const QStringList pieces = text.split(QLatin1Char(','));
    if (!pieces.first().startsWith(QLatin1Char('#')))
        return defaultValue;
    QColor color;
    color.setNamedColor(pieces.first());
    if (pieces.size() > 1) {
        bool ok = false;
        const int alpha = pieces.at(1).toInt(&ok, 16);
        // An alpha outside 0..255 is not a colour component: it is ignored.
        if (ok && alpha >= 0 && alpha <= 255 && color.isValid())
            color.setAlpha(alpha);
    }
    return color;
}

// ---------------------------------------------------------------- dates

QDateTime RKXMLParser::dateTimeAttribute(const QDomElement& element, const QString& name, const QString& defaultValue)
{
    return QDateTime::fromString(attribute(element, name, defaultValue, true), dateTimeFormat());
}

QDateTime RKXMLParser::dateTimeAttribute(const QDomElement& element, const QString& name, Qt::DateFormat format,
    const QDateTime& defaultValue)
{
    if (!element.hasAttribute(name))
        return defaultValue;
    const QDateTime value = QDateTime::fromString(element.attribute(name), format);
    return value.isValid() ? value : defaultValue;
}

QDateTime RKXMLParser::dateTimeText(const QDomNode& parent, const QString& tagName, Qt::DateFormat format,
    const QDateTime& defaultValue)
{
    const QDateTime value = QDateTime::fromString(text(parent, tagName, QString()), format);
    return value.isValid() ? value : defaultValue;
}

// ---------------------------------------------------------------- geometry

QSize RKXMLParser::readSize(const QDomElement& element)
{
    return QSize(fastDecodeInt(element.attribute(myWidthName), nullptr), fastDecodeInt(element.attribute(myHeightName), nullptr));
}

QSize RKXMLParser::readSize(const QDomNamedNodeMap& map)
{
    return QSize(fastDecodeInt(attribute(map, myWidthName, QString(), false), nullptr),
        fastDecodeInt(attribute(map, myHeightName, QString(), false), nullptr));
}

QSizeF RKXMLParser::readSizeF(const QDomElement& element)
{
    return QSizeF(doubleAttribute(element, myWidthName, 0.0), doubleAttribute(element, myHeightName, 0.0));
}

QSizeF RKXMLParser::readSizeF(const QDomNamedNodeMap& map)
{
    return QSizeF(doubleAttribute(map, myWidthName, 0.0), doubleAttribute(map, myHeightName, 0.0));
}

QPointF RKXMLParser::readPointF(const QDomNamedNodeMap& map, const QString& xName, const QString& yName,
    double xDefault, double yDefault)
{
    return QPointF(doubleAttribute(map, xName, xDefault), doubleAttribute(map, yName, yDefault));
}

QRectF RKXMLParser::readRectF(const QDomNamedNodeMap& map, const QString& leftName, const QString& topName,
    const QString& widthName, const QString& heightName)
{
    return QRectF(doubleAttribute(map, leftName, 1.0), doubleAttribute(map, topName, 1.0),
        doubleAttribute(map, widthName, 1.0), doubleAttribute(map, heightName, 1.0));
}

namespace {

// The arithmetic of one axis: wrapping 32-bit integers, or doubles.
struct IntAxis {
    using T = int;
    static constexpr T failedStart = INT_MAX;
    static T sub(T a, T b) { return wrapSub(a, b); }
    static T half(T v) { return v / 2; }
    static T twice(T v) { return wrapTwice(v); }
};
struct RealAxis {
    using T = double;
    static constexpr T failedStart = DBL_MAX;
    static T sub(T a, T b) { return a - b; }
    static T half(T v) { return v * 0.5; }
    static T twice(T v) { return 2.0 * v; }
};

// Resolves start and length from the values present (null = missing), preferring
// start+end, start+length, end+length, centre+length, start+centre, end+centre.
template <class Axis, class T = typename Axis::T>
bool resolveSegment(const T* s, const T* c, const T* e, const T* l, T* start, T* length)
{
    if (s && e) {
        *start = *s;
        *length = Axis::sub(*e, *s);
    } else if (l && (s || e)) {
        *start = s ? *s : Axis::sub(*e, *l);
        *length = *l;
    } else if (c && l) {
        *start = Axis::sub(*c, Axis::half(*l));
        *length = *l;
    } else if (c && s) {
        *start = *s;
        *length = Axis::twice(Axis::sub(*c, *s));
    } else if (c && e) {
        *length = Axis::twice(Axis::sub(*e, *c));
        *start = Axis::sub(*e, *length);
    } else {
        *start = Axis::failedStart;
        *length = 0;
        return false;
    }
    return true;
}

}

bool RKXMLParser::readSegment(const QDomNamedNodeMap& map, const QStringList& startNames, const QStringList& centerNames,
    const QStringList& endNames, const QStringList& lengthNames, int* start, int* length)
{
    int values[4] = {0, 0, 0, 0};
    const QStringList* names[4] = {&startNames, &centerNames, &endNames, &lengthNames};
    const int* present[4];
    for (int i = 0; i < 4; ++i)
        present[i] = intAttribute(map, *names[i], &values[i]) ? &values[i] : nullptr;
    return resolveSegment<IntAxis>(present[0], present[1], present[2], present[3], start, length);
}

bool RKXMLParser::readSegmentF(const QDomNamedNodeMap& map, const QStringList& startNames, const QStringList& centerNames,
    const QStringList& endNames, const QStringList& lengthNames, double* start, double* length)
{
    // A missing value is recognised by reading with the largest double as default.
    double values[4];
    const QStringList* names[4] = {&startNames, &centerNames, &endNames, &lengthNames};
    const double* present[4];
    for (int i = 0; i < 4; ++i) {
        values[i] = doubleAttribute(map, *names[i], DBL_MAX);
        present[i] = values[i] != DBL_MAX ? &values[i] : nullptr;
    }
    return resolveSegment<RealAxis>(present[0], present[1], present[2], present[3], start, length);
}

namespace {

// Edges of a box read from integers are kept within this bound, so that the size always fits
// an int and Qt's own arithmetic on the rectangle (right edge, centre, translation by a
// like amount) stays defined.
constexpr qint64 edgeLimit = (qint64(1) << 30) - 1;

using Span = QPair<int, int>; // start, size (>= 0)

// The span from `start` over `length` (negative lengths flipped), each edge clamped into
// [-(2^30 - 1), 2^30 - 1]: 64-bit arithmetic, no overflow for any pair of ints.
Span clampedSpan(int start, int length)
{
    qint64 low = start;
    qint64 high = qint64(start) + length;
    if (high < low)
        std::swap(low, high);
    low = qBound(-edgeLimit, low, edgeLimit);
    high = qBound(-edgeLimit, high, edgeLimit);
    return Span(int(low), int(high - low));
}

}

QRect RKXMLParser::readRect(const QDomNamedNodeMap& map)
{
    int x, width, y, height;
    const bool horizontal = readSegment(map, myLeftNames, myCenterXNames, myRightNames, myWidthNames, &x, &width);
    const bool vertical = readSegment(map, myTopNames, myCenterYNames, myBottomNames, myHeightNames, &y, &height);
    if (!horizontal || !vertical)
        return QRect();
    const Span h = clampedSpan(x, width);
    const Span v = clampedSpan(y, height);
    return QRect(h.first, v.first, h.second, v.second);
}

QRectF RKXMLParser::readRectF(const QDomNamedNodeMap& map)
{
    double x, width, y, height;
    const bool horizontal = readSegmentF(map, myLeftNames, myCenterXNames, myRightNames, myWidthNames, &x, &width);
    const bool vertical = readSegmentF(map, myTopNames, myCenterYNames, myBottomNames, myHeightNames, &y, &height);
    if (!horizontal || !vertical)
        return QRectF();
    return QRectF(x, y, width, height).normalized();
}

RKDistance RKXMLParser::readDistance(const QDomElement& element, const QString& name, double defaultValue, const RKDistanceUnit& unit)
{
    return RKDistance(unit.units2Pixels(doubleAttribute(element, name, defaultValue)));
}

RKDistance RKXMLParser::readDistance(const QDomNamedNodeMap& map, const QString& name, double defaultValue, const RKDistanceUnit& unit)
{
    return RKDistance(unit.units2Pixels(doubleAttribute(map, name, defaultValue)));
}

RKDistance RKXMLParser::readDistance(const QDomNamedNodeMap& map, const QStringList& names, double defaultValue, const RKDistanceUnit& unit)
{
    return RKDistance(unit.units2Pixels(doubleAttribute(map, names, defaultValue)));
}

// ---------------------------------------------------------------- fonts and images

QFont RKXMLParser::readFont(const QDomElement& element)
{
    QFont font = RKSingleton<RKFontCreator>::instance().createDefaultFont();
    // "bold" is a yes/no switch: QFont::Bold (75) or QFont::Normal (50), nothing in between.
    font.setWeight(boolAttribute(element, QStringLiteral("bold"), false) ? QFont::Bold : QFont::Normal);
    font.setFamily(attribute(element, QStringLiteral("face"), RKFontCreator::defaultFontFamily(), true));
    font.setStyle(boolAttribute(element, QStringLiteral("italic"), false) ? QFont::StyleItalic : QFont::StyleNormal);
    int size = intAttribute(element, QStringLiteral("size"), 12);
    size = intAttribute(element, QStringLiteral("fontsize"), size);
    if (size >= 1)
        font.setPointSize(size);
    return font;
}

QImage RKXMLParser::readImage(const QDomElement& element)
{
    const QString text = element.text();
    if (text.isEmpty())
        return QImage();
    QImage image;
    if (!image.loadFromData(QByteArray::fromBase64(text.toLocal8Bit()), "PNG"))
        return QImage();
    const int format = fastDecodeInt(element.attribute(QStringLiteral("format")), nullptr);
    // Format_Invalid (0) and numbers Qt does not know give a null image rather than a bad conversion.
    if (format <= QImage::Format_Invalid || format >= QImage::NImageFormats)
        return QImage();
    return image.convertToFormat(static_cast<QImage::Format>(format));
}

// ---------------------------------------------------------------- tree walking

QDomElement RKXMLParser::findChildWithAttribute(const QDomNode& parent, const QString& attrName, const QString& value)
{
    for (QDomElement child = parent.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (child.hasAttribute(attrName) && child.attribute(attrName) == value)
            return child;
    }
    return QDomElement();
}

QDomElement RKXMLParser::nextElement(const QDomElement& element)
{
    const QDomElement child = element.firstChildElement();
    if (!child.isNull())
        return child;
    for (QDomNode node = element; !node.isNull(); node = node.parentNode()) {
        const QDomElement sibling = node.nextSiblingElement();
        if (!sibling.isNull())
            return sibling;
    }
    return QDomElement();
}
