#include "RKSVGComposition.h"

#include "RKDocumentCache.h"
#include "RKSVGCompiler.h"
#include "RKSVGCompilerInstructionsCache.h"
#include "RKSVGCompositionMetaTypeInitializer.h"
#include "RKSVGImageAbstract.h"
#include "RKSVGImageRendererCache.h"
#include "RKXMLParser.h"

#include <cmath>

namespace {
const RKSVGCompositionMetaTypeInitializer metaTypeInitializer;

const QString STR_SVG = QStringLiteral("svg");
const QString STR_METADATA = QStringLiteral("metadata");
const QString STR_VAKO_REFINEMENT = QStringLiteral("vako:refinement");
const QString STR_MIN_WIDTH = QStringLiteral("minWidth");
const QString STR_MIN_HEIGHT = QStringLiteral("minHeight");
const QString STR_MAX_WIDTH = QStringLiteral("maxWidth");
const QString STR_MAX_HEIGHT = QStringLiteral("maxHeight");
const QString STR_REFINEMENT_TYPE = QStringLiteral("refinementType");
}

RKSVGComposition::RKSVGComposition()
    : myImage(nullptr)
{
}

RKSVGComposition::RKSVGComposition(RKSVGImageAbstract* image, const QString& colorCssSheet)
    : myImage(image)
    , myColorCssSheet(colorCssSheet)
{
    if (myColorCssSheet.isEmpty())
        setDefaultCssSheet();
}

RKSVGComposition::RKSVGComposition(const RKSVGComposition& other) = default;
RKSVGComposition& RKSVGComposition::operator=(const RKSVGComposition& other) = default;
RKSVGComposition::~RKSVGComposition() = default;

void RKSVGComposition::setSVGImage(RKSVGImageAbstract* image)
{
    if (image == myImage)
        return;
    invalidateMeInCache();
    myImage = image;
    setDefaultCssSheet();
}

void RKSVGComposition::setColorCssSheet(const QString& id)
{
    if (id == myColorCssSheet)
        return;
    invalidateMeInCache();
    myColorCssSheet = id;
}

void RKSVGComposition::setCustomCssSheet(const QString& id)
{
    if (id == myCustomCssSheet)
        return;
    invalidateMeInCache();
    myCustomCssSheet = id;
    if (myImage)
        myImage->setCustomCssSheet(id);
}

void RKSVGComposition::setDefaultCssSheet()
{
    if (!myImage)
        return;
    const RKCssSheetTitleIdMap sheets = myImage->cssSheets();
    if (!sheets.isEmpty())
        myColorCssSheet = sheets.customCssSheet();
}

RKCssSheetTitleIdMap RKSVGComposition::cssSheets() const
{
    return myImage ? myImage->cssSheets() : RKCssSheetTitleIdMap();
}

void RKSVGComposition::setContent(const RKCalendariumContentKey& content)
{
    invalidateMeInCache();
    myContent = content;
}

bool RKSVGComposition::canDoCalendariumHolidays() const
{
    return myImage && myImage->canDoCalendariumHolidays();
}

void RKSVGComposition::setColorReplacements(const RKColorReplacementInstructions& replacements)
{
    myColorReplacements = replacements;
}

QDomDocument RKSVGComposition::sourceSVG() const
{
    return RKDocumentCache::instance().document(myImage);
}

RKSVGCompilerInstructions RKSVGComposition::compilerInstructions() const
{
    return RKSVGCompilerInstructionsCache::instance().instructions(myContent);
}

QDomDocument RKSVGComposition::compileAsDomDocument() const
{
    RKSVGCompiler compiler;
    if (!myImage)
        return compiler.domDocument();
    compiler.setDomDocument(RKDocumentCache::instance().document(myImage), true);
    compiler.setSpotColorOnly(myVariant == SpotColorOnly);
    compiler.setDropSpotColor(myVariant == DropSpotColor);
    compiler.setCss(myColorCssSheet);
    compiler.setStandardCss(myImage->cssSheets().standardSheet());
    compiler.setInheritedAttributes(myImage->inheritedAttributes());
    compiler.setCustomCss(myCustomCssSheet);
    compiler.setColorReplacements(myColorReplacements);
    if (myContent.isValid()) {
        compiler.setInstructions(RKSVGCompilerInstructionsCache::instance().instructions(myContent));
        compiler.addToDo(RKSVGCompiler::ToDoCalendarContent);
    }
    compiler.update();
    return compiler.domDocument();
}

QByteArray RKSVGComposition::compileAsByteArray() const
{
    return compileAsDomDocument().toByteArray(1);
}

