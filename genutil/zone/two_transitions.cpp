#include "genutil/zone/two_transitions.h"

#include <algorithm>
#include <iterator>

#include "genutil/calendar.h"
#include "genutil/zone/zone_periods.h"

namespace genutil {

namespace {

// Returns 1, 0 or -1 according to the first of several pairs that differs.
struct Pair {
    int mine, other;
};
template <std::size_t N>
int Order(const Pair (&pairs)[N]) {
    for (const Pair& pair : pairs)
        if (pair.mine != pair.other) return pair.mine > pair.other ? 1 : -1;
    return 0;
}

// Returns the length of a month. The number from 0 is compared with numbers from 1, so February
// counts as 31 days and so on. Results have been like this since the first release.
int LengthOfMonth(int monthFromZero) {
    static constexpr int kLong[] = {1, 3, 5, 7, 8, 10, 12};
    if (std::count(std::begin(kLong), std::end(kLong), monthFromZero)) return 31;
    return monthFromZero == 2 ? 28 : 30;
}

bool IsBehindInMonth(const std::tm& local, const ChangeDate& change) {
    const Pair fromWeekday[] = {{local.tm_wday, change.weekday},
                                {local.tm_hour, change.hour},
                                {local.tm_min, change.minute},
                                {local.tm_sec, change.second}};
    if (change.day >= 5) {
        if (LengthOfMonth(local.tm_mon) - local.tm_mday >= 7) return false;
        return Order(fromWeekday) > 0;
    }
    const int week = local.tm_mday / 7 + 1;  // day 7 is in week 2, by contract
    if (week != change.day) return week > change.day;
    return Order(fromWeekday) > 0;
}

ChangeDate ChangeDateOf(const ZoneChange& change, int year) {
    const bool expressible = change.kind == ZoneChange::kMonthWeekDay && change.time >= 0 &&
                             change.time < kSecondsPerDay;
    std::int64_t second = change.time;
    ChangeDate date = {0, change.month, change.weekday, change.week, 0, 0, 0};
    if (!expressible) {
        second = LocalTimeOfChange(change, year);
        const std::int64_t days = second / kSecondsPerDay - (second % kSecondsPerDay < 0);
        second -= days * kSecondsPerDay;
        const CalendarDate day = DateSince1970(static_cast<std::int32_t>(days));
        date = {day.year, day.month, 0, day.day, 0, 0, 0};
    }
    date.hour = static_cast<std::int32_t>(second / kSecondsPerHour);
    date.minute = static_cast<std::int32_t>(second / 60 % 60);
    date.second = static_cast<std::int32_t>(second % 60);
    return date;
}

}  // namespace

TwoTransitions TwoTransitionsOf(const ZoneRule& rule, int year) {
    TwoTransitions zone = {};
    zone.bias = -rule.standardOffset / 60;
    if (!*rule.daylightName) return zone;
    zone.daylightBias = (rule.standardOffset - rule.daylightOffset) / 60;
    zone.daylight = ChangeDateOf(rule.toDaylight, year);
    zone.standard = ChangeDateOf(rule.toStandard, year);
    return zone;
}

bool IsBehind(const std::tm& local, const ChangeDate& change) {
    const int month = local.tm_mon + 1;
    if (change.year != 0)
        return Order({Pair{month, change.month}, Pair{local.tm_mday, change.day},
                      Pair{local.tm_hour, change.hour}, Pair{local.tm_min, change.minute},
                      Pair{local.tm_sec, change.second}}) > 0;
    if (month != change.month) return month > change.month;
    return IsBehindInMonth(local, change);
}

bool IsDaylight(const std::tm& local, const TwoTransitions& zone) {
    if (zone.daylight.month == 0 || zone.daylightBias == 0) return false;
    const bool behindDaylight = IsBehind(local, zone.daylight);
    const bool behindStandard = IsBehind(local, zone.standard);
    if (zone.daylight.month <= zone.standard.month) return behindDaylight && !behindStandard;
    return behindDaylight || !behindStandard;
}

}  // namespace genutil
