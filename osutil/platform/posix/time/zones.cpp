// Time zones of the system's tz database, and the variable TZ.
#include "osutil/platform/time/zones.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <mutex>
#include <new>

#include "genutil/ascii.h"

namespace genutil::platform {

const bool kZoneVariableTakesNames = true;
const bool kZoneVariableIsTheSystems = true;

namespace {

// The only lock for the library's access to the environment. The C library's lock covers setting
// variables, but readers then see the array of variables while it is moved.
std::mutex g_variable;

// Writes "/usr/share/zoneinfo/Asia/Tokyo". Returns false if it does not fit.
bool WritePath(char* out, std::size_t size, const char* file) {
    const std::lock_guard<std::mutex> lock(g_variable);
    const char* folder = std::getenv("TZDIR");
    const int length =
        std::snprintf(out, size, "%s/%s", folder && *folder ? folder : "/usr/share/zoneinfo", file);
    return length >= 0 && static_cast<std::size_t>(length) < size;
}

// Returns true for a name such as "Asia/Tokyo", which neither leads out of the directory nor
// denotes another kind of file.
bool IsZoneName(const char* name) {
    if (!*name || *name == '/') return false;
    for (const char* p = name; *p; ++p) {
        if (!IsAsciiLetter(*p) && !IsAsciiDigit(*p) && !std::strchr("/_+-", *p)) return false;
    }
    return true;
}

// Null denotes the zone of the machine. Returns a negative number if there is none.
int OpenZone(const char* name) {
    char path[512] = "/etc/localtime";
    if (name && std::strcmp(name, path) != 0 &&
        !(IsZoneName(name) && WritePath(path, sizeof path, name)))
        return -1;
    return open(path, O_RDONLY | O_CLOEXEC);
}

// Reads the last line of a compiled zone file, which is the rule for the years that it does not
// list.
bool ReadLastLine(int file, char* rule, std::size_t size) {
    char magic[4], tail[80];
    if (read(file, magic, sizeof magic) != 4 || std::memcmp(magic, "TZif", 4) != 0) return false;
    const off_t length = lseek(file, 0, SEEK_END);
    const off_t from = length > static_cast<off_t>(sizeof tail) ? length - off_t{sizeof tail} : 0;
    const ssize_t got = pread(file, tail, sizeof tail, from);
    if (got < 2 || tail[got - 1] != '\n') return false;
    const auto* line = static_cast<const char*>(memrchr(tail, '\n', static_cast<size_t>(got - 1)));
    if (!line) return false;
    const auto bytes = static_cast<std::size_t>(tail + got - 1 - (line + 1));
    if (bytes == 0 || bytes >= size) return false;
    std::memcpy(rule, line + 1, bytes);
    rule[bytes] = 0;
    return true;
}

// Lines of a table in the database. Fields are separated by tabs, and "#" begins a comment.
class Table {
  public:
    explicit Table(const char* name) {
        char path[512];
        m_file = WritePath(path, sizeof path, name) ? std::fopen(path, "re") : nullptr;
    }
    ~Table() {
        if (m_file) std::fclose(m_file);
    }
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    bool Next() {
        while (m_file && std::fgets(m_line, sizeof m_line, m_file)) {
            if (*m_line == '#') continue;
            m_line[std::strcspn(m_line, "\n")] = 0;
            return true;
        }
        return false;
    }
    // Returns a field of the current line. The text ends at the next tab.
    const char* Field(int number) const {
        const char* field = m_line;
        for (; number > 0 && field; --number)
            if ((field = std::strchr(field, '\t'))) ++field;
        return field ? field : "";
    }

  private:
    std::FILE* m_file;
    char m_line[512];
};

// English names of countries by their two-letter codes.
class Countries {
  public:
    Countries() {
        for (Table table("iso3166.tab"); table.Next();) {
            const char* code = table.Field(0);
            if (char* name = Name(code))
                std::snprintf(name, kSize, "%.*s", static_cast<int>(kSize) - 1, table.Field(1));
        }
    }
    char* Name(const char* code) {
        const bool letters = code[0] >= 'A' && code[0] <= 'Z' && code[1] >= 'A' && code[1] <= 'Z';
        return letters ? m_names[code[0] - 'A'][code[1] - 'A'] : nullptr;
    }

