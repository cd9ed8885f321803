#pragma once

#include "RKCalendariumFeatures.h"
#include "RKProvinceSpecification.h"
#include "rkxml_export.h"

#include <RKLocale.h>

#include <QDomElement>
#include <QSharedData>
#include <QSharedDataPointer>
#include <QString>

/// The shared state of RKCalendariumHolidayConfig.
class RKXML_EXPORT RKCalendariumHolidayConfigImpl : public QSharedData
{
public:
    /// The calendar words' default language, its first province and no features.
    RKCalendariumHolidayConfigImpl();
    RKCalendariumHolidayConfigImpl(const RKCalendariumHolidayConfigImpl& other) = default;
    virtual ~RKCalendariumHolidayConfigImpl() = default;

    RKLocale language;
    QString province;
    RKCalendariumFeatures features;
};

/**
 * Which region's holidays a calendar shows (language/country and province) and
 * which calendarium features are on. An implicitly shared value: copies share
 * their state until one of them changes. Default-constructed configurations
 * share one process-wide state, made on first use with the defaults in force
 * then (so the first default construction creates the holiday calculator and
 * the calendar words registry).
 */
class RKXML_EXPORT RKCalendariumHolidayConfig
{
public:
    RKCalendariumHolidayConfig();
    RKCalendariumHolidayConfig(const RKCalendariumHolidayConfig& other) = default;
    RKCalendariumHolidayConfig(RKCalendariumHolidayConfig&& other) noexcept = default;
    RKCalendariumHolidayConfig& operator=(const RKCalendariumHolidayConfig& other) = default;
    RKCalendariumHolidayConfig& operator=(RKCalendariumHolidayConfig&& other) noexcept = default;
    virtual ~RKCalendariumHolidayConfig() = default;

    /// A copy of `base` with RKCalendariumFeaturesEverything: every feature except holiday_colors.
    static RKCalendariumHolidayConfig withEverythingEnabled(const RKCalendariumHolidayConfig& base);

    QString province() const;
    /// An empty name is ignored: the old province stays.
    void setProvince(const QString& province);
    RKLocale language() const;
    void setLanguage(const RKLocale& language);
    RKProvinceSpecification provinceSpecification() const;

    RKCalendariumFeatures features() const;
    void setFeatures(const RKCalendariumFeatures& features);
    /// Sets (on) or clears the bits of `feature`; true when the value changed.
    bool setFeature(const RKCalendariumFeatures& feature, bool on);
    void removeFeatures(const RKCalendariumFeatures& features);
    /// True when every bit of `features` is set (always for an empty set).
    bool hasFeatures(const RKCalendariumFeatures& features) const;

    bool operator==(const RKCalendariumHolidayConfig& other) const;
    bool operator!=(const RKCalendariumHolidayConfig& other) const { return !(*this == other); }
    uint hashKey() const;

    /// Appends a "holidays" element with "language", "province" and "features".
    void writeToXML(QDomElement& parent) const;
    /// Reads the first "holidays" child of `parent`; nothing changes when there is none.
    void readFromXML(const QDomElement& parent);

    /// True when this value shares its state with `other` (for tests of the sharing).
    bool sharesStateWith(const RKCalendariumHolidayConfig& other) const { return d == other.d; }

private:
    /// The state that default-constructed values share, made on first use.
    static const QSharedDataPointer<RKCalendariumHolidayConfigImpl>& nullImpl();
    /// The state to read (the shared default one for a moved-from value).
    const RKCalendariumHolidayConfigImpl& impl() const;
    /// The state to change: gives a moved-from value state again, then detaches.
    RKCalendariumHolidayConfigImpl& writableImpl();

    QSharedDataPointer<RKCalendariumHolidayConfigImpl> d;
};
