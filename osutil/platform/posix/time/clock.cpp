#include "osutil/platform/time/clock.h"

#include <time.h>

namespace genutil::platform {

std::int64_t SecondsNow() {
    return time(nullptr);
}

std::int64_t MillisecondsNow() {
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000;
}

WallClock ReadWallClock() {
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return {now.tv_sec, static_cast<int>(now.tv_nsec / 1000000)};
}

std::uint32_t TickCount() {
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint32_t>(now.tv_sec * 1000 + now.tv_nsec / 1000000);
}

}  // namespace genutil::platform
