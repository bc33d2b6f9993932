// The names of time zones: those of the tz database and those of Windows.
#pragma once

#include <cstddef>

namespace genutil {

// The zone of Windows for a name of the tz database ("Asia/Tokyo", "Japan"); null when it has none.
const char* WindowsZone(const char* name);

// The usual name in the tz database for a zone of Windows ("Tokyo Standard Time"), copied whole.
// False when there is none.
bool ZoneOfWindows(char* out, std::size_t size, const char* windows);

}  // namespace genutil
