// A time zone, ready to convert moments. Zones are found by the text of the variable TZ and kept
// for the lifetime of the process, so that conversions make no system calls.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>

#include "genutil/nearest.h"
#include "genutil/zone/zone_rule.h"

namespace genutil {

struct ZonePeriods;

constexpr std::int32_t kLastSecond = 2147483647;

// Where long has 64 bits, it has a larger range than a moment. Returns the nearest moment.
constexpr std::int32_t MomentOf(long seconds) {
    return NearestInt32(seconds);
}

// The text that represents an unset TZ: the zone of the machine.
constexpr char kMachineZone[] = "\x01";

class Zone {
  public:
    // Returns the zone that a TZ text denotes: a name of the tz database, a name of Windows, or a
    // rule, with or without a leading ":". Any other text means UTC, as in C libraries. Never null.
    // Returns UTC if allocation fails. May be called from any thread. The first call for a text
    // queries the system.
    static const Zone& Find(const char* variable);

    // Stores the local date and time of a moment from 0 to kLastSecond in all nine fields. Other
    // members of the record are cleared.
    void ToLocal(std::int32_t seconds, std::tm* local) const;

    // Returns the moment of a local date and time, whose fields may be out of range. With tm_isdst
    // below 0, the zone determines daylight time: the first of two possible moments is chosen when
    // clocks are set back, and a time that is skipped is interpreted with the offset before the
    // change. On success the fields are set to those of the moment. Returns -1 and leaves them
    // unchanged if the moment is outside 0 to kLastSecond.
    std::int32_t FromLocal(std::tm* local) const;

    // Returns the TZ text by which the zone was found. It is empty for a zone returned because the
    // text could not be stored.
    const char* Variable() const { return m_variable; }

    // Returns the rule in force today.
    const ZoneRule& Rule() const { return m_rule; }

  private:
    struct Period {
        std::int64_t start;   // in seconds since 1970
        std::int32_t offset;  // in seconds east of Greenwich
        bool daylight;
    };
    static constexpr int kBucketBits = 22;  // 48 days
    static constexpr std::size_t kBuckets = (std::size_t{1} << (31 - kBucketBits)) + 1;

    static Zone* Load(const char* variable);
    static Zone* Make(const ZonePeriods& periods, const ZoneRule& rule, const char* variable);
    std::size_t IndexAt(std::int32_t seconds) const;
    std::size_t LastBegunBy(std::int64_t wanted) const;
    std::size_t NearestWith(bool daylight, std::size_t i) const;

    const char* m_variable;
    const Zone* m_next;  // in the list of zones found so far
    ZoneRule m_rule;
    std::size_t m_count;
    const Period* m_periods;
    std::uint16_t m_periodOfBucket[kBuckets];  // the period in force at the start of each bucket
};

}  // namespace genutil
