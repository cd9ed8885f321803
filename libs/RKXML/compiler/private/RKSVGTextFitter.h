#pragma once

#include <QDomDocument>

/**
 * Fits texts that a template marks as fitted into the room the template gives them,
 * so that a long holiday name wraps inside its day cell instead of running into the
 * next one.
 *
 * A fitted text is a "text" element with these attributes (numbers in user units):
 * - "vako:fitblock": texts with the same value form one block, in document order
 *   (for example the holiday lines of one day cell);
 * - "vako:fitwidth": the widest a line may be;
 * - "vako:fittop": the highest baseline a line of the block may have;
 * - "vako:fitsize" and "vako:fitfont": the font size and family the sheet gives them.
 *
 * A block whose texts each fit on one line at that size is left exactly as it is.
 * Otherwise every non-empty text is wrapped at blanks (a word wider than a line is
 * broken between characters), the lines are stacked upwards from the lowest
 * baseline of the block, one text after the other in block order, and the font is
 * made smaller, down to 60 %, until all lines fit between "vako:fittop" and that
 * baseline. What still does not fit loses its last lines, the last one kept ending
 * in "…". Each line after a text's first is a copy of the text element without its
 * "vako:cal" key and "id", so it keeps the text's class.
 *
 * Measuring needs fonts, so the fitter needs a QGuiApplication; without one (a
 * command-line compile) the document is left as it is. Re-entrant: any thread may
 * fit its own document.
 */
class RKSVGTextFitter
{
public:
    /// Fits every block of `document`; returns the number of blocks changed.
    static int fit(QDomDocument& document);
};