  private:
    static constexpr std::size_t kSize = 64;
    char m_names[26][26][kSize] = {};
};

// Converts "America/Argentina/Buenos_Aires" in Argentina to "Buenos Aires, Argentina": the parts of
// the name after the continent, smallest first, and the country.
void WritePlace(char* out, std::size_t size, const char* name, const char* country) {
    std::size_t n = 0;
    const auto append = [&](const char* text, std::size_t length) {
        if (n && n + 1 < size) out[n++] = ',';
        if (n && n + 1 < size) out[n++] = ' ';
        for (std::size_t i = 0; i < length && n + 1 < size; ++i)
            out[n++] = text[i] == '_' ? ' ' : text[i];
        out[n] = 0;
    };
    for (std::size_t end = std::strlen(name);;) {
        const void* slash = memrchr(name, '/', end);
        if (!slash) break;
        const char* part = static_cast<const char*>(slash) + 1;
        const auto length = static_cast<std::size_t>(name + end - part);
        if (std::strlen(country) != length || std::memcmp(part, country, length) != 0)
            append(part, length);
        end = static_cast<std::size_t>(part - 1 - name);
    }
    if (*country) append(country, std::strlen(country));
}

}  // namespace

bool ReadZoneRule(const char* name, char* rule, std::size_t size) {
    const int file = OpenZone(name);
    if (file < 0) return false;
    const bool read = ReadLastLine(file, rule, size);
    close(file);
    return read;
}

std::size_t ReadZoneFile(const char* name, unsigned char* out, std::size_t size) {
    const int file = OpenZone(name);
    if (file < 0) return 0;
    std::size_t length = 0;
    ssize_t got = 0;
    while (length < size && (got = read(file, out + length, size - length)) > 0)
        length += static_cast<std::size_t>(got);
    close(file);
    return got == 0 && length < size ? length : 0;
}

void VisitZones(void (*visit)(void* context, const Zone& zone), void* context) {
    Zone zone = {};
    auto* const countries = new (std::nothrow) Countries;
    for (Table table("zone.tab"); countries && table.Next();) {
        std::snprintf(zone.name, sizeof zone.name, "%.*s",
                      static_cast<int>(std::strcspn(table.Field(2), "\t")), table.Field(2));
        if (!ReadZoneRule(zone.name, zone.rule, sizeof zone.rule)) continue;
        const char* country = countries->Name(table.Field(0));
        WritePlace(zone.place, sizeof zone.place, zone.name, country ? country : "");
        visit(context, zone);
    }
    delete countries;
    visit(context, {"UTC", "Coordinated Universal Time", "UTC0"});
}

bool ReadSystemZone(char* name, std::size_t size) {
    char target[512];
    const ssize_t length = readlink("/etc/localtime", target, sizeof target - 1);
    if (length > 0) {
        target[length] = 0;
        const char* found = std::strstr(target, "zoneinfo/");
        if (!found) return false;
        found += std::strlen("zoneinfo/");
        const auto bytes = static_cast<std::size_t>(std::snprintf(name, size, "%s", found));
        return bytes < size && IsZoneName(name);
    }
    // If it is a copy instead of a link, its name is in the file next to it, if anywhere. Otherwise
    // the C library's name is used.
    if (std::FILE* file = std::fopen("/etc/timezone", "re")) {
        const bool read = std::fgets(name, static_cast<int>(size), file) != nullptr;
        std::fclose(file);
        if (read) name[std::strcspn(name, "\n")] = 0;
        if (read && IsZoneName(name)) return true;
    }
    if (access("/etc/localtime", F_OK) == 0) return false;
    return std::snprintf(name, size, "UTC") < static_cast<int>(size);
}

// The last known state of the variable; the lock must be held. Searching for the variable takes
// longer than a conversion, so its position in the environment is stored. If another part of the
// program changes it, that position holds a different pointer.
static struct {
    char** environment;
    std::size_t slot;
    const char* entry;    // "TZ=..." in that slot; null if the variable is not set
    bool own;             // made by setenv() here, and therefore never changed in place
    bool isSet;           // true if the variable was set in `state`
    char text[48];        // its value in `state`
    std::uint32_t state;  // 0 before the first call
} g_seen;

static bool IsZoneEntry(const char* entry) {
    return entry[0] == 'T' && entry[1] == 'Z' && entry[2] == '=';
}

// Returns null if the variable is not set.
static const char* ZoneVariable() {
    if (!g_seen.entry || environ != g_seen.environment || environ[g_seen.slot] != g_seen.entry) {
        std::size_t i = 0;
        while (environ && environ[i] && !IsZoneEntry(environ[i])) ++i;
        g_seen.environment = environ;
        g_seen.slot = i;
        g_seen.entry = environ ? environ[i] : nullptr;
        g_seen.own = false;
    }
    return g_seen.entry ? g_seen.entry + 3 : nullptr;
}

static std::uint32_t StateOf(const char* value) {
    if (value ? g_seen.own || (g_seen.isSet && std::strcmp(value, g_seen.text) == 0)
              : !g_seen.isSet && g_seen.state != 0)
        return g_seen.state;
    const std::size_t size = value ? std::strlen(value) + 1 : 1;
    if (size > sizeof g_seen.text) return 0;
    g_seen.isSet = value != nullptr;
    std::memcpy(g_seen.text, value ? value : "", size);
    if (++g_seen.state == 0) ++g_seen.state;
    return g_seen.state;
}

std::uint32_t ZoneVariableState() {
    const std::lock_guard<std::mutex> lock(g_variable);
    return StateOf(ZoneVariable());
}

bool GetZoneVariable(char* out, std::size_t size) {
    const std::lock_guard<std::mutex> lock(g_variable);
    const char* value = ZoneVariable();
    const std::size_t length = value ? std::strlen(value) : size;
    const bool fits = length < size;
    std::memcpy(out, fits ? value : "", fits ? length + 1 : 1);
    return fits;
}

void SetZoneVariable(const char* text) {
    const std::lock_guard<std::mutex> lock(g_variable);
    if (text)
        setenv("TZ", text, 1);
    else
        unsetenv("TZ");
    tzset();
    const char* value = ZoneVariable();
    g_seen.own = StateOf(value) != 0 && value;
}

// These values show how the C library interprets a zone. While they and the variable are the same
// as after its last reading, another reading changes nothing and takes as long as a conversion. If
// the zone of the machine applies, a file must be examined, for which once a second is sufficient.
std::uint32_t RereadZoneVariable() {
    static struct {
        std::uint32_t state;
        const char *standard, *daylight;
        long west;
        int hasDaylight;
        std::time_t second;
    } last = {};
    const std::lock_guard<std::mutex> lock(g_variable);
    const char* value = ZoneVariable();
    const std::uint32_t state = StateOf(value);
    timespec now = {};
    if (!value || !*value) clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    if (state != 0 && last.state == state && last.standard == tzname[0] &&
        last.daylight == tzname[1] && last.west == timezone && last.hasDaylight == daylight &&
        last.second == now.tv_sec)
        return state;
    tzset();
    last = {state, tzname[0], tzname[1], timezone, daylight, now.tv_sec};
    return state;
}

}  // namespace genutil::platform
