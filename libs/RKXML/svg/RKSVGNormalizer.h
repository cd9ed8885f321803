#pragma once

#include "rkxml_export.h"

#include <QDir>
#include <QDomDocument>
#include <QDomElement>
#include <QDomNode>
#include <QFileInfo>
#include <QHash>
#include <QString>
#include <QStringList>

/**
 * Rewrites clip-art SVG into the shape the rest of the library expects:
 * absolute file references, no comments, "use" expanded, layer groups
 * ("vako:layertype") at the top level carrying their inherited transforms,
 * calendar-embedded content in its own group chain, neighbouring plain render
 * layers merged, and an optional logo put in.
 *
 * Every step is static and also callable alone. DOM nodes share their data, so a
 * step that takes a node or document changes the document it belongs to. A
 * document whose document element is not "svg" is left as it is by every step.
 * Nothing is reported: missing elements and attributes make a step do nothing.
 * Re-entrant: distinct documents may be processed on different threads.
 */
class RKXML_EXPORT RKSVGNormalizer
{
public:
    static const QString STR_XLINK_HREF;
    static const QString STR_CLASS;
    static const QString STR_FILL_RULE;
    static const QString STR_SVG;
    static const QString STR_G;
    static const QString STR_TRANSFORM;
    static const QString STR_VAKO_LAYERTYPE;
    static const QString STR_VAKO_MERGED;
    static const QString STR_RENDER;
    static const QString STR_MARK_CAL_EMBED;
    static const QString STR_TRUE;
    static const QString STR_MARK_TEXT_AREA;
    static const QString STR_USE;
    static const QString STR_HASH;
    static const QString STR_TEXT;
    static const QString STR_HOLIDAY;
    static const QString STR_HOLIDAYS;
    static const QString STR_FILL;
    static const QString STR_STYLE_FILL;
    static const QString STR_STROKE;
    static const QString STR_STYLE;
    static const QString STR_PATH;
    static const QString STR_D;
    static const QString STR_CLOSEPATH;
    static const QString STR_COLOR_BLACK;
    static const QChar KOMMA;
    static const QStringList myClosedShapeGraphicsElements;

    /**
     * The whole pipeline on a deep copy of `document` (the argument is not changed);
     * `file` is where the document was read from (for relative references), `logo`
     * may be null (no logo is put in). Costs about two copies of the tree.
     */
    static QDomDocument prepareDomDocument(const QDomDocument& document, const QFileInfo& file, const QDomDocument& logo);

    /// "xlink:href" made absolute against `directory`, except local references of "use" and
    /// embedded content ("data:" and other URLs); drops "fill-rule" of elements with a "class".
    static void makeAbsoluteHRefs(QDomNode node, const QDir& directory);
    /// Removes comments and white-space-only text nodes below `element`.
    static void removeComments(QDomElement element);
    /// Expands "use" inside top-level groups from the groups of the first "defs", then removes that "defs".
    static void expandUseTags(QDomDocument& document);
    static void expandUse(QDomElement& element, const QHash<QString, QDomElement>& groups);
    /// Lifts each outermost layer out of its plain "g" ancestors, folding their transforms into its own.
    static void removeGsWithoutLayerType(QDomNode node);
    /// A new document: the prolog, the "svg" element, its content with calendar-embedded elements split out.
    static QDomDocument normalize(const QDomDocument& document);
    /// Copies the children of `sourceNode` below `targetNode`; returns the parent of the node under which
    /// copying ended (a calendar-embedded child starts a fresh chain of copies).
    static QDomNode descendRecursive(const QDomDocument& sourceDocument, QDomDocument& targetDocument,
        const QDomNode& sourceNode, QDomNode targetNode);
    /// Removes elements named in `names` (case-sensitive) that have no child nodes, innermost first.
    static void removeElementsWithoutChilds(QDomNode node, const QStringList& names);
    /// Wraps each run of two or more neighbouring mergeable top-level render layers in one render layer.
    static void mergeLayertypeRenderWithNoCalEmbed(QDomDocument& document);
    /// A "g" with "vako:layertype" "render", not marked calendar-embedded, without a "vako:textarea".
    static bool isMergableLayertype(QDomElement& element);
    /**
     * Puts `logo` (null: `document` is returned unchanged) into every "vako:logo" place: a new
     * render layer at the end of the document element with a background "rect" (class
     * "logo_background") and the logo's content in a group of class "logo_foreground", scaled
     * uniformly to fit the place and centred in it.
     */
    static QDomDocument replaceLogo(QDomDocument document, const QDomDocument& logo);

    /// Gives closed shapes below `node` without a fill of their own (or of an ancestor) "fill"="#000000".
    static void setDefaultFillAttribute(QDomNode& node);
    /// A non-empty "fill", or "fill:" in "style" (any case).
    static bool hasFillInstruction(const QDomElement& element);
    static void setFillInstruction(QDomElement& element);
    /// "ellipse", "circle", "polygon", "rect", or a "path" whose "d" closes ("z" or "Z").
    static bool isClosedShapeGraphicsElement(const QDomElement& element);
    /// The node or a descendant is a "text" of class "holiday" or "holidays".
    static bool hasHolidayClasses(const QDomNode& node);
    /// If `source` has `sourceName`, `target` gets its value as `targetName`.
    static void copyAttribute(const QDomElement& source, const QString& sourceName, QDomElement& target,
        const QString& targetName);
    /// Sets `name` to `value` unless `value` is empty or the element already has a non-empty `name`.
    static void maybeSetAttribute(QDomElement& element, const QString& name, const QString& value);
};
