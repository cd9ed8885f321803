#pragma once

#include "RKCalendariumContentKey.h"
#include "RKColorReplacementInstructions.h"
#include "RKCssSheetTitleIdMap.h"
#include "RKRelativePinAnchorPoint.h"
#include "RKSVGCompilerInstructions.h"
#include "RKSVGCompositionOptions.h"
#include "rkxml_export.h"

#include <RKBackgroundJobPriority.h>
#include <RKCachingOption.h>
#include <RKSpotColor.h>

#include <QDomDocument>
#include <QMetaType>
#include <QRectF>
#include <QSizeF>
#include <QString>

class QPainter;
class RKSVGImageAbstract;

/**
 * What the application draws: one SVG image (not owned; it must outlive the composition)
 * with its colour and custom CSS sheets, calendarium content, colour replacements, a
 * variant and a mask mode. A value; equality and hash make it the key of
 * RKSVGImageRendererCache, and every setter that changes the drawing first makes that
 * cache forget the old entry.
 *
 * Facts about the image (ratio, size range, anchor point, spot colour) are read on first
 * use and kept, also across setSVGImage(). Because those const getters write, one
 * composition object must not be used from two threads at once; copies may.
 */
class RKXML_EXPORT RKSVGComposition
{
public:
    /// The numbers are fixed: RKSVGCompositionRenderSituation computes them.
    enum Variant : qint32 {
        FullColorRuleFlagSet = 0,
        FullColor = 1,
        SpotColorOnly = 2,
        DropSpotColor = 3,
    };
    /// Stored and compared only; drawing does not depend on it here.
    enum MaskMode : qint32 {
        NoMask = 0,
        AlphaMask = 1,
        InvertedAlphaMask = 2,
    };

    /// An invalid composition (no image), for containers and Qt's meta-type system.
    RKSVGComposition();
    /// An empty `colorCssSheet` takes the image's default (setDefaultCssSheet()).
    RKSVGComposition(RKSVGImageAbstract* image, const QString& colorCssSheet);
    RKSVGComposition(const RKSVGComposition& other);
    RKSVGComposition& operator=(const RKSVGComposition& other);
    ~RKSVGComposition();

    void setSVGImage(RKSVGImageAbstract* image);
    RKSVGImageAbstract* svgImage() const { return myImage; }
    /// An image is set.
    bool isValid() const { return myImage != nullptr; }

    /// Id of the colour CSS sheet.
    void setColorCssSheet(const QString& id);
    QString currentColorCssSheet() const { return myColorCssSheet; }
    /// Id of a custom CSS sheet (e.g. a generated "customColor#rrggbb.css"), compiled after
    /// the colour and standard sheets; passed on to the image's sheet map too.
    void setCustomCssSheet(const QString& id);
    QString customCssSheet() const { return myCustomCssSheet; }
    /// The image's sheet map's custom sheet, when the map has entries; no invalidation.
    void setDefaultCssSheet();
    /// The image's sheet map; empty without an image.
    RKCssSheetTitleIdMap cssSheets() const;

    void setContent(const RKCalendariumContentKey& content);
    RKCalendariumContentKey calendariumContent() const { return myContent; }
    bool canDoCalendariumHolidays() const;

    /// Only assigned: does not invalidate the renderer cache.
    void setColorReplacements(const RKColorReplacementInstructions& replacements);
    RKColorReplacementInstructions colorReplacements() const { return myColorReplacements; }
    /// Only assigned.
    void setVariant(Variant variant) { myVariant = variant; }
    Variant variant() const { return myVariant; }
    /// Only assigned.
    void setMaskMode(MaskMode mode) { myMaskMode = mode; }
    MaskMode maskMode() const { return myMaskMode; }

    /// The image's uncompiled document from the document cache (a private copy).
    QDomDocument sourceSVG() const;
    /// The instructions for the content from the instructions cache; may build them (slow).
    RKSVGCompilerInstructions compilerInstructions() const;
    /// The compiled page; empty without an image. Slow; any thread (on its own copy).
    QDomDocument compileAsDomDocument() const;
    /// compileAsDomDocument() as text, indent 1.
    QByteArray compileAsByteArray() const;

    /// Draws through RKSVGImageRendererCache (see there); nothing without an image.
    void render(QPainter* painter, const QRectF& target, const RKBackgroundJobPriority& priority,
        const RKCachingOption& caching, const RKSVGCompositionOptions& options) const;

    /// Height divided by width, computed once (compiles the page on first use).
    double ratio() const;
    /// "minWidth"/"minHeight" of the image's "vako:refinement" metadata, default 1 by 1.
    QSizeF minimumSize() const;
    /// "maxWidth"/"maxHeight"; (-1, -1) for no maximum (0 by 0, absent, or negative).
    QSizeF maximumSize() const;
    /// The anchor of the image's "svg" element; re-read while the image has none.
    RKRelativePinAnchorPoint anchorPoint() const;
    /// Whether the spot-colour-only compilation is a valid SVG; asked once.
    bool hasSpotColor() const;
    /// The spot colours of "refinementType" in the image's metadata; read once.
    RKSpotColor spotColor() const;

    /// Makes the renderer cache forget this composition.
    void invalidateMeInCache();

    /// All fields, including whether the spot colour has been read.
    bool operator==(const RKSVGComposition& other) const;
    bool operator!=(const RKSVGComposition& other) const { return !(*this == other); }
    /// Image, sheets, auxiliary name and content only.
    bool equalsIgnoringConfiguration(const RKSVGComposition& other) const;
    /// The content key's hash XOR the image pointer's; sheets, replacements and variant do
    /// not enter.
    uint hashValue() const;
    /// The image's uniqueName(); empty without an image.
    QString debugName() const;

private:
    void updateSizeRange() const;
    QDomElement refinementElement(const QDomDocument& document) const;

    RKSVGImageAbstract* myImage;
    QString myColorCssSheet;
    QString myAuxiliaryName;
    QString myCustomCssSheet;
    RKCalendariumContentKey myContent;
    RKColorReplacementInstructions myColorReplacements;
    Variant myVariant = FullColor;
    MaskMode myMaskMode = NoMask;
    // Read on first use by the const getters.
    mutable qint32 myHasSpotColorState = 2; // 2 not yet asked, 1 yes, 0 no
    mutable double myCachedRatio = 0.0;
    mutable double myMinimumWidth = -1.0;
    mutable double myMinimumHeight = -1.0;
    mutable double myMaximumWidth = -1.0;
    mutable double myMaximumHeight = -1.0;
    mutable RKRelativePinAnchorPoint myAnchorPoint;
    mutable bool mySpotColorKnown = false;
    mutable RKSpotColor mySpotColor;
};

/// hashValue(), for QHash.
inline uint qHash(const RKSVGComposition& composition, uint seed = 0)
{
    return composition.hashValue() ^ seed;
}

Q_DECLARE_METATYPE(RKSVGComposition)
