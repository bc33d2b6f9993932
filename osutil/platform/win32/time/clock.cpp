// The runtime's calls without a 64 in their names end in 2038 on this platform.
#include "osutil/platform/time/clock.h"

#include <time.h>

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

std::int64_t SecondsNow() {
    return _time64(nullptr);
}

// The system counts 100 ns since 1601.
std::int64_t MillisecondsNow() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    const auto ticks =
        static_cast<std::int64_t>(std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime);
    return ticks / 10000 - 11644473600000;
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
    return {_mktime64(&fields), now.wMilliseconds};
}

std::uint32_t TickCount() {
    return GetTickCount();
}

}  // namespace genutil::platform
