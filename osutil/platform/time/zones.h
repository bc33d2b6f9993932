// What the library asks of an operating system about time zones.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// A zone of the system. Its rule, in the notation of the variable TZ, is the one in force today.
struct Zone {
    char name[48];    // the system's own: "Asia/Tokyo", "Tokyo Standard Time"
    char place[112];  // where it holds, readable English in UTF-8: "Tokyo, Japan"
    char rule[64];
};

// Calls `visit` with each zone that a user could choose, in no order. Reads files or the registry.
void VisitZones(void (*visit)(void* context, const Zone& zone), void* context);

// The rule of any zone that the system knows, old names included; null for the one of the machine.
// False when it does not.
bool ReadZoneRule(const char* name, char* rule, std::size_t size);

// Reads the compiled file of a zone, null for the one of the machine: its size, 0 when there is
// none or it does not fit. A system that keeps rules only has none.
std::size_t ReadZoneFile(const char* name, unsigned char* out, std::size_t size);

// The name of the zone that the machine is set to. False when that cannot be told.
bool ReadSystemZone(char* name, std::size_t size);

// The variable TZ of the process. Reading gives false, and an empty text, when it is not set or
// does not fit; setting copies the text, null removes the variable, and the C library goes by it.
constexpr std::size_t kZoneVariableSize = 256;  // more than programs set
bool GetZoneVariable(char* out, std::size_t size);
void SetZoneVariable(const char* text);

// A number for what the variable is, set or not: the same as long as it did not change, and another
// one afterwards. 0 where that is not known, as of a very long text. Fast when asked again.
std::uint32_t ZoneVariableState();

// Has the C library read the variable again, if that can make a difference; the same number. Where
// it goes by the zone of the machine, a change of that is seen after a second at most.
std::uint32_t RereadZoneVariable();

// Whether the C library finds a zone whose name the variable holds, or understands rules only.
extern const bool kZoneVariableTakesNames;

// Whether the variable decides what the system itself takes for its zone.
extern const bool kZoneVariableIsTheSystems;

}  // namespace genutil::platform