void RKSVGComposition::render(QPainter* painter, const QRectF& target, const RKBackgroundJobPriority& priority,
    const RKCachingOption& caching, const RKSVGCompositionOptions& options) const
{
    if (!myImage)
        return;
    RKSVGImageRendererCache::instance().render(*this, painter, target, priority, caching, options);
}

double RKSVGComposition::ratio() const
{
    if (std::fabs(myCachedRatio) <= 1e-12)
        myCachedRatio = RKSVGImageRendererCache::instance().ratio(*this);
    return myCachedRatio;
}

QDomElement RKSVGComposition::refinementElement(const QDomDocument& document) const
{
    return document.firstChildElement(STR_SVG).firstChildElement(STR_METADATA).firstChildElement(STR_VAKO_REFINEMENT);
}

void RKSVGComposition::updateSizeRange() const
{
    const QDomDocument document = sourceSVG();
    const QDomElement refinement = refinementElement(document);
    myMinimumWidth = RKXMLParser::doubleAttribute(refinement, STR_MIN_WIDTH, 1.0);
    myMinimumHeight = RKXMLParser::doubleAttribute(refinement, STR_MIN_HEIGHT, 1.0);
    myMaximumWidth = RKXMLParser::doubleAttribute(refinement, STR_MAX_WIDTH, 0.0);
    myMaximumHeight = RKXMLParser::doubleAttribute(refinement, STR_MAX_HEIGHT, 0.0);
}

QSizeF RKSVGComposition::minimumSize() const
{
    if (!(myMinimumWidth >= 0.0 && myMinimumHeight >= 0.0))
        updateSizeRange();
    return QSizeF(myMinimumWidth, myMinimumHeight);
}

QSizeF RKSVGComposition::maximumSize() const
{
    if (myMaximumWidth < 0.0 || myMaximumHeight < 0.0)
        updateSizeRange();
    if (myMaximumWidth == 0.0 && myMaximumHeight == 0.0)
        return QSizeF(-1.0, -1.0);
    if (!(myMaximumWidth >= 0.0) || !(myMaximumHeight >= 0.0))
        return QSizeF(-1.0, -1.0);
    return QSizeF(myMaximumWidth, myMaximumHeight);
}

RKRelativePinAnchorPoint RKSVGComposition::anchorPoint() const
{
    if (!myAnchorPoint.isValid()) {
        const QDomDocument document = sourceSVG();
        myAnchorPoint = RKRelativePinAnchorPoint::decode(document.firstChildElement(STR_SVG));
    }
    return myAnchorPoint;
}

bool RKSVGComposition::hasSpotColor() const
{
    if (myHasSpotColorState == 2)
        myHasSpotColorState = RKSVGImageRendererCache::instance().hasSpotColor(*this) ? 1 : 0;
    return myHasSpotColorState == 1;
}

RKSpotColor RKSVGComposition::spotColor() const
{
    if (!mySpotColorKnown) {
        const QDomDocument document = sourceSVG();
        const QDomElement refinement = refinementElement(document);
        mySpotColor = RKSpotColor(RKXMLParser::attribute(refinement, STR_REFINEMENT_TYPE, QString()));
        mySpotColorKnown = true;
    }
    return mySpotColor;
}

void RKSVGComposition::invalidateMeInCache()
{
    RKSVGImageRendererCache::instance().invalidate(*this);
}

bool RKSVGComposition::operator==(const RKSVGComposition& other) const
{
    return myImage == other.myImage && myColorCssSheet == other.myColorCssSheet
        && myAuxiliaryName == other.myAuxiliaryName && myCustomCssSheet == other.myCustomCssSheet
        && myContent == other.myContent && myColorReplacements.replacements() == other.myColorReplacements.replacements()
        && mySpotColor.toInt() == other.mySpotColor.toInt() && mySpotColorKnown == other.mySpotColorKnown
        && myVariant == other.myVariant && myMaskMode == other.myMaskMode;
}

bool RKSVGComposition::equalsIgnoringConfiguration(const RKSVGComposition& other) const
{
    return myImage == other.myImage && myColorCssSheet == other.myColorCssSheet
        && myAuxiliaryName == other.myAuxiliaryName && myCustomCssSheet == other.myCustomCssSheet
        && myContent == other.myContent;
}

uint RKSVGComposition::hashValue() const
{
    const auto pointer = static_cast<quint64>(reinterpret_cast<quintptr>(myImage));
    const uint pointerHash = static_cast<uint>(pointer) ^ static_cast<uint>(pointer >> 31);
    return qHash(myContent) ^ pointerHash;
}

QString RKSVGComposition::debugName() const
{
    return myImage ? myImage->uniqueName() : QString();
}
