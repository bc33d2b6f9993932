// Platform layer: time zones.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// A zone of the system. Its rule, in the notation of the variable TZ, is the one in force today.
struct Zone {
    char name[48];    // the system's own name: "Asia/Tokyo", "Tokyo Standard Time"
    char place[112];  // the region in English, in UTF-8: "Tokyo, Japan"
    char rule[64];
};

// Calls `visit` with each zone that a user could choose, in no particular order. Reads files or the
// registry.
void VisitZones(void (*visit)(void* context, const Zone& zone), void* context);

// Reads the rule of any zone that the system knows, including old names. Null denotes the zone of
// the machine. Returns false if the zone is unknown.
bool ReadZoneRule(const char* name, char* rule, std::size_t size);

// Reads the compiled file of a zone. Null denotes the zone of the machine. Returns its size, or 0
// if there is none, if it does not fit, or if the system has only rules.
std::size_t ReadZoneFile(const char* name, unsigned char* out, std::size_t size);

// Reads the name of the zone to which the machine is set. Returns false if it cannot be determined.
bool ReadSystemZone(char* name, std::size_t size);

// The environment variable TZ. GetZoneVariable() returns false, with an empty text, if it is not
// set or does not fit. SetZoneVariable() copies the text and makes the C library use it. Null
// removes the variable.
constexpr std::size_t kZoneVariableSize = 256;  // longer than programs set
bool GetZoneVariable(char* out, std::size_t size);
void SetZoneVariable(const char* text);

// Returns a number for the state of the variable, set or not: the same while it has not changed,
// and another one after a change. Returns 0 if the state is unknown, as for a very long text. Fast
// when repeated.
std::uint32_t ZoneVariableState();

// Makes the C library read the variable again if that can make a difference. Returns the same
// number as ZoneVariableState(). If the C library uses the zone of the machine, a change of that
// zone is detected within a second.
std::uint32_t RereadZoneVariable();

// True if the C library finds a zone by the name in the variable, false if it understands rules
// only.
extern const bool kZoneVariableTakesNames;

// True if the variable determines the zone of the system itself.
extern const bool kZoneVariableIsTheSystems;

}  // namespace genutil::platform
