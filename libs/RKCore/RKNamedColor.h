#pragma once

#include "rkcore_export.h"

#include <QColor>
#include <QList>
#include <QString>

class QDebug;

/**
 * A colour with a display name, e.g. a custom card colour ("#1f4e9c", "Royal Blue").
 * The default value has an invalid colour and an empty name.
 */
class RKCORE_EXPORT RKNamedColor
{
public:
    RKNamedColor() = default;
    RKNamedColor(const QColor& color, const QString& name);
    virtual ~RKNamedColor() = default;

    QColor color() const { return myColor; }
    QString name() const { return myName; }
    bool isValid() const { return myColor.isValid(); }

    bool operator==(const RKNamedColor& other) const;
    bool operator!=(const RKNamedColor& other) const { return !(*this == other); }

private:
    QColor myColor;
    QString myName;
};

/// Named colours in the order they were read.
using RKNamedColorList = QList<RKNamedColor>;

RKCORE_EXPORT QDebug operator<<(QDebug debug, const RKNamedColor& color);
