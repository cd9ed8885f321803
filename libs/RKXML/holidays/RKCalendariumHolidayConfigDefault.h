#pragma once

#include "RKCalendariumHolidayConfig.h"
#include "rkxml_export.h"

#include <RKSingleton.h>

#include <QFileInfo>

/**
 * The process-wide default holiday configuration, kept in "calendarium_config.xml"
 * in the version-independent writable directory. Loaded when created. The stored
 * default never switches on personal entries, holidays, holiday colours or
 * vacations, whatever the file says. Not locked: change it from one thread.
 */
class RKXML_EXPORT RKCalendariumHolidayConfigDefault : public RKSingleton<RKCalendariumHolidayConfigDefault>
{
    friend class RKSingleton<RKCalendariumHolidayConfigDefault>;

public:
    ~RKCalendariumHolidayConfigDefault() override = default;

    RKCalendariumHolidayConfig defaultConfig() const { return myConfig; }
    /// Replaces the default and saves it.
    void setDefaultConfig(const RKCalendariumHolidayConfig& config);
    /// Changes the held default without saving.
    void setFeature(const RKCalendariumFeatures& feature, bool on);

    void load();
    /// Writes the file; a failure to open it is not reported.
    void save();
    QFileInfo file() const;

private:
    RKCalendariumHolidayConfigDefault();

    RKCalendariumHolidayConfig myConfig;
};
