#pragma once

#include "RKCalendariumHolidayConfig.h"
#include "rkxml_export.h"

#include <RKSingleton.h>

#include <QFileInfo>

class RKErrorHistory;

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
    /// Replaces the default and saves it; false (and the failure in `history`, when given) if saving failed.
    bool setDefaultConfig(const RKCalendariumHolidayConfig& config, RKErrorHistory* history = nullptr);
    /// Changes the held default without saving.
    void setFeature(const RKCalendariumFeatures& feature, bool on);

    void load();
    /**
     * Writes the file safely (temporary file, then the previous version kept as a backup).
     * Returns false when it could not be written, and appends the failure to `history`
     * when one is given; the previous file is then left as it was.
     */
    bool save(RKErrorHistory* history = nullptr);
    QFileInfo file() const;

private:
    RKCalendariumHolidayConfigDefault();

    RKCalendariumHolidayConfig myConfig;
};
