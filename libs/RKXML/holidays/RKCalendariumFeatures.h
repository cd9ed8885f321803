#pragma once

#include "rkxml_export.h"

#include <RKEnumWrapper.h>

#include <QString>

/// What a calendarium shows besides the dates; the values are flags and may be OR-ed.
enum RKCalendariumFeaturesEnum : int {
    RKCalendariumFeatureNone = 0,
    RKCalendariumFeatureHolidays = 1,
    RKCalendariumFeatureHolidayColors = 2,
    RKCalendariumFeaturePersonalEntries = 4,
    RKCalendariumFeatureVacations = 8,
    RKCalendariumFeatureMoonPhases = 16,
    RKCalendariumFeatureZodiacs = 32,
    RKCalendariumFeatureShowWeekOfYear = 64,
};

/// Every feature except holiday colouring (125), which is deliberately not part of "everything".
constexpr RKCalendariumFeaturesEnum RKCalendariumFeaturesEverything = RKCalendariumFeaturesEnum(RKCalendariumFeatureHolidays
    | RKCalendariumFeaturePersonalEntries | RKCalendariumFeatureVacations | RKCalendariumFeatureMoonPhases
    | RKCalendariumFeatureZodiacs | RKCalendariumFeatureShowWeekOfYear);
/// The kinds of marked days the holiday calculator computes: holidays, vacations, moon phases (25).
constexpr RKCalendariumFeaturesEnum RKCalendariumFeaturesMarkedDays = RKCalendariumFeaturesEnum(
    RKCalendariumFeatureHolidays | RKCalendariumFeatureVacations | RKCalendariumFeatureMoonPhases);
/// Holidays and school vacations (9): what the data checks compute.
constexpr RKCalendariumFeaturesEnum RKCalendariumFeaturesHolidaysAndVacations = RKCalendariumFeaturesEnum(
    RKCalendariumFeatureHolidays | RKCalendariumFeatureVacations);
static_assert(RKCalendariumFeaturesEverything == 125, "saved documents and callers know this value");

/**
 * A set of RKCalendariumFeaturesEnum flags with the words "personalEntries",
 * "holidays", "holiday_colors", "vacations", "moonphases", "zodiacs" and
 * "show_week_of_year" (matched in any case). encodeCSV() writes the words of
 * the set bits from the lowest bit up, joined with ", "; 0 is the empty text.
 */
class RKXML_EXPORT RKCalendariumFeatures : public RKEnumWrapper<RKCalendariumFeaturesEnum>
{
public:
    RKCalendariumFeatures(RKCalendariumFeaturesEnum value = RKCalendariumFeatureNone)
        : RKEnumWrapper<RKCalendariumFeaturesEnum>(value)
    {
    }
    /// OR of the comma-separated words; unknown words add nothing.
    explicit RKCalendariumFeatures(const QString& csv);
    ~RKCalendariumFeatures() override = default;

    void fillTable(RKEnumToStringTable<RKCalendariumFeaturesEnum>* table) const override;
};
