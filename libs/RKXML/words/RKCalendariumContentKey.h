#pragma once

#include "RKCalendariumContentConfig.h"
#include "RKProjectIdentifier.h"
#include "rkxml_export.h"

/**
 * A calendarium page's content configuration and the project it belongs to;
 * the key of compiled instruction sets. The day is part of the key: callers that
 * cache per month normalise the day first.
 */
class RKXML_EXPORT RKCalendariumContentKey
{
public:
    RKCalendariumContentKey() = default;
    RKCalendariumContentKey(RKCalendariumContentConfig config, RKProjectIdentifier project);
    virtual ~RKCalendariumContentKey() = default;

    bool operator==(const RKCalendariumContentKey& other) const;
    bool operator!=(const RKCalendariumContentKey& other) const { return !(*this == other); }
    /// config().hashKey() XOR qHash of the project's identifier text.
    uint hashKey() const;
    /// The config's validity; the project is not consulted.
    bool isValid() const { return myConfig.isValid(); }

    RKCalendariumContentConfig config() const { return myConfig; }
    RKProjectIdentifier project() const { return myProject; }
    QDate date() const { return myConfig.date(); }
    QString describe() const { return myConfig.describe(); }

    RKCalendariumContentKey addMonths(int months) const;
    RKCalendariumContentKey addDays(int days) const;
    RKCalendariumContentKey moveToDay(QDate date) const;
    RKCalendariumContentKey moveToDayInMonth(int day) const;

private:
    RKCalendariumContentConfig myConfig;
    RKProjectIdentifier myProject;
};

/// The key's hashKey(), for QHash.
inline uint qHash(const RKCalendariumContentKey& key, uint seed = 0)
{
    return key.hashKey() ^ seed;
}
