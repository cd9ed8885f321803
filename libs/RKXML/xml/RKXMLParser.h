#pragma once

#include "RKIntRange.h"
#include "rkxml_export.h"

#include <RKDistance.h>
#include <RKDistanceUnit.h>

#include <QColor>
#include <QDateTime>
#include <QDomElement>
#include <QDomNamedNodeMap>
#include <QFont>
#include <QImage>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>
#include <QSizeF>
#include <QString>
#include <QStringList>

/**
 * Typed reading of DOM attributes and child texts, with the library's rules for
 * missing, empty, padded and malformed values. No function reports or throws:
 * each falls back to its default as documented. All functions are re-entrant.
 *
 * Most readers come in two flavours: on a QDomElement (presence tested with
 * hasAttribute) and on a QDomNamedNodeMap (absent means the named node is null).
 */
class RKXML_EXPORT RKXMLParser
{
public:
    // Name lists tried in order; the first name with a non-empty value wins.
    static const QStringList myLeftNames;
    static const QStringList myTopNames;
    static const QStringList myRightNames;
    static const QStringList myBottomNames;
    static const QStringList myCenterXNames;
    static const QStringList myCenterYNames;
    static const QStringList myWidthNames;
    static const QStringList myHeightNames;
    static const QStringList myBooleanValueTrue;
    static const QStringList myBooleanValueFalse;
    static const QString myWidthName;
    static const QString myHeightName;

    // Raw strings. A present but empty attribute yields "", not the default.
    static QString attribute(const QDomElement& element, const QString& name,
        const QString& defaultValue = QString(), bool trimmed = true);
    static QString attribute(const QDomNamedNodeMap& map, const QString& name,
        const QString& defaultValue = QString(), bool trimmed = true);
    /// The first of `names` whose value is non-empty (after trimming when asked), else the default.
    static QString attribute(const QDomNamedNodeMap& map, const QStringList& names,
        const QString& defaultValue = QString(), bool trimmed = true);
    /// Trimmed and lower-cased; the default is lower-cased too.
    static QString lowerAttribute(const QDomElement& element, const QString& name, const QString& defaultValue = QString());
    static QString lowerAttribute(const QDomNamedNodeMap& map, const QString& name, const QString& defaultValue = QString());
    static QString referenceID(const QDomElement& element, const QString& defaultValue = QString());
    /// Text of the first child element `tagName`; the default when it is missing or empty.
    static QString text(const QDomNode& parent, const QString& tagName, const QString& defaultValue = QString());
    /// text() of the child node named `childName` of `node`; the default when there is none.
    static QString text(const QDomNode& node, const QString& childName, const QString& tagName, const QString& defaultValue);

    // Integers.
    /**
     * Decimal integer with optional surrounding white space and one optional "-".
     * Digits accumulate in wrapping 32-bit arithmetic. Blank text gives 0 with success;
     * empty text, inner blanks or trailing garbage give 0 with failure. `ok` may be null.
     */
    static int fastDecodeInt(const QString& text, bool* ok = nullptr);
    /// Absent or blank gives the default; any other value is decoded ignoring failure ("abc" gives 0).
    static int intAttribute(const QDomElement& element, const QString& name, int defaultValue = 0);
    static int intAttribute(const QDomNamedNodeMap& map, const QString& name, int defaultValue = 0);
    static int intAttribute(const QDomNamedNodeMap& map, const QStringList& names, int defaultValue);
    /// Writes the first non-blank value to `*out` and returns true; false (out untouched) when none.
    static bool intAttribute(const QDomNamedNodeMap& map, const QStringList& names, int* out);
    /// The element's text decoded; the default when it does not decode.
    static int intValue(const QDomElement& element, int defaultValue = 0);
    static int intText(const QDomNode& parent, const QString& tagName, int defaultValue = 0);
    static RKIntRange intRange(const QDomElement& element, const QString& lowerName, const QString& upperName,
        int lowerDefault = 0, int upperDefault = 0);

    // Floating point.
    /// C-locale number; else with "," as decimal point; else with letters and "_" removed; else 0.
    static double safeDouble(const QString& text);
    static QString normalizeDecimalPoint(const QString& text);
    static double doubleAttribute(const QDomElement& element, const QString& name, double defaultValue = 0.0);
    static double doubleAttribute(const QDomNamedNodeMap& map, const QString& name, double defaultValue = 0.0);
    static double doubleAttribute(const QDomNamedNodeMap& map, const QStringList& names, double defaultValue = 0.0);
    static double doubleText(const QDomNode& parent, const QString& tagName, double defaultValue = 0.0);
    /// Degrees rounded (halves upward) into 1..360 for negatives, 0..359 otherwise (-360 gives 360).
    static int readAngle(const QDomElement& element, const QString& name, int defaultValue = 0);
    static int readAngle(const QDomNamedNodeMap& map, const QString& name, int defaultValue = 0);

