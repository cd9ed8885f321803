#include "RKDateRange.h"

RKDateRange::RKDateRange(const QDate& first, const QDate& last)
    : myFirst(first)
    , myLast(last)
{
}

RKDateRange RKDateRange::month(const QDate& date)
{
    if (!date.isValid())
        return RKDateRange();
    const QDate first(date.year(), date.month(), 1);
    return RKDateRange(first, QDate(date.year(), date.month(), date.daysInMonth()));
}

bool RKDateRange::isEmpty() const
{
    return !myFirst.isValid() || !myLast.isValid() || myLast < myFirst;
}

bool RKDateRange::contains(const QDate& date) const
{
    return !isEmpty() && date.isValid() && myFirst <= date && date <= myLast;
}

int RKDateRange::days() const
{
    return isEmpty() ? 0 : static_cast<int>(myFirst.daysTo(myLast)) + 1;
}
