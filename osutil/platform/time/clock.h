// Platform layer: time.
#pragma once

#include <cstdint>

namespace genutil::platform {

// Returns the seconds since 1 January 1970, UTC.
std::int64_t SecondsNow();

// Returns the milliseconds since 1 January 1970, UTC.
std::int64_t MillisecondsNow();

// The local clock as seconds since 1970, with fields in the time zone of the process, and the
// milliseconds within that second.
struct WallClock {
    std::int64_t seconds;
    int milliseconds;
};
WallClock ReadWallClock();

// Returns the milliseconds of a clock that is never set. Wraps around after 49 days.
std::uint32_t TickCount();

}  // namespace genutil::platform
