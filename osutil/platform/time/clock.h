// What the library asks of an operating system about time.
#pragma once

#include <cstdint>

namespace genutil::platform {

// Seconds since 1 January 1970, UTC.
std::int64_t SecondsNow();

// The local clock as seconds since 1970 (its fields read by the zone of the process), and the
// milliseconds within that second.
struct WallClock {
    std::int64_t seconds;
    int milliseconds;
};
WallClock ReadWallClock();

// Milliseconds of a clock that is never set; wraps around after 49 days.
std::uint32_t TickCount();

}  // namespace genutil::platform
