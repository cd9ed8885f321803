#pragma once

#include "RKCssSheetTitleIdMap.h"
#include "rkxml_export.h"

#include <QDomDocument>
#include <QDomProcessingInstruction>
#include <QFileInfo>
#include <QString>

/**
 * Finds the style sheets a template offers in its processing instructions
 * before the root element: "xml-stylesheet" (href, title, alternate) names one
 * sheet, "xml-stylesheets" (href) includes the sheets listed by another file
 * through RKCssSheetCache. Pseudo-attribute values cannot hold blanks or
 * double quotes; such a value is not recognised (a title with a blank makes an
 * untitled sheet). Stateless and re-entrant.
 */
class RKXML_EXPORT RKCssSheetParser
{
public:
    /// Empty when `svgFile` does not exist. Hrefs are resolved against its directory.
    static RKCssSheetTitleIdMap findStyleSheets(const QDomDocument& svg, const QFileInfo& svgFile);
    /// A null instruction or an unknown target is ignored.
    static void evaluateProcessingInstruction(const QDomProcessingInstruction& instruction,
        const QFileInfo& svgFile, RKCssSheetTitleIdMap* map);
    static void evaluateStyleSheet(const QString& data, const QFileInfo& svgFile, RKCssSheetTitleIdMap* map);
    static void evaluateStylesInclude(const QString& data, const QFileInfo& svgFile, RKCssSheetTitleIdMap* map);
    /// Later pseudo-attributes overwrite earlier ones; any "alternate" clears `*isDefault`,
    /// whatever its value. The caller sets `*isDefault` to true beforehand.
    static void parseTitleAndFileInfo(const QString& data, const QFileInfo& svgFile, QFileInfo* file,
        QString* title, bool* isDefault);
};
