// The rule of a time zone in the notation of the variable TZ. Pure: makes no system calls.
//
//     rule    = name offset [ name [ offset ] [ "," day "," day ] ]
//     name    = 3 or more letters, or "<" letters, digits, "+" and "-" ">"
//     offset  = ["+"|"-"] hours [":" minutes [":" seconds]]     west of Greenwich is positive
//     day     = "J" 1..365 | 0..365 | "M" month "." week "." weekday, each with ["/" offset]
//
// "EST5EDT,M3.2.0,M11.1.0" is five hours behind Greenwich, four from the second Sunday of March at
// 2 o'clock to the first Sunday of November.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

// A day of the year and a time of that day at which clocks change.
struct ZoneChange {
    enum Kind : std::uint8_t { kMonthWeekDay, kDayWithoutLeapDay, kDayFromZero };
    Kind kind;
    std::uint8_t month;    // 1 to 12
    std::uint8_t week;     // 1 to 5, 5 the last
    std::uint8_t weekday;  // 0 for Sunday
    std::int16_t day;      // day of the year, for the other kinds
    std::int32_t time;     // in seconds from midnight by the clock before the change; may be
                           // negative
};

struct ZoneRule {
    char standardName[16];
    char daylightName[16];        // empty if there is no daylight time
    std::int32_t standardOffset;  // in seconds east of Greenwich
    std::int32_t daylightOffset;
    ZoneChange toDaylight, toStandard;
};

// Parses a rule. A rule with daylight time but without days uses those of the United States, as
// systems do. Returns false, with *rule unspecified, unless the whole text is such a rule.
bool ParseZoneRule(const char* text, ZoneRule* rule);

}  // namespace genutil
