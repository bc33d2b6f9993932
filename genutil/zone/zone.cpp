#include "genutil/zone/zone.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "genutil/calendar.h"
#include "genutil/zone/windows_names.h"
#include "genutil/zone/zone_periods.h"
#include "osutil/platform/time/zones.h"

namespace genutil {

namespace {

std::atomic<const Zone*> g_zones{nullptr};

// The memory for loading a zone; too large for a thread's stack.
struct Workplace {
    ZonePeriods periods;
    ZoneRule rule;
    unsigned char file[65536];
};

bool ReadRule(Workplace* work, const char* text) {
    if (!ParseZoneRule(text, &work->rule)) return false;
    AddRule(work->rule, -1, &work->periods);
    return true;
}

bool ReadSystemZone(Workplace* work, const char* name) {
    const std::size_t size = platform::ReadZoneFile(name, work->file, sizeof work->file);
    if (size != 0) return ReadZoneFile(work->file, size, &work->periods, &work->rule);
    char rule[64];
    return platform::ReadZoneRule(name, rule, sizeof rule) && ReadRule(work, rule);
}

// Reads a zone by its name in either family, or as a rule.
bool ReadVariable(Workplace* work, const char* variable) {
    if (std::strcmp(variable, kMachineZone) == 0) return ReadSystemZone(work, nullptr);
    if (*variable == ':') ++variable;
    if (!*variable) return false;
    if (ReadSystemZone(work, variable)) return true;
    work->periods.count = 0;
    if (const char* windows = WindowsZone(variable)) return ReadSystemZone(work, windows);
    char usual[48];
    if (ZoneOfWindows(usual, sizeof usual, variable)) return ReadSystemZone(work, usual);
    return ReadRule(work, variable);
}

// Converts a local time to fields. It is in seconds since 1970, and below 0 in the first hours west
// of Greenwich.
inline void BreakDown(std::int64_t local, std::tm* out) {
    constexpr std::int64_t kFromZero = std::int64_t{kSecondsPerDay} * 366;
    const auto shifted = static_cast<std::uint32_t>(local + kFromZero);
    const auto days = static_cast<std::int32_t>(shifted / kSecondsPerDay) - 366;
    const auto second = static_cast<std::int32_t>(shifted % kSecondsPerDay);
    const CalendarDate date = DateSince1970(days);
    static constexpr std::int16_t kBefore[] = {0,   31,  59,  90,  120, 151,
                                               181, 212, 243, 273, 304, 334};
    const bool leap = (date.year & 3) == 0;  // in the years 1969 to 2038
    out->tm_sec = second % 60;
    out->tm_min = second / 60 % 60;
    out->tm_hour = second / kSecondsPerHour;
    out->tm_mday = date.day;
    out->tm_mon = date.month - 1;
    out->tm_year = date.year - 1900;
    out->tm_wday = static_cast<int>(static_cast<std::uint32_t>(days + 4 + 371) % 7);
    out->tm_yday = kBefore[date.month - 1] + date.day - 1 + (leap && date.month > 2);
}

// Returns the local clock time of fields in any range, in seconds since 1970.
std::int64_t LocalSeconds(const std::tm& t) {
    std::int64_t months = std::int64_t{t.tm_year} * 12 + t.tm_mon;
    std::int64_t year = months / 12 - (months % 12 < 0);
    const auto month = static_cast<std::int32_t>(months - year * 12);
    year += 1900;
    // Years far from 1970 to 2038 count as out of range, whatever the days and hours. The limit
    // keeps the day number in range.
    if (year > 500000 || year < -500000) return year > 0 ? INT64_MAX / 2 : INT64_MIN / 2;
    // Gregorian throughout, as in mktime. Early years are computed whole cycles later.
    constexpr std::int64_t kYearsOfCycle = 400, kDaysOfCycle = 146097;
    const std::int64_t cycles = year < 1600 ? (2000 - year) / kYearsOfCycle : 0;
    const auto later = static_cast<std::int32_t>(year + cycles * kYearsOfCycle);
    const std::int64_t days =
        DayNumberOf(later, month + 1, 1) - cycles * kDaysOfCycle - kDayOf1970 + t.tm_mday - 1;
    return days * kSecondsPerDay + std::int64_t{t.tm_hour} * kSecondsPerHour +
           std::int64_t{t.tm_min} * 60 + t.tm_sec;
}

}  // namespace

Zone* Zone::Make(const ZonePeriods& periods, const ZoneRule& rule, const char* variable) {
    const std::size_t length = std::strlen(variable) + 1;
    const std::size_t size = sizeof(Zone) + periods.count * sizeof(Period) + length;
    void* memory = Allocate(size);
    if (!AssertAllocation(memory != nullptr, "genutil/zone", __LINE__)) return nullptr;
    Zone* zone = new (memory) Zone;
    auto* at = reinterpret_cast<Period*>(zone + 1);
    char* text = reinterpret_cast<char*>(at + periods.count);
    std::memcpy(text, variable, length);
    zone->m_variable = text;
    zone->m_rule = rule;
    zone->m_count = periods.count;
    zone->m_periods = at;
    for (std::size_t i = 0; i < periods.count; ++i) {
        const ZonePeriod& period = periods.at[i];
        at[i] = {i == 0 ? 0 : period.start, period.offset, period.daylight};
    }
    std::uint16_t current = 0;
    for (std::size_t bucket = 0; bucket < kBuckets; ++bucket) {
        const auto begin = static_cast<std::int64_t>(bucket << kBucketBits);
        while (current + 1u < zone->m_count && at[current + 1].start <= begin) ++current;
        zone->m_periodOfBucket[bucket] = current;
    }
    return zone;
}

Zone* Zone::Load(const char* variable) {
    auto* work = static_cast<Workplace*>(Allocate(sizeof(Workplace)));
    if (!AssertAllocation(work != nullptr, "genutil/zone", __LINE__)) return nullptr;
    work->periods.count = 0;
    if (!ReadVariable(work, variable)) {
        work->periods.count = 0;
        ReadRule(work, "UTC0");
    }
    Zone* zone = Make(work->periods, work->rule, variable);
    Release(work);
    return zone;
}

const Zone& Zone::Find(const char* variable) {
    for (const Zone* zone = g_zones.load(std::memory_order_acquire); zone; zone = zone->m_next)
        if (std::strcmp(zone->m_variable, variable) == 0) return *zone;
    static constexpr Period kAlways = {0, 0, false};
    static const Zone utc = [] {
        Zone zone = {};
        zone.m_variable = "";
        ParseZoneRule("UTC0", &zone.m_rule);
        zone.m_count = 1;
        zone.m_periods = &kAlways;
        return zone;
    }();
    Zone* made = Load(variable);
    if (!made) return utc;
    // Two threads that load the same zone both add it to the list. From then on the first one in
    // the list is used.
    const Zone* first = g_zones.load(std::memory_order_relaxed);
    do made->m_next = first;
    while (!g_zones.compare_exchange_weak(first, made, std::memory_order_release,
                                          std::memory_order_relaxed));
    return *made;
}

inline std::size_t Zone::IndexAt(std::int32_t seconds) const {
    const auto moment = static_cast<std::uint32_t>(seconds);
    std::size_t i = m_periodOfBucket[moment >> kBucketBits];
    while (i + 1 < m_count && m_periods[i + 1].start <= moment) ++i;
    return i;
}

void Zone::ToLocal(std::int32_t seconds, std::tm* local) const {
    const Period& period = m_periods[IndexAt(seconds)];
    *local = {};
    BreakDown(std::int64_t{seconds} + period.offset, local);
    local->tm_isdst = period.daylight;
}

// Returns the last period whose beginning, on its own clock or on that of the preceding period, is
// not after the wanted time. That time is in this period, in the preceding one, in both, or
// skipped.
std::size_t Zone::LastBegunBy(std::int64_t wanted) const {
    const auto begin = [&](std::size_t i) {
        return m_periods[i].start + std::min(m_periods[i - 1].offset, m_periods[i].offset);
    };
    std::size_t i = IndexAt(
        static_cast<std::int32_t>(std::clamp(wanted, std::int64_t{0}, std::int64_t{kLastSecond})));
    while (i + 1 < m_count && wanted >= begin(i + 1)) ++i;
    while (i > 0 && wanted < begin(i)) --i;
    return i;
}

// Returns the nearest period to i with the given kind of time, or i if there is none.
std::size_t Zone::NearestWith(bool daylight, std::size_t i) const {
    for (std::size_t step = 0; step < m_count; ++step) {
        if (i + step < m_count && m_periods[i + step].daylight == daylight) return i + step;
        if (i >= step && m_periods[i - step].daylight == daylight) return i - step;
    }
    return i;
}

std::int32_t Zone::FromLocal(std::tm* local) const {
    const std::int64_t wanted = LocalSeconds(*local);
    std::size_t i = LastBegunBy(wanted);
    if (i > 0) {
        const Period& period = m_periods[i];
        const bool before = wanted - m_periods[i - 1].offset < period.start;
        const bool here = wanted - period.offset >= period.start;
        if (before || !here) --i;
    }
    if (local->tm_isdst >= 0) i = NearestWith(local->tm_isdst > 0, i);
    const std::int64_t moment = wanted - m_periods[i].offset;
    if (moment < 0 || moment > kLastSecond) return -1;
    ToLocal(static_cast<std::int32_t>(moment), local);
    return static_cast<std::int32_t>(moment);
}

}  // namespace genutil
