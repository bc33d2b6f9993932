#include "genutil/diagnostics/trace_date.h"

#include <cstdint>
#include <cstring>
#include <ctime>

#include "genmoment.h"
#include "genutil/calendar.h"
#include "genutil/zone/thread_zone.h"
#include "osutil/platform/time/clock.h"
#include "osutil/platform/time/zones.h"
#include "osutil/thread/thread_record.h"
#include "osutil/thread/threaded.h"

namespace genutil {

namespace {

void PutTwoDigits(char* out, int value) {
    out[0] = static_cast<char>('0' + value / 10 % 10);
    out[1] = static_cast<char>('0' + value % 10);
}

// The zone used by a conversion of the calling thread, as far as it can be identified without a
// conversion.
struct ZoneMark {
    const char* own;      // the thread's zone, or null
    std::uint32_t state;  // state of TZ if the thread has no zone; 0 if unknown

    static ZoneMark Now() {
        if (!IsThreaded()) return {nullptr, platform::RereadZoneVariable()};
        if (const char* own = ThreadZone()) return {own, 0};
        return {nullptr, platform::ZoneVariableState()};
    }
    bool IsOf(const TraceDate& date) const {
        if (own) return std::strcmp(date.zone, own) == 0;
        return !*date.zone && state != 0 && date.zoneState == state;
    }
    // A long or empty name is not recorded; the date is then formed again.
    bool Note(TraceDate* date) const {
        const std::size_t length = own ? std::strlen(own) : 0;
        if (length >= sizeof date->zone || (own && length == 0)) return false;
        std::memcpy(date->zone, own ? own : "", length + 1);
        date->zoneState = state;
        return true;
    }
};

// Returns the record of the last date, because a log has many lines a second. Returns null until a
// threaded process knows the thread.
TraceDate* LastDate() {
    static TraceDate s_ofProcess;
    if (!IsThreaded()) return &s_ofProcess;
    ThreadRecord* self = KnownThreadRecord();
    return self ? &self->traceDate : nullptr;
}

std::tm FieldsOf(bool isUtc, std::int64_t seconds) {
    std::tm fields{};
    if (!isUtc) {
        CGNDateTime::LocalTimeTS(static_cast<long>(seconds), fields);
        return fields;
    }
    const std::int64_t days = seconds / kSecondsPerDay - (seconds % kSecondsPerDay < 0 ? 1 : 0);
    const auto rest = static_cast<int>(seconds - days * kSecondsPerDay);
    const CalendarDate date = DateOf(static_cast<std::int32_t>(days) + kDayOf1970);
    fields.tm_year = date.year - 1900;
    fields.tm_mon = date.month - 1;
    fields.tm_mday = date.day;
    fields.tm_hour = rest / kSecondsPerHour;
    fields.tm_min = rest / 60 % 60;
    fields.tm_sec = rest % 60;
    return fields;
}

std::int32_t DayOf(const std::tm& fields) {
    return DayNumberOf(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday);
}

}  // namespace

std::int32_t TraceDayOf(bool isUtc, std::int64_t seconds) {
    return DayOf(FieldsOf(isUtc, seconds));
}

std::int32_t TraceDayNow(bool isUtc) {
    return TraceDayOf(isUtc, platform::SecondsNow());
}

void ReadTraceMoment(bool isUtc, TraceMoment* moment) {
    const std::int64_t now = platform::MillisecondsNow();
    const std::int64_t seconds = now / 1000;
    const std::tm fields = FieldsOf(isUtc, seconds);
    const std::int64_t local = std::int64_t{DayOf(fields) - kDayOf1970} * kSecondsPerDay +
                               SecondsOf(fields.tm_hour, fields.tm_min, fields.tm_sec);
    *moment = {static_cast<long>(seconds),
               fields.tm_year + 1900,
               fields.tm_mon + 1,
               fields.tm_mday,
               fields.tm_hour,
               fields.tm_min,
               fields.tm_sec,
               static_cast<int>(now % 1000),
               static_cast<long>(local - seconds)};
}

void WriteTraceDate(char (&out)[sizeof kTraceDateForm]) {
    static_assert(sizeof kTraceDateForm <= sizeof TraceDate::text);
    const std::int64_t now = platform::SecondsNow();
    const ZoneMark mark = ZoneMark::Now();
    TraceDate* last = LastDate();
    if (last && last->second == now && mark.IsOf(*last)) {
        std::memcpy(out, last->text, sizeof out);
        return;
    }
    std::tm local;
    CGNDateTime::LocalTimeTS(static_cast<long>(now), local);
    std::memcpy(out, kTraceDateForm, sizeof out);
    PutTwoDigits(out, local.tm_mon + 1);
    PutTwoDigits(out + 3, local.tm_mday);
    PutTwoDigits(out + 6, local.tm_year % 100);
    PutTwoDigits(out + 9, local.tm_hour);
    PutTwoDigits(out + 12, local.tm_min);
    PutTwoDigits(out + 15, local.tm_sec);
    // The conversion may have registered the thread, and may have set TZ to the thread's zone.
    if (!last) return;
    last->second = ZoneMark::Now().Note(last) ? now : 0;
    std::memcpy(last->text, out, sizeof out);
}

}  // namespace genutil
