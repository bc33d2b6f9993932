// A time zone, ready to convert moments. Zones are found by what the variable TZ says and kept for
// the life of the process, so that a conversion asks no system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>

#include "genutil/nearest.h"
#include "genutil/zone/zone_rule.h"

namespace genutil {

struct ZonePeriods;

constexpr std::int32_t kLastSecond = 2147483647;

// A long has more range than a moment where it has 64 bits: the nearest moment counts.
constexpr std::int32_t MomentOf(long seconds) {
    return NearestInt32(seconds);
}

// What TZ is when it is not set: the zone of the machine.
constexpr char kMachineZone[] = "\x01";

class Zone {
  public:
    // The zone that a TZ text means: a name of the tz database, a name of Windows, or a rule, with
    // or without ":" in front; UTC when it is none of these, as C libraries have it. Never null;
    // without memory UTC. Any thread may call it; the first call for a text asks the system.
    static const Zone& Find(const char* variable);

    // The local date and time of 0 to kLastSecond, all nine fields; what else the record has is
    // cleared.
    void ToLocal(std::int32_t seconds, std::tm* local) const;

    // The moment of a local date and time, whose fields may be out of their ranges: with tm_isdst
    // below 0 the zone decides, and takes the first of two hours that stand twice; a time that the
    // clocks skip is counted on from before. The fields are then those of the moment. -1, with
    // them unchanged, outside of 0 to kLastSecond.
    std::int32_t FromLocal(std::tm* local) const;

    // The text that it was found by; empty when it stands in for one that could not be kept.
    const char* Variable() const { return m_variable; }

    // The rule in force today.
    const ZoneRule& Rule() const { return m_rule; }

  private:
    struct Period {
        std::int64_t start;   // seconds since 1970
        std::int32_t offset;  // seconds east of Greenwich
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
    const Zone* m_next;  // of the zones found so far
    ZoneRule m_rule;
    std::size_t m_count;
    const Period* m_periods;
    std::uint16_t m_periodOfBucket[kBuckets];  // the one that holds at its beginning
};

}  // namespace genutil
