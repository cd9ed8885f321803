#pragma once

// Picture comparison for tests that draw: never byte for byte, always by mean difference.

#include <QImage>
#include <QtGlobal>

/// Mean absolute difference of the RGB channels over all pixels, as a fraction of 255.
/// Images of different sizes compare as completely different (1.0).
inline double meanDifference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size() || a.isNull())
        return 1.0;
    const QImage x = a.convertToFormat(QImage::Format_RGB32);
    const QImage y = b.convertToFormat(QImage::Format_RGB32);
    double sum = 0;
    for (int row = 0; row < x.height(); ++row) {
        const QRgb* p = reinterpret_cast<const QRgb*>(x.constScanLine(row));
        const QRgb* q = reinterpret_cast<const QRgb*>(y.constScanLine(row));
        for (int column = 0; column < x.width(); ++column)
            sum += qAbs(qRed(p[column]) - qRed(q[column])) + qAbs(qGreen(p[column]) - qGreen(q[column]))
                + qAbs(qBlue(p[column]) - qBlue(q[column]));
    }
    return sum / (3.0 * 255.0 * x.width() * x.height());
}
