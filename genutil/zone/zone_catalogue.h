// The time zones that the system knows, collected once per process.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

struct ZoneRow {
    char name[48];                // the name in the tz database, or the system's own name if there
                                  // is none
    char display[128];            // in UTF-8: "(UTC+09:00) Tokyo, Japan"
    std::int32_t standardOffset;  // in seconds east of Greenwich
};

struct ZoneCatalogue {
    ZoneRow* rows;  // from west to east, then in alphabetical order of places
    std::size_t count;
};

// Returns the catalogue. It is empty if allocation fails; the next call then tries again. May be
// called from any thread.
const ZoneCatalogue& GetZoneCatalogue();

// Returns null if the name is not in the catalogue.
const ZoneRow* FindZone(const char* name);

// Writes "(UTC+09:00) " and the place.
void WriteZoneDisplay(char* out, std::size_t size, std::int32_t standardOffset, const char* place);

}  // namespace genutil
