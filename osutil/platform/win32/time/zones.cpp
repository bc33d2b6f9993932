// Time zones of the registry, and the variable TZ of the C runtime.
#include "osutil/platform/time/zones.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <initializer_list>

#include "osutil/platform/win32/scoped_handle.h"

namespace genutil::platform {

const bool kZoneVariableTakesNames = false;
const bool kZoneVariableIsTheSystems = false;

namespace {

constexpr char kZones[] = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Time Zones";

// The value "TZI" of a zone's key.
struct RegistryRule {
    LONG bias, standardBias, daylightBias;  // in minutes west of Greenwich
    SYSTEMTIME toStandard, toDaylight;
};

// Any program may have written the value. Numbers that are invalid for a zone would not fit in a
// rule.
bool IsSound(const RegistryRule& rule) {
    constexpr LONG kDay = 24 * 60;
    for (const LONG bias : {rule.bias, rule.standardBias, rule.daylightBias})
        if (bias < -kDay || bias > kDay) return false;
    for (const SYSTEMTIME& change : {rule.toStandard, rule.toDaylight})
        if (change.wMonth > 12 || change.wDay > (change.wYear ? 31 : 5) || change.wDayOfWeek > 6 ||
            change.wHour > 23 || change.wMinute > 59 || change.wSecond > 59)
            return false;
    return true;
}

class Key : public ScopedKey {
  public:
    Key(HKEY parent, const char* name) : ScopedKey(parent, name, KEY_READ) {}

