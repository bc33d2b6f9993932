// Time zones by name: the available ones, their display, and the zone of the process.
#include <cstdio>
#include <cstring>

#include "genutil/mbutil/copy_out.h"
#include "genutil/mbutil/display_text.h"
#include "genutil/zone/windows_names.h"
#include "genutil/zone/zone_catalogue.h"
#include "genutil/zone/zone_rule.h"
#include "mbutil.h"
#include "osutil/platform/time/zones.h"

using namespace genutil;

namespace {

// A zone that the system knows.
struct SystemZone {
    char name[48];
    char rule[64];
};

bool TakeZone(SystemZone* zone, const char* name) {
    if (!platform::ReadZoneRule(name, zone->rule, sizeof zone->rule)) return false;
    return std::snprintf(zone->name, sizeof zone->name, "%s", name) <
           static_cast<int>(sizeof zone->name);
}

// Finds a zone by its name in either family, whichever this system uses.
bool FindSystemZone(SystemZone* zone, const char* name) {
    if (!name || !*name) return false;
    if (TakeZone(zone, name)) return true;
    if (const char* windows = WindowsZone(name)) return TakeZone(zone, windows);
    char usual[48];
    return ZoneOfWindows(usual, sizeof usual, name) && TakeZone(zone, usual);
}

// The last argument and result of mbSetTZone(), while they are in force.
struct {
    char name[48];
    char variable[64];
} g_set;

}  // namespace

int mbGetNextTZone(char* name, int size, mbTZoneCursor* cursor) {
    const ZoneCatalogue& catalogue = GetZoneCatalogue();
    const std::size_t next =
        cursor->position[0] == -1 ? 0 : static_cast<std::size_t>(cursor->position[0]) + 1;
    if (next >= catalogue.count) return 0;
    cursor->position[0] = static_cast<int>(next);
    CopyWhole(name, size, catalogue.rows[next].name);
    return static_cast<int>(std::strlen(catalogue.rows[next].name));
}

int mbDisplayTZone(char* out, int size, const char* name) {
    if (!out || size <= 0) return 0;
    *out = 0;
    if (!name) return 0;
    if (const ZoneRow* row = FindZone(name)) return WriteDisplayText(out, size, row->display);
    SystemZone zone;
    ZoneRule rule;
    if (!FindSystemZone(&zone, name) || !ParseZoneRule(zone.rule, &rule)) return 0;
    char display[128];
    WriteZoneDisplay(display, sizeof display, rule.standardOffset, name);
    return WriteDisplayText(out, size, display);
}

int mbGetTZoneRule(char* out, int size, const char* name) {
    SystemZone zone;
    return CopyWhole(out, size, FindSystemZone(&zone, name) ? zone.rule : "");
}

int mbGetWindowsTZone(char* out, int size, const char* name) {
    const char* windows = name ? WindowsZone(name) : nullptr;
    return CopyWhole(out, size, windows ? windows : "");
}

int mbGetTZoneOfWindows(char* out, int size, const char* windowsName) {
    char name[48] = "";
    if (windowsName && !ZoneOfWindows(name, sizeof name, windowsName)) *name = 0;
    return CopyWhole(out, size, name);
}

int mbSetTZone(const char* name) {
    if (!name || !*name) {
        platform::SetZoneVariable(nullptr);
        return 1;
    }
    SystemZone zone;
    ZoneRule rule;
    const bool known = FindSystemZone(&zone, name);
    if (!known && !ParseZoneRule(name, &rule)) return 0;
    const char* value = !known ? name : platform::kZoneVariableTakesNames ? zone.name : zone.rule;
    if (std::strlen(value) >= sizeof g_set.variable) return 0;
    platform::SetZoneVariable(value);
    CopyWhole(g_set.variable, sizeof g_set.variable, value);
    CopyWhole(g_set.name, sizeof g_set.name, name);
    return 1;
}

int mbGetTZone(char* out, int size) {
    char name[256];
    if (platform::GetZoneVariable(name, sizeof name)) {
        const bool set = *g_set.name && std::strcmp(name, g_set.variable) == 0;
        return CopyWhole(out, size, set ? g_set.name : name + (*name == ':'));
    }
    char usual[48];
    if (!platform::ReadSystemZone(name, sizeof name)) *name = 0;
    const bool windows = *name && ZoneOfWindows(usual, sizeof usual, name);
    return CopyWhole(out, size, windows ? usual : name);
}
