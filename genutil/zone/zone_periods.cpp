#include "genutil/zone/zone_periods.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "genutil/calendar.h"

namespace genutil {

namespace {

constexpr std::int64_t kBeginning = std::numeric_limits<std::int64_t>::min();

// Reads a big-endian number of the file.
std::int64_t ReadNumber(const unsigned char* p, int bytes) {
    std::uint64_t value = p[0] & 0x80 ? ~std::uint64_t{0} : 0;
    for (int i = 0; i < bytes; ++i) value = value << 8 | p[i];
    return static_cast<std::int64_t>(value);
}

struct Header {
    std::uint32_t isUt, isStandard, leaps, times, types, names;
};
constexpr std::size_t kHeaderSize = 44;

bool ReadHeader(const unsigned char* p, std::size_t size, Header* header) {
    if (size < kHeaderSize || std::memcmp(p, "TZif", 4) != 0) return false;
    std::uint32_t* counts = &header->isUt;
    for (int i = 0; i < 6; ++i) {
        counts[i] = static_cast<std::uint32_t>(ReadNumber(p + 20 + 4 * i, 4));
        if (counts[i] > 65536) return false;
    }
    return header->types > 0;
}

std::size_t BodySize(const Header& h, std::size_t timeSize) {
    return h.times * (timeSize + 1) + h.types * std::size_t{6} + h.names +
           h.leaps * (timeSize + 4) + h.isStandard + h.isUt;
}

bool ReadBody(const unsigned char* body, const Header& h, int timeSize, ZonePeriods* periods) {
    const unsigned char* types = body + h.times * static_cast<std::size_t>(timeSize);
    const unsigned char* offsets = types + h.times;
    const auto period = [&](std::int64_t start, std::uint32_t type) {
        const unsigned char* entry = offsets + std::size_t{6} * type;
        return ZonePeriod{start, static_cast<std::int32_t>(ReadNumber(entry, 4)), entry[4] != 0};
    };
    periods->Add(period(kBeginning, 0));
    std::int64_t previous = INT64_MIN;
    for (std::uint32_t i = 0; i < h.times; ++i) {
        const std::int64_t start =
            ReadNumber(body + i * static_cast<std::size_t>(timeSize), timeSize);
        if (types[i] >= h.types || start <= previous) return false;
        previous = start;
        // Of the changes before 1970, only the last one matters.
        const ZonePeriod next = period(start, types[i]);
        if (start < 0) periods->count = 0;
        periods->Add({start < 0 ? kBeginning : start, next.offset, next.daylight});
    }
    for (std::size_t i = 0; i < periods->count; ++i) {
        const std::int32_t offset = periods->at[i].offset;
        if (offset <= -std::int64_t{kSecondsPerDay} * 2 ||
            offset >= std::int64_t{kSecondsPerDay} * 2)
            return false;
    }
    return true;
}

// Reads the line between two line ends after the body. A missing line is not an error.
bool ReadFooter(const unsigned char* p, std::size_t size, ZoneRule* rule) {
    char text[128];
    if (size < 2 || p[0] != '\n') return false;
    const auto* end = static_cast<const unsigned char*>(std::memchr(p + 1, '\n', size - 1));
    const std::size_t length = end ? static_cast<std::size_t>(end - p - 1) : 0;
    if (length == 0 || length >= sizeof text) return false;
    std::memcpy(text, p + 1, length);
    text[length] = 0;
    return ParseZoneRule(text, rule);
}

}  // namespace

void ZonePeriods::Add(const ZonePeriod& period) {
    if (count != 0) {
        const ZonePeriod& last = at[count - 1];
        if (period.start == last.start) {  // daylight time all year ends and begins in the same
                                           // second
            --count;
            return Add(period);
        }
        if (last.offset == period.offset && last.daylight == period.daylight) return;
        if (period.start < last.start)
            return;  // the changes of a rule cross at the end of the
                     // year
    }
    if (count < kMost) at[count++] = period;
}

std::int64_t LocalTimeOfChange(const ZoneChange& change, int year) {
    const std::int32_t newYear = DayNumberOf(year, 1, 1);
    std::int32_t day = newYear + change.day;
    if (change.kind == ZoneChange::kDayWithoutLeapDay) {
        const bool leap = DateExists(year, 2, 29);
        day = newYear + change.day - 1 + (leap && change.day >= 60);
    } else if (change.kind == ZoneChange::kMonthWeekDay) {
        const std::int32_t first = DayNumberOf(year, change.month, 1);
        day = first + (change.weekday - (WeekdayOf(first) - 1) + 7) % 7 + 7 * (change.week - 1);
        const std::int32_t next = change.month == 12 ? DayNumberOf(year + 1, 1, 1)
                                                     : DayNumberOf(year, change.month + 1, 1);
        if (day >= next) day -= 7;
    }
    return (day - kDayOf1970) * std::int64_t{kSecondsPerDay} + change.time;
}

void AddRule(const ZoneRule& rule, std::int64_t after, ZonePeriods* periods) {
    const ZonePeriod standard = {kBeginning, rule.standardOffset, false};
    if (!*rule.daylightName) {
        periods->Add({periods->count ? after : kBeginning, rule.standardOffset, false});
        return;
    }
    for (int year = 1969; year <= 2038; ++year) {
        ZonePeriod changes[2] = {{LocalTimeOfChange(rule.toDaylight, year) - rule.standardOffset,
                                  rule.daylightOffset, true},
                                 {LocalTimeOfChange(rule.toStandard, year) - rule.daylightOffset,
                                  rule.standardOffset, false}};
        if (changes[1].start < changes[0].start) std::swap(changes[0], changes[1]);
        for (const ZonePeriod& change : changes) {
            if (periods->count == 0) periods->Add({kBeginning, change.offset, change.daylight});
            if (change.start <= after) continue;
            if (change.start < 0) periods->count = 0;
            periods->Add(
                {change.start < 0 ? kBeginning : change.start, change.offset, change.daylight});
        }
    }
    if (periods->count == 0) periods->Add(standard);
}

bool ReadZoneFile(const unsigned char* bytes, std::size_t size, ZonePeriods* periods,
                  ZoneRule* rule) {
    periods->count = 0;
    Header header;
    if (!ReadHeader(bytes, size, &header)) return false;
    const bool wide = bytes[4] >= '2';
    std::size_t at = kHeaderSize;
    if (wide) {
        const std::size_t narrow = BodySize(header, 4);
        if (size - at < narrow) return false;
        at += narrow;
        if (!ReadHeader(bytes + at, size - at, &header)) return false;
        at += kHeaderSize;
    }
    const int timeSize = wide ? 8 : 4;
    const std::size_t body = BodySize(header, static_cast<std::size_t>(timeSize));
    if (size - at < body || !ReadBody(bytes + at, header, timeSize, periods)) return false;
    at += body;

    const ZonePeriod last = periods->at[periods->count - 1];
    if (wide && ReadFooter(bytes + at, size - at, rule)) {
        AddRule(*rule, last.start, periods);
        return true;
    }
    *rule = {};
    std::memcpy(rule->standardName, "LMT", 4);
    rule->standardOffset = last.offset;
    return true;
}

}  // namespace genutil
