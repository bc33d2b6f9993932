// Local time by a pair of changes in the year, as operating systems keep their zone. Pure.
#pragma once

#include <cstdint>
#include <ctime>

#include "genutil/zone/zone_rule.h"

namespace genutil {

// A change of clocks: with a year a date in it, without one a weekday (0 is Sunday) of the first to
// the fourth week of a month, or, in week 5, the last.
struct ChangeDate {
    std::int32_t year;
    std::int32_t month;  // 1 to 12; 0 for no change
    std::int32_t weekday;
    std::int32_t day;  // of the month, or the week
    std::int32_t hour, minute, second;
};

struct TwoTransitions {
    std::int32_t bias;          // minutes west of Greenwich
    std::int32_t daylightBias;  // minutes more in daylight time; mostly -60
    ChangeDate standard, daylight;
};

// A rule in that form; what it cannot express becomes the dates of a year.
TwoTransitions TwoTransitionsOf(const ZoneRule& rule, int year);

// Whether a local time lies behind a change in its year.
bool IsBehind(const std::tm& local, const ChangeDate& change);

// Whether a local standard time is in daylight time.
bool IsDaylight(const std::tm& local, const TwoTransitions& zone);

}  // namespace genutil
