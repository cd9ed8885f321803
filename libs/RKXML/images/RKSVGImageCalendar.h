#pragma once

#include "RKSVGImageAbstract.h"
#include "rkxml_export.h"

#include <QDomDocument>

#include <atomic>

/**
 * A calendar template held in memory and saved inside the project XML as the text of an
 * "svgDocument" element. The document is shared with the caller, not copied; nobody may
 * change it while the image is drawn (the document cache copies it on worker threads).
 *
 * The hash is structural: the tag names of all elements in breadth-first order. Two
 * templates with the same element structure are one cache item, whatever their
 * attributes, texts or CSS.
 */
class RKXML_EXPORT RKSVGImageCalendar final : public RKSVGImageAbstract
{
public:
    RKSVGImageCalendar(const QDomDocument& document, const RKCssSheetTitleIdMap& sheets);
    /// From the element that buildXML() writes. Without a child "svgDocument" the warning
    /// "could not find element svgDocument" is logged and the document stays empty; text
    /// that does not parse gives an empty document and the parser's warning.
    explicit RKSVGImageCalendar(const QDomElement& element);

    /// The held document (shared).
    QDomDocument document() const override;
    /// "RKSVGImageCalendar:hash=<hashValue()>".
    QString uniqueName() const override;
    /// The structural hash, cached apart from the base's.
    uint hashValue() const override;
    uint calcHashValue() const override;
    RKSVGImageType type() const override;
    /// Always true.
    bool isValid() const override;
    /// The abstract form plus a child "svgDocument" holding the document as text.
    QDomElement buildXML(QDomElement& parent) const override;

private:
    QDomDocument mySvgDocument;
    mutable std::atomic<uint> myCalendarHash{0};
};
