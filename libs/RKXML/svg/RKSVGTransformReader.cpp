#include "RKSVGTransformReader.h"

#include <QtMath>

#include <cmath>

namespace {
const QString STR_TRANSFORM = QStringLiteral("transform");
const double DEGREES_TO_RADIANS = 0.017453292519943295;

bool isWhiteSpace(QChar c)
{
    switch (c.unicode()) {
    case 32: case 9: case 10: case 13: case 133: case 160:
        return true;
    default:
        return false;
    }
}

bool isDigit(QChar c)
{
    return c.unicode() >= '0' && c.unicode() <= '9';
}

void skipWhiteSpace(const QChar*& position, const QChar* end)
{
    while (position < end && isWhiteSpace(*position))
        ++position;
}

// One SVG number (sign, digits with an optional decimal point, optional exponent)
// at `position`. On success `position` is moved behind it; otherwise it stays.
bool readNumber(const QChar*& position, const QChar* end, double* value)
{
    const QChar* p = position;
    QByteArray text;
    if (p < end && (*p == QLatin1Char('+') || *p == QLatin1Char('-')))
        text += char((p++)->unicode());
    int digits = 0;
    while (p < end && isDigit(*p)) {
        text += char((p++)->unicode());
        ++digits;
    }
    if (p < end && *p == QLatin1Char('.')) {
        text += '.';
        ++p;
        while (p < end && isDigit(*p)) {
            text += char((p++)->unicode());
            ++digits;
        }
    }
    if (digits == 0)
        return false;
    // An exponent counts only when digits follow it; "1e" ends the number before the "e".
    if (p < end && (*p == QLatin1Char('e') || *p == QLatin1Char('E'))) {
        const QChar* q = p + 1;
        QByteArray exponent("e");
        if (q < end && (*q == QLatin1Char('+') || *q == QLatin1Char('-')))
            exponent += char((q++)->unicode());
        if (q < end && isDigit(*q)) {
            while (q < end && isDigit(*q))
                exponent += char((q++)->unicode());
            text += exponent;
            p = q;
        }
    }
    // QByteArray::toDouble reads in the C locale whatever the process locale is.
    bool ok = false;
    *value = text.toDouble(&ok);
    if (!ok)
        return false;
    position = p;
    return true;
}

bool startsNumber(QChar c)
{
    return isDigit(c) || c == QLatin1Char('+') || c == QLatin1Char('-') || c == QLatin1Char('.');
}

enum class Function { Matrix, Translate, Scale, Rotate, SkewX, SkewY };

struct FunctionName
{
    QLatin1String name;
    Function function;
    int minimum;
    int maximum;
};

// Names and the counts of numbers each function takes (rotate: 1 or 3, checked below).
const FunctionName FUNCTIONS[] = {
    { QLatin1String("matrix"), Function::Matrix, 6, 6 },
    { QLatin1String("translate"), Function::Translate, 1, 2 },
    { QLatin1String("scale"), Function::Scale, 1, 2 },
    { QLatin1String("rotate"), Function::Rotate, 1, 3 },
    { QLatin1String("skewX"), Function::SkewX, 1, 1 },
    { QLatin1String("skewY"), Function::SkewY, 1, 1 },
};

const FunctionName* readFunctionName(const QChar*& position, const QChar* end)
{
    for (const FunctionName& candidate : FUNCTIONS) {
        const int length = candidate.name.size();
        if (end - position >= length && QStringView(position, length) == candidate.name) {
            position += length;
            return &candidate;
        }
    }
    return nullptr;
}

bool isFinite(const QTransform& t)
{
    return std::isfinite(t.m11()) && std::isfinite(t.m12()) && std::isfinite(t.m13()) && std::isfinite(t.m21())
        && std::isfinite(t.m22()) && std::isfinite(t.m23()) && std::isfinite(t.m31()) && std::isfinite(t.m32())
        && std::isfinite(t.m33());
}

void apply(QTransform& transform, Function function, const RKSVGTransformReader::Numbers& n)
{
    switch (function) {
    case Function::Matrix:
        transform = QTransform(n[0], n[1], n[2], n[3], n[4], n[5]) * transform;
        break;
    case Function::Translate:
        transform.translate(n[0], n.size() > 1 ? n[1] : 0.0);
        break;
    case Function::Scale:
        transform.scale(n[0], n.size() > 1 ? n[1] : n[0]);
        break;
    case Function::Rotate:
        if (n.size() == 3) {
            transform.translate(n[1], n[2]);
            transform.rotate(n[0]);
            transform.translate(-n[1], -n[2]);
        } else {
            transform.rotate(n[0]);
        }
        break;
    case Function::SkewX:
        transform.shear(std::tan(n[0] * DEGREES_TO_RADIANS), 0.0);
        break;
    case Function::SkewY:
        transform.shear(0.0, std::tan(n[0] * DEGREES_TO_RADIANS));
        break;
    }
}
}

QTransform RKSVGTransformReader::transformMatrix(const QDomElement& element)
{
    QTransform result;
    for (QDomElement node = element; !node.isNull(); node = node.parentNode().toElement()) {
        if (node.hasAttribute(STR_TRANSFORM))
            result = result * parseTransformationMatrix(node.attribute(STR_TRANSFORM));
        if (!isFinite(result))
            return QTransform();
    }
    return result;
}

bool RKSVGTransformReader::parseNumbersArray(const QChar*& position, const QChar* end, Numbers& numbers)
{
    skipWhiteSpace(position, end);
    double value = 0.0;
    while (readNumber(position, end, &value)) {
        if (!std::isfinite(value))
            return false;
        numbers.append(value);
        const QChar* afterNumber = position;
        skipWhiteSpace(position, end);
        if (position < end && *position == QLatin1Char(',')) {
            ++position;
            skipWhiteSpace(position, end);
            if (position == end || !startsNumber(*position))
                return false;
        } else if (position == end || !startsNumber(*position)) {
            // The list ends here; white space before the caller's next character is its business.
            position = afterNumber;
            return true;
        }
    }
    return true;
}

QTransform RKSVGTransformReader::parseTransformationMatrix(const QString& text)
{
    QTransform transform;
    const QChar* position = text.constData();
    const QChar* const end = position + text.size();
    skipWhiteSpace(position, end);
    while (position < end) {
        const FunctionName* function = readFunctionName(position, end);
        if (!function)
            return QTransform();
        skipWhiteSpace(position, end);
        if (position == end || *position != QLatin1Char('('))
            return QTransform();
        ++position;
        Numbers numbers;
        if (!parseNumbersArray(position, end, numbers))
            return QTransform();
        skipWhiteSpace(position, end);
        if (position == end || *position != QLatin1Char(')'))
            return QTransform();
        ++position;
        const int count = numbers.size();
        if (count < function->minimum || count > function->maximum || (function->function == Function::Rotate && count == 2))
            return QTransform();
        apply(transform, function->function, numbers);
        // Finite numbers can still multiply beyond the range of a double.
        if (!isFinite(transform))
            return QTransform();
        // Between functions any run of commas and white space (also none); after the last only white space.
        bool comma = false;
        while (position < end && (isWhiteSpace(*position) || *position == QLatin1Char(','))) {
            comma = comma || *position == QLatin1Char(',');
            ++position;
        }
        if (position == end && comma)
            return QTransform();
    }
    return transform;
}
