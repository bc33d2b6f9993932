#include "genutil/zone/windows_names.h"

#include <cstring>

namespace genutil {

namespace {

struct WindowsZoneRow {
    const char* windows;
    const char* names;  // of the tz database, separated by blanks; the usual one is first
};
constexpr WindowsZoneRow kWindowsZones[] = {
#include "genutil/zone/windows_zones.inc"
};

bool HasName(const char* names, const char* name, std::size_t length) {
    while (*names) {
        const std::size_t n = std::strcspn(names, " ");
        if (n == length && std::memcmp(names, name, n) == 0) return true;
        names += n + (names[n] == ' ');
    }
    return false;
}

}  // namespace

const char* WindowsZone(const char* name) {
    const std::size_t length = std::strlen(name);
    if (length == 0) return nullptr;
    for (const WindowsZoneRow& row : kWindowsZones)
        if (HasName(row.names, name, length)) return row.windows;
    return nullptr;
}

bool ZoneOfWindows(char* out, std::size_t size, const char* windows) {
    for (const WindowsZoneRow& row : kWindowsZones) {
        if (std::strcmp(row.windows, windows) != 0) continue;
        const std::size_t length = std::strcspn(row.names, " ");
        if (length >= size) return false;
        std::memcpy(out, row.names, length);
        out[length] = 0;
        return true;
    }
    return false;
}

}  // namespace genutil
