#pragma once

#include "rkxml_export.h"

#include <QDomElement>
#include <QPointF>
#include <QSizeF>

/**
 * The point at which an image is pinned, as fractions of its width and height
 * (0 = left/top edge, 1 = right/bottom edge). The default (-1, -1) is invalid.
 */
class RKXML_EXPORT RKRelativePinAnchorPoint
{
public:
    RKRelativePinAnchorPoint() : myPoint(-1.0, -1.0) {}
    explicit RKRelativePinAnchorPoint(const QPointF& point) : myPoint(point) {}
    virtual ~RKRelativePinAnchorPoint() = default;

    /// "anchor_x" and "anchor_y" (default "-1.0"; malformed text reads as 0.0).
    static RKRelativePinAnchorPoint decode(const QDomElement& element);
    static RKRelativePinAnchorPoint topLeft() { return RKRelativePinAnchorPoint(QPointF(0.0, 0.0)); }
    static RKRelativePinAnchorPoint center() { return RKRelativePinAnchorPoint(QPointF(0.5, 0.5)); }
    static RKRelativePinAnchorPoint bottomCenter() { return RKRelativePinAnchorPoint(QPointF(0.5, 1.0)); }
    static RKRelativePinAnchorPoint bottomRight() { return RKRelativePinAnchorPoint(QPointF(1.0, 1.0)); }

    QPointF point() const { return myPoint; }
    /// Both coordinates within [0, 1]; NaN is invalid.
    bool isValid() const;
    /// The anchor in the coordinates of an item of `size`.
    QPointF expanded(const QSizeF& size) const { return QPointF(myPoint.x() * size.width(), myPoint.y() * size.height()); }
    bool operator==(const RKRelativePinAnchorPoint& other) const { return myPoint == other.myPoint; }

private:
    QPointF myPoint;
};
