#pragma once

#include "rkcore_export.h"

#include <QDate>

/**
 * A closed range of calendar days [first, last]. A range with an invalid end
 * or with last before first is empty: it contains nothing and has 0 days.
 */
class RKCORE_EXPORT RKDateRange
{
public:
    RKDateRange() = default;
    RKDateRange(const QDate& first, const QDate& last);
    virtual ~RKDateRange() = default;

    /// All days of the month of `date`; empty for an invalid date.
    static RKDateRange month(const QDate& date);

    QDate first() const { return myFirst; }
    QDate last() const { return myLast; }
    bool isEmpty() const;
    bool contains(const QDate& date) const;
    /// Number of days in the range, both ends included.
    int days() const;

    bool operator==(const RKDateRange& other) const { return myFirst == other.myFirst && myLast == other.myLast; }
    bool operator!=(const RKDateRange& other) const { return !(*this == other); }

private:
    QDate myFirst;
    QDate myLast;
};
