#pragma once

#include "rkxml_export.h"

class QFileInfo;
class QSvgRenderer;
class RKSVGComposition;

/**
 * Makes SVG renderers. The results belong to the caller and may be invalid (broken SVG).
 * Made on a thread other than the application's, a renderer is moved to the
 * application's thread, where the drawing happens.
 */
class RKXML_EXPORT RKSVGRendererFactory
{
public:
    /// From the compiled composition; slow (compiles).
    static QSvgRenderer* createRenderer(const RKSVGComposition& composition);
    /// From a file, plain or in the encoded clip-art form.
    static QSvgRenderer* createRenderer(const QFileInfo& file);
};
