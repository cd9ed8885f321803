#include "RKProvinceSpecification.h"

RKProvinceSpecification::RKProvinceSpecification(const RKLocale& locale, const QString& province)
    : myLocale(locale)
    , myProvince(province)
{
}

bool RKProvinceSpecification::operator==(const RKProvinceSpecification& other) const
{
    return myLocale == other.myLocale && myProvince == other.myProvince;
}
