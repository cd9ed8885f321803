#pragma once

#include "rkxml_export.h"

#include <QColor>
#include <QDomDocument>
#include <QDomElement>
#include <QHash>
#include <QMap>
#include <QRegularExpression>
#include <QString>
#include <QVector>

class QDebug;

/**
 * A table from source colour (ARGB key) to target colour, collected from an SVG
 * document, edited by the application, saved in project XML and applied to SVG
 * documents. Every walk goes in ascending ARGB order.
 *
 * Only six-digit "#rrggbb" colours are found and replaced, in the attributes
 * "fill" and "stroke" and, inside "style", in the properties "fill", "stroke",
 * "color" (what "currentColor" means) and every "*-color" (property names in
 * any case); colour keywords and three-digit forms are left alone. extract()
 * and apply() look at exactly these places. Within one value, the first entry
 * (in key order) whose source occurs there is replaced, every occurrence of it.
 * A rewritten style keeps its declaration order, each as "property:value",
 * joined with ";". A value type; const functions are re-entrant.
 */
class RKXML_EXPORT RKColorReplacementInstructions
{
public:
    static const QRegularExpression myColorCatcherRegExp;
    static const QString GROUP_NODE_NAME;
    static const QString ITEM_NODE_NAME;
    static const QString SOURCE_ATTRIBUTE_NAME;
    static const QString TARGET_ATTRIBUTE_NAME;

    RKColorReplacementInstructions() = default;
    virtual ~RKColorReplacementInstructions() = default;

    /// Adds every colour of the document, each mapped to itself.
    void extract(const QDomDocument& document);
    /// Replaces colours in the document; a target with alpha below 255 also sets "<name>-opacity".
    void apply(QDomDocument& document) const;

    /// Entries as "color" children ("source", "target") of `parent`, or of a new "colors" child.
    void toXML(QDomElement& parent, bool withGroup) const;
    /// Reads the first "colors" child of `element`, or `element` itself; entries with a missing
    /// or invalid colour are skipped.
    static RKColorReplacementInstructions fromXML(const QDomElement& element);

    /// Some entry's target differs from its source.
    bool containsReplacements() const;
    /**
     * Equal tables match. Otherwise an empty table matches a table that changes nothing, and
     * a table that changes nothing matches an empty one; two different unedited tables do not
     * match. Deliberately not symmetric in every case.
     */
    bool matches(const RKColorReplacementInstructions& other) const;

    /// Adds or replaces an entry when both colours are valid; the target is kept at 8 bits per channel.
    void insert(const QColor& source, const QColor& target);
    QMap<quint32, QColor> replacements() const { return myReplacements; }
    int size() const { return myReplacements.size(); }

    /// Splits "a:b;c:d" into property → value (trimmed); declarations without ":" are dropped.
    QHash<QString, QString> disAssembleStyle(const QString& style) const;

private:
    struct RuleSet;
    RuleSet rules() const;

    void extractRecursively(const QDomElement& element);
    void extractAttribute(const QDomElement& element, const QString& name);
    static void replaceColors(QDomElement* element, const RuleSet& rules);
    static void replaceColorInAttribute(QDomElement* element, const QString& name, const RuleSet& rules);
    static void replaceColorsInStyleAttribute(QDomElement* element, const RuleSet& rules);

    QMap<quint32, QColor> myReplacements;
};

RKXML_EXPORT QDebug operator<<(QDebug debug, const RKColorReplacementInstructions& instructions);
