// The time zones that the system knows, gathered once for the process.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

struct ZoneRow {
    char name[48];                // of the tz database, or the system's own where that has none
    char display[128];            // "(UTC+09:00) Tokyo, Japan" in UTF-8
    std::int32_t standardOffset;  // seconds east of Greenwich
};

struct ZoneCatalogue {
    ZoneRow* rows;  // from west to east, places in alphabetical order
    std::size_t count;
};

// Empty when memory runs out, and tried again by the next call. Any thread may call it.
const ZoneCatalogue& GetZoneCatalogue();

// Null when the name is not in the catalogue.
const ZoneRow* FindZone(const char* name);

// "(UTC+09:00) " and the place.
void WriteZoneDisplay(char* out, std::size_t size, std::int32_t standardOffset, const char* place);

}  // namespace genutil
