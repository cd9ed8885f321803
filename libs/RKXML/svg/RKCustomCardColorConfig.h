#pragma once

#include "RKCssSheetTitleIdMap.h"
#include "rkxml_export.h"

#include <RKNamedColor.h>

/**
 * The custom card colours offered to the user, read once from the resource
 * "colors.xml" (every "color" element: "rgb" and "name"), and the generated
 * one-colour sheets for them ("customColor#rrggbb" → "customColor#rrggbb.css").
 * A missing or unreadable file gives empty lists (the loader warns once);
 * entries whose "rgb" is not a colour are skipped.
 */
class RKXML_EXPORT RKCustomCardColorConfig
{
public:
    /// Reads the file; costs one file read and parse.
    RKCustomCardColorConfig();
    virtual ~RKCustomCardColorConfig() = default;

    RKNamedColorList colors() const { return myColors; }
    RKCssSheetTitleIdMap cssSheets() const { return myCssSheets; }

private:
    RKNamedColorList parseColors() const;
    RKCssSheetTitleIdMap colorsToCssSheets(const RKNamedColorList& colors) const;

    RKNamedColorList myColors;
    RKCssSheetTitleIdMap myCssSheets;
};
