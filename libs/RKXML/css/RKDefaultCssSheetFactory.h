#pragma once

#include "rkxml_export.h"

#include <QString>

/**
 * Generated one-colour sheets. An id of the form "customColor<colour>.css"
 * (e.g. "customColor#ff0000.css") names a sheet whose text is made here and
 * never read from disk. Stateless; every function is thread-safe.
 */
class RKXML_EXPORT RKDefaultCssSheetFactory
{
public:
    /// The colour text between "customColor" and ".css"; empty for any other id.
    static QString color(const QString& id);
    static bool cssAvailable(const QString& id);
    /// ".vakoCustomFill{fill: <colour>;}", or empty when `id` is not a generated sheet.
    static QString cssString(const QString& id);
};
