#pragma once

#include "rkxml_export.h"

#include <QDomElement>
#include <QString>
#include <QTransform>
#include <QVarLengthArray>

/**
 * Reads SVG "transform" attributes into QTransform (row-vector convention, so
 * that `a * b` applies `a` first). All functions are static and re-entrant.
 *
 * A transform list is read by the SVG 1.1 rules: the functions matrix,
 * translate, scale, rotate, skewX and skewY with their number lists, separated
 * by commas and white space (blank, tab, line feed, carriage return and the
 * codes 133 and 160). A missing second number of translate is 0, of scale the
 * first. A list in error (an unknown function, a wrong count of numbers, a
 * missing parenthesis, a number that is not finite, trailing garbage, or
 * finite numbers whose product is not) is ignored as a whole: the result is
 * the identity.
 */
class RKXML_EXPORT RKSVGTransformReader
{
public:
    using Numbers = QVarLengthArray<double, 8>;

    /**
     * The accumulated transform of `element`: its own "transform" first, then
     * each ancestor's out to the document element. A null element gives the identity,
     * and so does a chain whose product overflows.
     */
    static QTransform transformMatrix(const QDomElement& element);

    /// One transform list; the identity when it is empty or in error.
    static QTransform parseTransformationMatrix(const QString& text);

    /**
     * Reads a list of numbers separated by commas and/or white space, starting
     * at `position` (leading white space is skipped) and stopping before the
     * first character that cannot continue the list; `position` is left there,
     * never beyond `end`. Returns false (numbers read so far kept) when a
     * separating comma is not followed by a number or a number is not finite.
     */
    static bool parseNumbersArray(const QChar*& position, const QChar* end, Numbers& numbers);
};
