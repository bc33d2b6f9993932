// The times of one offset after another in a zone, from 1970 to 2038. Pure: asks no system.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/zone/zone_rule.h"

namespace genutil {

// Holds from `start`, in seconds since 1970, to the start of the next one.
struct ZonePeriod {
    std::int64_t start;
    std::int32_t offset;  // seconds east of Greenwich
    bool daylight;
};

// The periods of a zone in a fixed room; the first begins before 1970.
struct ZonePeriods {
    static constexpr std::size_t kMost = 1024;
    ZonePeriod at[kMost];
    std::size_t count = 0;

    // Leaves out a period that changes nothing, or that there is no room for.
    void Add(const ZonePeriod& period);
};

// The day number of a change in a year, and with it the seconds since 1970 by the local clock.
std::int64_t LocalTimeOfChange(const ZoneChange& change, int year);

// Adds the periods of a rule that begin behind `after`, or the rule's first if there are none yet.
void AddRule(const ZoneRule& rule, std::int64_t after, ZonePeriods* periods);

// Reads a compiled zone file (TZif, versions 2 and later; of version 1 the 32-bit times), whose
// last line is a rule for the time behind its list. False when it is damaged; *rule is what the
// file says last, or the last offset.
bool ReadZoneFile(const unsigned char* bytes, std::size_t size, ZonePeriods* periods,
                  ZoneRule* rule);

}  // namespace genutil