    // Booleans ("1 yes true on enabled" / "0 no false off disabled", case-insensitive).
    /// Lower-cased but not trimmed.
    static bool booleanValue(const QString& text, bool defaultValue);
    static bool boolAttribute(const QDomElement& element, const QString& name, bool defaultValue = false);
    static bool boolAttribute(const QDomNamedNodeMap& map, const QString& name, bool defaultValue = false);
    static bool boolText(const QDomNode& parent, const QString& tagName, bool defaultValue = false);

    // Colours.
    /// Named or "#" colour; else the simplified text as a decimal ARGB value ("foo" is transparent black).
    /// A null string gives an invalid colour.
    static QColor readColor(const QString& text);
    /// Absent: the default when valid, else transparent.
    static QColor colorAttribute(const QDomElement& element, const QString& name, const QColor& defaultValue = QColor());
    static QColor colorAttribute(const QDomNamedNodeMap& map, const QString& name, const QColor& defaultValue = QColor());
    static QColor colorAttribute(const QDomNamedNodeMap& map, const QStringList& names, const QColor& defaultValue = QColor());
    static QColor colorAttributeEx(const QDomElement& element, const QString& name, const QColor& defaultValue = QColor());
    static QColor colorAttributeEx(const QDomNamedNodeMap& map, const QString& name, const QColor& defaultValue = QColor());
    /**
     * Splits at ",": a first part starting with "#" goes to QColor's named-colour parser, which
     * takes "#rgb", "#rrggbb", "#aarrggbb" and the 12- and 16-bit forms ("#rrrgggbbb",
     * "#rrrrggggbbbb") and gives an invalid colour for anything else ("#zzzzzz"). A second
     * part that reads as a hexadecimal number 0..ff replaces the alpha ("#ff0000,80"). A first
     * part without "#" gives the default.
     */
    static QColor parseExtendedColor(const QString& text, const QColor& defaultValue = QColor());

    // Dates.
    /// Parsed with "yyyyMMddHHmm"; may be invalid.
    static QDateTime dateTimeAttribute(const QDomElement& element, const QString& name, const QString& defaultValue = QString());
    static QDateTime dateTimeAttribute(const QDomElement& element, const QString& name, Qt::DateFormat format,
        const QDateTime& defaultValue = QDateTime());
    static QDateTime dateTimeText(const QDomNode& parent, const QString& tagName, Qt::DateFormat format,
        const QDateTime& defaultValue = QDateTime());

    // Geometry.
    /// "width" and "height" as integers; absent or bad values give 0.
    static QSize readSize(const QDomElement& element);
    static QSize readSize(const QDomNamedNodeMap& map);
    static QSizeF readSizeF(const QDomElement& element);
    static QSizeF readSizeF(const QDomNamedNodeMap& map);
    static QPointF readPointF(const QDomNamedNodeMap& map, const QString& xName, const QString& yName,
        double xDefault = 0.0, double yDefault = 0.0);
    /// Four values, each defaulting to 1.0; not normalised.
    static QRectF readRectF(const QDomNamedNodeMap& map, const QString& leftName, const QString& topName,
        const QString& widthName, const QString& heightName);
    /**
     * One axis of a box from any two of start, centre, end and length, preferring
     * start+end, start+length, end+length, centre+length, start+centre, end+centre.
     * Failure sets start to INT_MAX and length to 0.
     */
    static bool readSegment(const QDomNamedNodeMap& map, const QStringList& startNames, const QStringList& centerNames,
        const QStringList& endNames, const QStringList& lengthNames, int* start, int* length);
    static bool readSegmentF(const QDomNamedNodeMap& map, const QStringList& startNames, const QStringList& centerNames,
        const QStringList& endNames, const QStringList& lengthNames, double* start, double* length);
    /**
     * Normalised box from left/x/centerX/right/width and top/y/centerY/bottom/height; a null
     * QRect on failure. Edges are computed without overflow and clamped into ±(2^30 - 1),
     * so absurd values give a (possibly empty) box at that bound: left 2147483647 with width 3
     * is the empty box at x 1073741823.
     */
    static QRect readRect(const QDomNamedNodeMap& map);
    static QRectF readRectF(const QDomNamedNodeMap& map);
    /// The value (and its default) in `unit`, converted to internal units.
    static RKDistance readDistance(const QDomElement& element, const QString& name, double defaultValue, const RKDistanceUnit& unit);
    static RKDistance readDistance(const QDomNamedNodeMap& map, const QString& name, double defaultValue, const RKDistanceUnit& unit);
    static RKDistance readDistance(const QDomNamedNodeMap& map, const QStringList& names, double defaultValue, const RKDistanceUnit& unit);

    // Fonts and images.
    /// "bold", "face", "italic", "size"/"fontsize" over the default font.
    static QFont readFont(const QDomElement& element);
    /// Base64 PNG text converted to the QImage::Format numbered by "format"; null on any failure.
    static QImage readImage(const QDomElement& element);

    // Tree walking.
    static QDomElement findChildWithAttribute(const QDomNode& parent, const QString& attrName, const QString& value);
    /// Next element in document order (depth first); not bounded by any subtree; null after the last.
    static QDomElement nextElement(const QDomElement& element);
};
