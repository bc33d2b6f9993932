#include "osutil/platform/clock.h"

#include <time.h>

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

std::int64_t SecondsNow() {
    return time(nullptr);
}

LocalTime LocalTimeOf(std::int64_t seconds) {
    const time_t moment = static_cast<time_t>(seconds);
    const tm* local = localtime(&moment);  // a record of the calling thread
    if (!local) return {1970, 1, 1, 0, 0, 0};
    return {local->tm_year + 1900, local->tm_mon + 1, local->tm_mday,
            local->tm_hour,        local->tm_min,     local->tm_sec};
}

WallClock ReadWallClock() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    tm fields = {};
    fields.tm_year = now.wYear - 1900;
    fields.tm_mon = now.wMonth - 1;
    fields.tm_mday = now.wDay;
    fields.tm_hour = now.wHour;
    fields.tm_min = now.wMinute;
    fields.tm_sec = now.wSecond;
    fields.tm_isdst = -1;
    return {mktime(&fields), now.wMilliseconds};
}

std::uint32_t TickCount() {
    return GetTickCount();
}

}  // namespace genutil::platform
