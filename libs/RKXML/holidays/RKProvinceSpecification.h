#pragma once

#include "rkxml_export.h"

#include <RKLocale.h>

#include <QString>

/**
 * The key of a holiday region: a locale (its country is what matters) and a
 * province name; an empty province means the whole country. Provinces compare
 * exactly ("BY" and "by" are different regions).
 */
class RKXML_EXPORT RKProvinceSpecification
{
public:
    RKProvinceSpecification() = default;
    RKProvinceSpecification(const RKLocale& locale, const QString& province);
    virtual ~RKProvinceSpecification() = default;

    RKLocale locale() const { return myLocale; }
    QString province() const { return myProvince; }

    bool operator==(const RKProvinceSpecification& other) const;
    bool operator!=(const RKProvinceSpecification& other) const { return !(*this == other); }

    /**
     * Always 1. Tables keyed by regions are small and read rarely, so they rely on
     * equality alone; the constant can never disagree with operator==.
     */
    uint hashKey() const { return 1u; }

private:
    RKLocale myLocale;
    QString myProvince;
};

/// The region key's hashKey(), so that QHash buckets agree with it.
inline uint qHash(const RKProvinceSpecification& region, uint seed = 0)
{
    Q_UNUSED(seed)
    return region.hashKey();
}
