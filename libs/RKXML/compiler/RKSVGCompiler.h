#pragma once

#include "RKColorReplacementInstructions.h"
#include "RKSVGCompilerInstructions.h"
#include "rkxml_export.h"

#include <QByteArray>
#include <QDomDocument>
#include <QDomElement>
#include <QList>
#include <QMap>
#include <QString>

/**
 * Turns an SVG template into a finished page. Each setter schedules its pass
 * (a "to-do"); update() runs the pending passes in a fixed order and clears
 * them: instructions (then image fitting and removal of "_empty" elements),
 * the current style sheet, colour replacements (never in a spot-colour-only
 * compile), inherited attributes, the spot-colour mask, dropping spot-colour
 * elements, and always, last, the hit rectangles of the day cells.
 * One compiler is used by one thread at a time; the caches it asks lock themselves.
 *
 * Hit rectangles (appendChildMarker): every element whose "id" starts with
 * "Day_" gets a last child rect "child_<id>" with "fill" = "none" that bounds
 * the cell's own geometry: the element itself and its descendant "text",
 * "rect" and "image" elements (x, y, width, height; sides below 1 count as 1)
 * and "line" elements (x1, y1, x2, y2), with these exceptions:
 * - a "line" whose own stroke (attribute or style) is "none" paints nothing
 *   and does not count;
 * - a holiday-name slot (its "vako:cal" key holds "_holiday") counts only
 *   while it shows a holiday: it holds text, or its class is "other_event".
 *   Empty slots are often parked outside the cell and must not widen it.
 * - a part whose numbers are not finite ("inf", "nan") does not count.
 * A marker from an earlier update is replaced, not doubled; a cell without
 * any such geometry gets no marker. A marker wider or higher than the number
 * range gets the largest finite side.
 *
 * Spot-colour mask (extractSpotColorMask, to-do 3): the page becomes the mask
 * a print shop needs for a refinement (foil, varnish): black where the spot
 * colour goes, nothing elsewhere; the mask is read over white paper.
 * - Refined elements ("vako:applyRefinement" is true, trimmed and in any case,
 *   or "vako:refinement" names a known spot colour) stay with their whole
 *   subtree, painted black (paintAllBlack).
 * - Knock-outs ("vako:refinement" = "remove", also inside refined elements)
 *   stay, painted white, with "comp-op" = "src-out", so that they cut the
 *   refinement beneath them away (applyRemoveSpotColorInstruction).
 * - "defs" and "metadata" stay untouched: clip paths, symbols and gradients
 *   that refined elements use keep working.
 * - "style" elements stay with their sheet's paints rewritten like a style
 *   attribute (below), so a class that paints a refined element gives black
 *   and a class that says "none" still paints nothing.
 * - Any other element is removed, unless it holds something that stays; then it
 *   stays as a bare container: its own text nodes are removed and its paints
 *   become black (refined elements inherit them).
 * Painting (paintItBlack, and white for knock-outs): "fill" and "stroke"
 * attributes, and the properties "fill", "stroke", "disabled-fill" and
 * "disabled-stroke" in "style" attributes and sheets, that are present and not
 * "none" get the colour; "opacity", "fill-opacity" and "stroke-opacity" become
 * 1 (a refinement is all or nothing). "stroke-width" and the other properties
 * stay, so lines keep their weight in the mask.
 */
class RKXML_EXPORT RKSVGCompiler
{
public:
    enum CompilerToDo {
        ToDoApplyInstructions = 0,
        ToDoInsertCss = 1,
        ToDoReplaceColors = 2,
        ToDoSpotColorOnly = 3,
        ToDoDropSpotColor = 4,
        ToDoCalendarContent = 5, ///< no pass; stored and cleared like the others
        ToDoInheritAttributes = 6,
    };

    RKSVGCompiler();
    virtual ~RKSVGCompiler();

    /// The document to compile: a deep copy when `copy`, else `document` itself is edited.
    /// Schedules the instructions again when a set is present.
    void setDomDocument(const QDomDocument& document, bool copy = true);
    void setInstructions(const RKSVGCompilerInstructions& instructions);
    /// Path (key) of the page's style sheet; schedules the style sheet.
    void setCss(const QString& path);
    /// Path (key) of the user's custom sheet; schedules the style sheet.
    void setCustomCss(const QString& path);
    /// Path (key) of the product's standard sheet; schedules nothing.
    void setStandardCss(const QString& path);
    /// Schedules colour replacement only for a non-empty table.
    void setColorReplacements(const RKColorReplacementInstructions& replacements);
    /// An empty map is ignored (the previous one stays).
    void setInheritedAttributes(const QMap<QString, QString>& attributes);
    void setSpotColorOnly(bool on);
    void setDropSpotColor(bool on);

    void addToDo(CompilerToDo toDo);
    void clearToDo(CompilerToDo toDo);
    bool toDo(CompilerToDo toDo) const;
    void clearAllToDos();

    /// Runs the pending passes, appends the day markers and clears the to-dos.
    void update();

    // The passes, callable one by one. A compiler without a document does nothing.
    /// Applies the instructions to every element whose key attribute holds a key.
    void applyInstructions();
    /// Fits every "image" into its frame by its "vako:imagewidth"/"vako:imageheight"; a frame
    /// that has no finite fitted form (numbers "inf"/"nan", a centre beyond the range) stays.
    void fixImageTags();
    /// Removes elements whose class ends in "_empty" unless "vako:force_keep" is true.
    void removeEmptyElements();
    /// kickOutSuperfluosStyles(), then insertCurrentCss().
    void addCss();
    /// Removes the root's titled "style" children.
    void kickOutSuperfluosStyles();
    /// Inserts the page, standard and custom sheets as the root's first child, "style" titled "current".
    void insertCurrentCss();
    void replaceColors();
    void applyInheritedAttributes();
    void extractSpotColorMask();
    /// Removes the root's children that carry a refinement.
    void dropSpotColorElements();
    void appendChildMarker();

    // Element-level steps; a null element is left alone.
    void applyInstructions(QDomElement* element);
    void fixThisImage(QDomElement* element);
    /// Whether the parent may remove `element`; removes the removable elements below it.
    bool canRemoveEmptyElement(QDomElement* element);
    /// Paints a knock-out ("vako:refinement" = "remove") white with "comp-op" = "src-out"; others stay.
    void applyRemoveSpotColorInstruction(QDomElement element);
    /// Paints the element's own fill and stroke black (see the class comment).
    void paintItBlack(QDomElement element);
    /// paintItBlack for the element and every descendant.
    void paintAllBlack(QDomElement element);

    QDomDocument domDocument() const { return myDocument; }
    /// The document serialised without added white space.
    QString resultString() const;
    QByteArray resultByteArray() const;
    QString attributeName() const { return myInstructions.attributeName(); }
    QList<RKSVGCompilerInstruction> instructions(const QString& key) const { return myInstructions.replacements(key); }

private:
    enum class MaskRole { Remove, Keep };
    MaskRole maskElement(QDomElement element, bool insideRefinement);
    void paint(QDomElement element, const QString& color, bool recursive);

    RKSVGCompilerInstructions myInstructions;
    QDomDocument myDocument;
    QString myCss;
    QString myCustomCss;
    QString myStandardCss;
    RKColorReplacementInstructions myColorReplacements;
    quint32 myToDos = 0;
    QMap<QString, QString> myInheritedAttributes;
};
