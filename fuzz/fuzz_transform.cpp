// Transform lists from the input. The reader never gives a matrix that is not finite or not
// affine; a list it accepts, written as matrix(...) and read back, gives the same matrix;
// white space around a list changes nothing; two accepted lists in a row give the product of
// their matrices; nested elements accumulate the product; Qt's SVG renderer computes the same
// matrix for an accepted list (with numbers Qt reads alike). The number-list reader never leaves the text.
#include "FuzzSupport.h"

#include <RKSVGTransformReader.h>

#include <QSvgRenderer>

#include <cmath>
#include <limits>

namespace {

QTransform parse(const QString& text)
{
    return RKSVGTransformReader::parseTransformationMatrix(text);
}

QString written(const QTransform& t)
{
    QStringList numbers;
    for (double v : { t.m11(), t.m12(), t.m21(), t.m22(), t.dx(), t.dy() })
        numbers << QString::number(v, 'g', 17);
    return QStringLiteral("matrix(%1)").arg(numbers.join(QLatin1Char(' ')));
}

void checkNumbersArray(const QString& text)
{
    const QChar* const begin = text.constData();
    const QChar* const end = begin + text.size();
    for (int start : { 0, 1, text.size() / 2, text.size() - 1 }) {
        if (start < 0 || start > text.size())
            continue;
        const QChar* position = begin + start;
        RKSVGTransformReader::Numbers numbers;
        RKSVGTransformReader::parseNumbersArray(position, end, numbers);
        fuzz::require(position >= begin + start && position <= end);
        for (double v : numbers)
            fuzz::require(std::isfinite(v));
    }
}

// A bound on how far rounding can take a product of the list's functions from the exact one,
// relative to 1e-9: each factor's largest entry, times 3 for the sums of a 3x3 product, over all
// factors. Partial products can grow far beyond the final matrix (a scale by 0 later removes
// what they grew), so the final magnitudes alone do not bound the error. Infinite when a
// piece does not read alone.
double roundingScale(const QString& text)
{
    double bound = 1.0;
    int from = 0;
    for (int close = text.indexOf(QLatin1Char(')')); close >= 0; close = text.indexOf(QLatin1Char(')'), from)) {
        const QString piece = text.mid(from, close + 1 - from);
        from = close + 1;
        if (!fuzz::acceptedTransform(piece))
            return std::numeric_limits<double>::infinity();
        bound *= 3.0 * fuzz::magnitude(parse(piece));
    }
    return bound;
}

void compareWithRenderer(const QString& text, const QTransform& matrix)
{
    QDomDocument document;
    QDomElement svg = document.createElement(QStringLiteral("svg"));
    svg.setAttribute(QStringLiteral("xmlns"), QStringLiteral("http://www.w3.org/2000/svg"));
    svg.setAttribute(QStringLiteral("width"), 10);
    svg.setAttribute(QStringLiteral("height"), 10);
    document.appendChild(svg);
    QDomElement group = document.createElement(QStringLiteral("g"));
    group.setAttribute(QStringLiteral("transform"), text);
    svg.appendChild(group);
    QDomElement rect = document.createElement(QStringLiteral("rect"));
    rect.setAttribute(QStringLiteral("id"), QStringLiteral("r"));
    rect.setAttribute(QStringLiteral("width"), 1);
    rect.setAttribute(QStringLiteral("height"), 1);
    group.appendChild(rect);
    QSvgRenderer renderer(document.toByteArray(-1));
    if (!renderer.isValid() || !renderer.elementExists(QStringLiteral("r")))
        return;
    const QTransform theirs = renderer.transformForElement(QStringLiteral("r"));
    if (fuzz::isFinite(theirs))
        fuzz::require(fuzz::nearlyEqual(theirs, matrix, fuzz::magnitude(matrix)));
}

}

FUZZ_PLAIN_INITIALIZE

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = QString::fromUtf8(fuzz::bytes(data, size));
    checkNumbersArray(text);

    const QTransform matrix = parse(text);
    fuzz::require(fuzz::isFinite(matrix));
    fuzz::require(matrix.m13() == 0.0 && matrix.m23() == 0.0 && matrix.m33() == 1.0);
    if (!fuzz::acceptedTransform(text))
        return 0;

    fuzz::require(fuzz::nearlyEqual(parse(written(matrix)), matrix, fuzz::magnitude(matrix), 1e-15));
    const QString padded = QStringLiteral(" \t\n") + text + QStringLiteral("\r ") + QChar(160) + QChar(133);
    fuzz::require(parse(padded) == matrix);

    // Split after each of the first closing parentheses: two accepted halves make the whole.
    int from = 0;
    for (int i = 0; i < 4; ++i) {
        const int close = text.indexOf(QLatin1Char(')'), from);
        if (close < 0)
            break;
        from = close + 1;
        const QString first = text.left(from);
        const QString second = text.mid(from);
        if (second.trimmed().isEmpty() || !fuzz::acceptedTransform(first) || !fuzz::acceptedTransform(second))
            continue;
        const QTransform a = parse(first);
        const QTransform b = parse(second);
        const double scale = std::max(1.0 + 4.0 * fuzz::magnitude(a) * fuzz::magnitude(b), roundingScale(text));
        if (std::isfinite(scale))
            fuzz::require(fuzz::nearlyEqual(matrix, b * a, scale));
    }

    // The same list on an element and two ancestors.
    QDomDocument document;
    QDomElement outer = document.createElement(QStringLiteral("g"));
    document.appendChild(outer);
    QDomElement inner = document.createElement(QStringLiteral("g"));
    outer.appendChild(inner);
    QDomElement leaf = document.createElement(QStringLiteral("rect"));
    inner.appendChild(leaf);
    for (QDomElement* element : { &outer, &inner, &leaf })
        element->setAttribute(QStringLiteral("transform"), text);
    const QTransform nested = RKSVGTransformReader::transformMatrix(leaf);
    fuzz::require(fuzz::isFinite(nested));
    const double m = fuzz::magnitude(matrix);
    const QTransform cube = matrix * matrix * matrix;
    if (fuzz::isFinite(cube))
        fuzz::require(fuzz::nearlyEqual(nested, cube, 1.0 + 16.0 * m * m * m));

    if (fuzz::qtReadsAlike(text))
        compareWithRenderer(text, matrix);
    return 0;
}
