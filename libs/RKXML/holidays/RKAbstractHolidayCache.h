#pragma once

#include "RKCalendariumContentKey.h"
#include "RKCalendariumHolidayType.h"
#include "rkxml_export.h"

#include <QObject>
#include <QPair>
#include <QSize>
#include <QString>
#include <QStringList>

/// A picture for a calendar day: an image path and its size; an empty path with size (-1, -1) means none.
typedef QPair<QString, QSize> RKHolidayImage;

/**
 * A source of marked days that the SVG instructions factory asks per day while
 * it fills a calendar page. Concrete caches are supplied by the application;
 * implementations must be safe to call from the worker threads that compile pages.
 */
class RKXML_EXPORT RKAbstractHolidayCache : public QObject
{
    Q_OBJECT

public:
    RKAbstractHolidayCache();
    ~RKAbstractHolidayCache() override;

    /// Whether `day` carries a marked day of `type`.
    virtual bool hasHolidayOfType(const RKCalendariumContentKey& day, const RKCalendariumHolidayType& type) const = 0;
    /// The holiday names to print for `day`.
    virtual QStringList holidaysAt(const RKCalendariumContentKey& day) const = 0;
    /// The picture for `day`, or an empty path with the invalid size.
    virtual RKHolidayImage holidayImageAt(const RKCalendariumContentKey& day) const = 0;
};
