#pragma once

#include "rkxml_export.h"

#include <QRectF>
#include <QString>
#include <QTransform>

/**
 * One piece cut out of an SVG drawing: its stand-alone SVG text, its "id", and
 * its bounding box and transform as the SVG renderer computes them within the
 * whole drawing. A value type.
 */
class RKXML_EXPORT RKSVGSnippet
{
public:
    RKSVGSnippet() = default;
    RKSVGSnippet(const QString& content, const QString& ID, const QRectF& boundingBox, const QTransform& matrix);

    QString content() const { return myContent; }
    QString ID() const { return myID; }
    /// In the coordinates of the piece's parent: the piece's own transform is applied.
    QRectF boundingBox() const { return myBoundingBox; }
    /// The accumulated transform of the piece's ancestors (not its own).
    QTransform matrix() const { return myMatrix; }

    bool operator==(const RKSVGSnippet& other) const;
    bool operator!=(const RKSVGSnippet& other) const { return !(*this == other); }

private:
    QString myContent;
    QString myID;
    QRectF myBoundingBox;
    QTransform myMatrix;
};
