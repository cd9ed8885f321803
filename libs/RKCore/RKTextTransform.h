#pragma once

#include "rkcore_export.h"

#include <QDomElement>
#include <QString>

/**
 * The CSS text transformation of an SVG text element: "uppercase",
 * "lowercase", "capitalize" or "none". A cheap value; re-entrant.
 */
class RKCORE_EXPORT RKTextTransform
{
public:
    enum Mode { None, Uppercase, Lowercase, Capitalize };

    RKTextTransform(Mode mode = None) : myMode(mode) {}

    /**
     * The transformation that `element` asks for: the property "text-transform"
     * of its "style" attribute, else its attribute "text-transform" (the style
     * wins, as in CSS). Values are trimmed and matched in any case; a missing or
     * unknown value, and a null element, give None. Ancestors are not consulted.
     */
    static RKTextTransform parse(const QDomElement& element);
    /// The mode of one value text ("Uppercase ", "none", ...); unknown text gives None.
    static Mode modeOf(const QString& value);

    Mode mode() const { return myMode; }
    bool operator==(const RKTextTransform& other) const { return myMode == other.myMode; }
    bool operator!=(const RKTextTransform& other) const { return myMode != other.myMode; }

    /**
     * `text` transformed with full Unicode case mapping ("ß" upper-cases to "SS").
     * Capitalize upper-cases the first letter or digit of every word (words are
     * separated by white space; leading punctuation such as "(" is skipped) and
     * leaves the other characters alone.
     */
    QString apply(const QString& text) const;

private:
    Mode myMode;
};
