#pragma once

#include "RKSingleton.h"
#include "rkcore_export.h"

#include <QFont>

/// The application's default font.
class RKCORE_EXPORT RKFontCreator : public RKSingleton<RKFontCreator>
{
    friend class RKSingleton<RKFontCreator>;

public:
    /// The default family at 12 points, normal weight, upright.
    QFont createDefaultFont() const;
    static QString defaultFontFamily();

private:
    RKFontCreator() = default;
};
