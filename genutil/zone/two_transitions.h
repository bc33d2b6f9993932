// Local time defined by two changes in the year, as operating systems store their zone. Pure.
#pragma once

#include <cstdint>
#include <ctime>

#include "genutil/zone/zone_rule.h"

namespace genutil {

// A change of clocks. With a year it is a date in that year. Without one (0) it is a weekday (0 is
// Sunday) of the first to fourth week of a month, or of the last week if the week is 5.
struct ChangeDate {
    std::int32_t year;
    std::int32_t month;  // 1 to 12; 0 for no change
    std::int32_t weekday;
    std::int32_t day;  // of the month, or the week
    std::int32_t hour, minute, second;
};

struct TwoTransitions {
    std::int32_t bias;          // in minutes west of Greenwich
    std::int32_t daylightBias;  // additional minutes in daylight time; usually -60
    ChangeDate standard, daylight;
};

// Converts a rule to that form. A change that it cannot express becomes the date in the given year.
TwoTransitions TwoTransitionsOf(const ZoneRule& rule, int year);

// Returns true if a local time is after a change in its year.
bool IsBehind(const std::tm& local, const ChangeDate& change);

// Returns true if a local standard time is in daylight time.
bool IsDaylight(const std::tm& local, const TwoTransitions& zone);

}  // namespace genutil
