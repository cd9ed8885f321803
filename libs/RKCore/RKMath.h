#pragma once

#include "rkcore_export.h"

#include <QRectF>
#include <QSizeF>

/// Small geometry helpers.
namespace RKMath {

/**
 * The largest rectangle with the aspect ratio of `size` that fits into `frame`,
 * centred in it. A `size` with a zero, negative or non-finite side, and a frame
 * without area, give `frame` unchanged.
 */
RKCORE_EXPORT QRectF shrinkRectToFit(const QRectF& frame, const QSizeF& size);

}
