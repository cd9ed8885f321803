#pragma once

#include "RKSVGSnippet.h"
#include "rkxml_export.h"

#include <QDomElement>
#include <QList>
#include <QString>

/**
 * Cuts marked pieces out of an SVG drawing: every element whose attribute
 * `cutAttribute` has exactly the value `cutValue` becomes an RKSVGSnippet. A
 * mark's inside is not searched further. Const functions are re-entrant; cut()
 * renders, so it needs a QGuiApplication for drawings with text.
 */
class RKXML_EXPORT RKSVGCutter
{
public:
    RKSVGCutter(const QString& cutAttribute, const QString& cutValue);

    QString cutAttribute() const { return myCutAttribute; }
    QString cutValue() const { return myCutValue; }

    /**
     * The snippets of the marks below (or at) `svgElement`, in document order. The drawing
     * is copied and rendered once; `svgElement`'s document is not changed. A mark without
     * an "id", or one the renderer does not know, gets an empty box and the identity.
     */
    QList<RKSVGSnippet> cut(const QDomElement& svgElement) const;
    /// The outermost marked elements at or below `element`, in document order.
    QList<QDomElement> findCutMarks(const QDomElement& element) const;
    /// `element` written out (indent 1) inside "<svg>" and "</svg>".
    QString createSubTree(const QDomElement& element) const;

private:
    QString myCutAttribute;
    QString myCutValue;
};
