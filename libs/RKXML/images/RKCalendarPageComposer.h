#pragma once

#include "RKSVGComposition.h"
#include "RKSVGImage.h"
#include "rkxml_export.h"

#include <QFileInfo>
#include <QImage>
#include <QList>
#include <QSize>

#include <memory>

/**
 * The road from a calendar template file to finished page pictures, for tools: owns the
 * template's image (which must outlive the compositions made from it, since the caches
 * key on its address), makes one composition per content key and draws compositions
 * into images, synchronously or through the background job manager.
 *
 * Drawing needs a QGuiApplication (the font database); a tool without a display uses
 * the "offscreen" platform.
 */
class RKXML_EXPORT RKCalendarPageComposer
{
public:
    /// `colorCssSheet` empty: the template's default sheet (its sheet map's findDefaultCssSheet()).
    explicit RKCalendarPageComposer(const QFileInfo& templateFile, const QString& colorCssSheet = QString());
    ~RKCalendarPageComposer();
    RKCalendarPageComposer(const RKCalendarPageComposer&) = delete;
    RKCalendarPageComposer& operator=(const RKCalendarPageComposer&) = delete;

    /// The template file exists.
    bool isValid() const;
    RKSVGImage* image() const { return myImage.get(); }
    QString colorCssSheet() const { return myColorCssSheet; }

    /// The page of `content`.
    RKSVGComposition page(const RKCalendariumContentKey& content) const;

    /// `width` wide and as high as the composition's ratio says (compiles it once).
    static QSize sizeForWidth(const RKSVGComposition& composition, int width);
    /**
     * Loads the renderers of `pages` on the background job manager's threads and waits
     * up to `msecs` (negative: no limit). True when every page could be loaded.
     */
    static bool loadInBackground(const QList<RKSVGComposition>& pages, int msecs = -1);
    /**
     * `composition` drawn into a transparent image of `size`, scaled with its aspect ratio
     * kept and centred. With `background` the renderer is loaded through a background job
     * (waited for); otherwise it is made on the calling thread. Either way it is cached.
     * A null image when the page does not compile to valid SVG or the wait timed out.
     */
    static QImage renderImage(const RKSVGComposition& composition, const QSize& size, bool background, int msecs = -1);

private:
    std::unique_ptr<RKSVGImage> myImage;
    QString myColorCssSheet;
};
