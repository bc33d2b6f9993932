// The names of time zones in the tz database and in Windows.
#pragma once

#include <cstddef>

namespace genutil {

// Returns the Windows zone for a name of the tz database ("Asia/Tokyo", "Japan"), or null if there
// is none.
const char* WindowsZone(const char* name);

// Copies the usual name in the tz database for a Windows zone ("Tokyo Standard Time"). The name is
// never truncated. Returns false if there is none.
bool ZoneOfWindows(char* out, std::size_t size, const char* windows);

}  // namespace genutil
