#include "RKMath.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>

namespace RKMath {

QRectF shrinkRectToFit(const QRectF& frame, const QSizeF& size)
{
    const bool usableSize = std::isfinite(size.width()) && std::isfinite(size.height()) && size.width() > 0
        && size.height() > 0;
    if (!usableSize || !(frame.width() > 0) || !(frame.height() > 0))
        return frame;
    const qreal scale = std::min(frame.width() / size.width(), frame.height() / size.height());
    QSizeF fitted(size.width() * scale, size.height() * scale);
    // Rounding must never let the fitted side exceed the frame.
    fitted = fitted.boundedTo(frame.size());
    return QRectF(frame.x() + (frame.width() - fitted.width()) / 2, frame.y() + (frame.height() - fitted.height()) / 2,
        fitted.width(), fitted.height());
}

}
