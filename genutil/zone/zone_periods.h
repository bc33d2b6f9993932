// The consecutive periods of constant offset in a zone, from 1970 to 2038. Pure: makes no system
// calls.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/zone/zone_rule.h"

namespace genutil {

// A period from `start`, in seconds since 1970, to the start of the next one.
struct ZonePeriod {
    std::int64_t start;
    std::int32_t offset;  // in seconds east of Greenwich
    bool daylight;
};

// The periods of a zone in an array of fixed size. The first begins before 1970.
struct ZonePeriods {
    static constexpr std::size_t kMost = 1024;
    ZonePeriod at[kMost];
    std::size_t count = 0;

    // Adds a period, unless it changes nothing or there is no room for it.
    void Add(const ZonePeriod& period);
};

// Returns the local clock time of a change in a year, as seconds since 1970.
std::int64_t LocalTimeOfChange(const ZoneChange& change, int year);

// Adds the periods of a rule that begin after `after`, or the rule's first period if there are none
// yet.
void AddRule(const ZoneRule& rule, std::int64_t after, ZonePeriods* periods);

// Reads a compiled zone file (TZif): the 64-bit times of version 2 and later, or the 32-bit times
// of version 1. The last line of the file is a rule for the time after its list. Returns false if
// the file is damaged.
// @param rule receives the rule in the last line, or a rule of the last offset if there is none.
bool ReadZoneFile(const unsigned char* bytes, std::size_t size, ZonePeriods* periods,
                  ZoneRule* rule);

}  // namespace genutil