    // Reads a text in UTF-8. It is empty if there is none.
    void ReadText(const wchar_t* value, char* out, int size) const {
        WCHAR wide[128] = {};
        DWORD bytes = sizeof wide - sizeof(WCHAR);
        out[0] = 0;
        if (RegQueryValueExW(Get(), value, nullptr, nullptr, reinterpret_cast<BYTE*>(wide),
                             &bytes) == ERROR_SUCCESS &&
            WideCharToMultiByte(CP_UTF8, 0, wide, -1, out, size, nullptr, nullptr) == 0)
            out[0] = 0;
    }
    bool ReadRule(RegistryRule* rule) const {
        DWORD bytes = sizeof *rule;
        return RegQueryValueExA(Get(), "TZI", nullptr, nullptr, reinterpret_cast<BYTE*>(rule),
                                &bytes) == ERROR_SUCCESS &&
               bytes == sizeof *rule && IsSound(*rule);
    }
};

// Writes "EST" for "Eastern Standard Time", which the C runtime accepts. A name in another script
// becomes the text supplied by the caller.
void WriteInitials(char (&out)[8], const char* name, const char* instead) {
    std::size_t n = 0;
    for (const char* p = name; *p && n + 1 < sizeof out; ++p)
        if ((p == name || p[-1] == ' ') && *p >= 'A' && *p <= 'Z') out[n++] = *p;
    out[n] = 0;
    if (n < 3) std::snprintf(out, sizeof out, "%s", instead);
}

// Writes minutes west in the notation of the variable: "5", "-5:30".
int WriteOffset(char* out, std::size_t size, LONG minutes) {
    const LONG magnitude = minutes < 0 ? -minutes : minutes;
    const char* const sign = minutes < 0 ? "-" : "";
    return magnitude % 60
               ? std::snprintf(out, size, "%s%ld:%02ld", sign, magnitude / 60, magnitude % 60)
               : std::snprintf(out, size, "%s%ld", sign, magnitude / 60);
}

// With a year, the change is a date, which is used for every year.
int WriteChange(char* out, std::size_t size, const SYSTEMTIME& change) {
    static constexpr int kBefore[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    if (change.wYear && change.wMonth)
        return std::snprintf(out, size, ",J%d/%d:%02d:%02d",
                             kBefore[change.wMonth - 1] + change.wDay, change.wHour, change.wMinute,
                             change.wSecond);
    return std::snprintf(out, size, ",M%d.%d.%d/%d:%02d:%02d", change.wMonth, change.wDay,
                         change.wDayOfWeek, change.wHour, change.wMinute, change.wSecond);
}

void WriteRule(char (&out)[64], const RegistryRule& rule, const char* standard,
               const char* daylight) {
    char name[8];
    int n = 0;
    const auto append = [&](auto write, auto... values) {
        n += write(out + n, sizeof out - static_cast<std::size_t>(n), values...);
    };
    const auto text = [](char* to, std::size_t size, const char* s) {
        return std::snprintf(to, size, "%s", s);
    };
    WriteInitials(name, standard, "STD");
    append(text, static_cast<const char*>(name));
    append(WriteOffset, rule.bias + rule.standardBias);
    if (rule.toDaylight.wMonth == 0) return;
    WriteInitials(name, daylight, "DST");
    append(text, static_cast<const char*>(name));
    // An offset of one hour ahead is the default.
    if (rule.daylightBias != rule.standardBias - 60)
        append(WriteOffset, rule.bias + rule.daylightBias);
    append(WriteChange, rule.toDaylight);
    append(WriteChange, rule.toStandard);
}

// Returns "(UTC+09:00) Osaka, Sapporo, Tokyo" without its offset.
const char* BehindOffset(const char* display) {
    const char* closing = *display == '(' ? std::strchr(display, ')') : nullptr;
    if (!closing) return display;
    return closing + 1 + std::strspn(closing + 1, " ");
}

bool ReadZone(HKEY zones, const char* name, Zone* zone) {
    const Key key(zones, name);
    RegistryRule rule;
    if (!key.Get() || std::strlen(name) >= sizeof zone->name || !key.ReadRule(&rule)) return false;
    char display[160], standard[96], daylight[96];
    key.ReadText(L"Display", display, sizeof display);
    key.ReadText(L"Std", standard, sizeof standard);
    key.ReadText(L"Dlt", daylight, sizeof daylight);
    std::strcpy(zone->name, name);
    std::snprintf(zone->place, sizeof zone->place, "%s", BehindOffset(display));
    WriteRule(zone->rule, rule, standard, daylight);
    return true;
}

}  // namespace

void VisitZones(void (*visit)(void* context, const Zone& zone), void* context) {
    const Key zones(HKEY_LOCAL_MACHINE, kZones);
    if (!zones.Get()) return;
    char name[256];  // the maximum length of a key name
    for (DWORD i = 0;; ++i) {
        DWORD length = sizeof name;
        if (RegEnumKeyExA(zones.Get(), i, name, &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS)
            return;
        Zone zone;
        if (ReadZone(zones.Get(), name, &zone)) visit(context, zone);
    }
}

bool ReadZoneRule(const char* name, char* rule, std::size_t size) {
    Zone zone;
    if (!name) {
        TIME_ZONE_INFORMATION own;
        if (GetTimeZoneInformation(&own) == TIME_ZONE_ID_INVALID) return false;
        // The bias and dates have the same meaning as in the registry. Names are not compared.
        const RegistryRule ownRule = {own.Bias, own.StandardBias, own.DaylightBias,
                                      own.StandardDate, own.DaylightDate};
        if (!IsSound(ownRule)) return false;
        WriteRule(zone.rule, ownRule, "", "");
        return std::snprintf(rule, size, "%s", zone.rule) < static_cast<int>(size);
    }
    const Key zones(HKEY_LOCAL_MACHINE, kZones);
    if (!*name || std::strchr(name, '\\') || !zones.Get() || !ReadZone(zones.Get(), name, &zone))
        return false;
    return std::snprintf(rule, size, "%s", zone.rule) < static_cast<int>(size);
}

std::size_t ReadZoneFile(const char*, unsigned char*, std::size_t) {
    return 0;
}

bool ReadSystemZone(char* name, std::size_t size) {
    DYNAMIC_TIME_ZONE_INFORMATION zone;
    if (GetDynamicTimeZoneInformation(&zone) == TIME_ZONE_ID_INVALID) return false;
    return WideCharToMultiByte(CP_UTF8, 0, zone.TimeZoneKeyName, -1, name, static_cast<int>(size),
                               nullptr, nullptr) > 1;
}

// The runtime has no lock for its variables.
static CRITICAL_SECTION* VariableLock() {
    static CRITICAL_SECTION lock;
    static const bool made = (InitializeCriticalSection(&lock), true);
    static_cast<void>(made);
    return &lock;
}

bool GetZoneVariable(char* out, std::size_t size) {
    EnterCriticalSection(VariableLock());
    const char* value = std::getenv("TZ");
    const bool fits = value && std::strlen(value) < size;
    std::strcpy(out, fits ? value : "");
    LeaveCriticalSection(VariableLock());
    return fits;
}

// The runtime does not report changes, so the text is compared. The lock must be held.
static std::uint32_t StateOf(const char* value) {
    static struct {
        bool isSet;
        char text[48];
        std::uint32_t state;
    } seen = {};
    const bool isSet = value != nullptr;
    if (!isSet) value = "";
    if (seen.state != 0 && seen.isSet == isSet && std::strcmp(seen.text, value) == 0)
        return seen.state;
    if (std::strlen(value) >= sizeof seen.text) return 0;
    seen.isSet = isSet;
    std::strcpy(seen.text, value);
    if (++seen.state == 0) ++seen.state;
    return seen.state;
}

std::uint32_t ZoneVariableState() {
    EnterCriticalSection(VariableLock());
    const std::uint32_t state = StateOf(std::getenv("TZ"));
    LeaveCriticalSection(VariableLock());
    return state;
}

void SetZoneVariable(const char* text) {
    char setting[256] = "TZ=";
    if (text && std::strlen(text) + 4 > sizeof setting) return;
    if (text) std::strcpy(setting + 3, text);
    EnterCriticalSection(VariableLock());
    _putenv(setting);  // the runtime copies it; an empty value removes the variable
    _tzset();
    LeaveCriticalSection(VariableLock());
}

// While the variable and the runtime's interpretation of it are the same as after its last reading,
// another reading changes nothing and takes longer than a conversion. If the zone of the machine
// applies, the system must be queried, for which once a second is sufficient.
std::uint32_t RereadZoneVariable() {
    static struct {
        std::uint32_t state;
        long west;
        int hasDaylight;
        DWORD second;
    } last = {};
    EnterCriticalSection(VariableLock());
    const char* value = std::getenv("TZ");
    const std::uint32_t state = StateOf(value);
    const DWORD second = value && *value ? 0 : GetTickCount() / 1000;
    if (state == 0 || last.state != state || last.west != _timezone ||
        last.hasDaylight != _daylight || last.second != second) {
        _tzset();
        last = {state, _timezone, _daylight, second};
    }
    LeaveCriticalSection(VariableLock());
    return state;
}

}  // namespace genutil::platform
