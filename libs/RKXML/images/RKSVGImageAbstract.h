#pragma once

#include "RKCssSheetTitleIdMap.h"
#include "RKDocumentCacheItem.h"
#include "RKSVGImageType.h"
#include "rkxml_export.h"

#include <QDomElement>
#include <QMap>
#include <QReadWriteLock>
#include <QString>

/**
 * An SVG image that compositions draw: a document (RKDocumentCacheItem) with the CSS
 * sheets that may colour it and the attributes the SVG compiler passes down its tree.
 *
 * The sheet map is guarded by a lock, since compositions change its custom sheet on the
 * GUI thread while background jobs compile the image; the rest is fixed after
 * construction. Not copyable; destroyed through the concrete type.
 */
class RKXML_EXPORT RKSVGImageAbstract : public RKDocumentCacheItem
{
public:
    virtual RKSVGImageType type() const = 0;
    /**
     * Appends an element named after type()'s keyword to `parent`, with a child
     * "inheritAttributes" (one attribute per inherited attribute) and the sheet map;
     * returns the new element.
     */
    virtual QDomElement buildXML(QDomElement& parent) const;
    virtual bool isValid() const = 0;
    virtual uint hashValue() const = 0;
    /// Some element of the document has a "vako:cal" key that contains "holiday". Parses
    /// the document (document()), so it is not cheap.
    virtual bool canDoCalendariumHolidays() const;

    RKCssSheetTitleIdMap cssSheets() const;
    void setCssSheets(const RKCssSheetTitleIdMap& sheets);
    /// Sets the sheet map's custom sheet (a sheet id such as "customColor#rrggbb.css").
    void setCustomCssSheet(const QString& id);
    QMap<QString, QString> inheritedAttributes() const { return myInheritedAttributes; }

    /// `element` or a descendant (depth first) has a "vako:cal" value containing "holiday".
    bool hasHolidayField(const QDomElement& element) const;

protected:
    /// The sheet map and the attributes of the first child "inheritAttributes" of `element`.
    explicit RKSVGImageAbstract(const QDomElement& element);
    RKSVGImageAbstract(const RKCssSheetTitleIdMap& sheets, const QMap<QString, QString>& inheritedAttributes);
    ~RKSVGImageAbstract() = default;

private:
    mutable QReadWriteLock mySheetLock;
    RKCssSheetTitleIdMap myCssSheets;
    const QMap<QString, QString> myInheritedAttributes;
};
