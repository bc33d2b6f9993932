// The machine as described by /proc and /etc.
#include "osutil/platform/system/machine.h"

#include <sched.h>
#include <sys/resource.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "osutil/platform/posix/file/paths.h"
#include "osutil/platform/posix/system/group_limits.h"

namespace genutil::platform {

// The numbers exist only for processors that are no longer in use.
unsigned long ProcessorType() {
    return 0;
}

std::uint32_t ProcessId() {
    return static_cast<std::uint32_t>(getpid());
}

WindowsVersion ReadWindowsVersion() {
    return {};
}

// -- The system ----------------------------------------------------------------------------------

namespace {

// Reads the value of a line `PRETTY_NAME="Debian GNU/Linux 12 (bookworm)"`.
bool TakeValue(char* line, const char* key, char* out, std::size_t size) {
    const std::size_t length = std::strlen(key);
    if (std::strncmp(line, key, length) != 0 || line[length] != '=') return false;
    char* value = line + length + 1;
    value[std::strcspn(value, "\n")] = 0;
    if (*value == '"' || *value == '\'') {
        char* const close = std::strrchr(value + 1, *value);
        if (close) *close = 0;
        ++value;
    }
    std::snprintf(out, size, "%s", value);  // still in UTF-8
    return *out != 0;
}

}  // namespace

void ReadSystemName(char* out, std::size_t size) {
    char name[512] = "";  // also the maximum length of a line
    for (const char* path : {"/etc/os-release", "/usr/lib/os-release"}) {
        std::FILE* const file = std::fopen(path, "re");
        if (!file) continue;
        char line[512];
        while (!*name && std::fgets(line, sizeof line, file))
            TakeValue(line, "PRETTY_NAME", name, sizeof name);
        std::fclose(file);
        if (*name) break;
    }
    utsname system;
    if (!*name && uname(&system) == 0) std::snprintf(name, sizeof name, "%s", system.sysname);
    NameText(*name ? name : "Linux").CopyTo(out, size);
}

void ReadProgramPath(char* out, std::size_t size) {
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
    path[length > 0 ? length : 0] = 0;
    NameText(path).CopyTo(out, size);
}

int CountProcessors() {
    // A machine may have more processors than a set has room for.
    int count = static_cast<int>(sysconf(_SC_NPROCESSORS_ONLN));
    cpu_set_t allowed;
    if (sched_getaffinity(0, sizeof allowed, &allowed) == 0) count = CPU_COUNT(&allowed);
    return std::max(
        1, std::min(count, ReadGroupLimits("/sys/fs/cgroup", "/proc/self/cgroup").processors));
}

std::uint64_t UsableMemory() {
    return std::min(ReadMemory().totalPhysical,
                    ReadGroupLimits("/sys/fs/cgroup", "/proc/self/cgroup").memory);
}

void ReadHostName(char* out, std::size_t size) {
    utsname system;
    NameText(uname(&system) == 0 ? system.nodename : "").CopyTo(out, size);
}

// -- Memory --------------------------------------------------------------------------------------

namespace {

struct MemoryRow {
    const char* name;
    std::uint64_t* bytes;
};

// Reads lines such as "MemTotal:  16318764 kB".
void ReadKilobytes(const char* path, const MemoryRow* rows, std::size_t count) {
    std::FILE* const file = std::fopen(path, "re");
    if (!file) return;
    char line[256];
    while (std::fgets(line, sizeof line, file)) {
        const std::size_t length = std::strcspn(line, ":");
        unsigned long long kilobytes = 0;
        for (std::size_t i = 0; i < count; ++i)
            if (std::strlen(rows[i].name) == length &&
                std::memcmp(line, rows[i].name, length) == 0 &&
                std::sscanf(line + length + 1, "%llu", &kilobytes) == 1)
                *rows[i].bytes = kilobytes * 1024;
    }
    std::fclose(file);
}

}  // namespace

Memory ReadMemory() {
    Memory memory = {};
    std::uint64_t totalSwap = 0, freeSwap = 0, used = 0;
    const MemoryRow rows[] = {{"MemTotal", &memory.totalPhysical},
                              {"MemAvailable", &memory.availablePhysical},
                              {"SwapTotal", &totalSwap},
                              {"SwapFree", &freeSwap}};
    ReadKilobytes("/proc/meminfo", rows, std::size(rows));
    if (memory.totalPhysical == 0) return {};
    const MemoryRow size = {"VmSize", &used};
    ReadKilobytes("/proc/self/status", &size, 1);
    memory.load =
        static_cast<std::uint32_t>(100 - memory.availablePhysical * 100 / memory.totalPhysical);
    memory.totalPageFile = memory.totalPhysical + totalSwap;
    memory.availablePageFile = memory.availablePhysical + freeSwap;
    // The limit of the address space of this process, or the whole of it.
    rlimit limit = {};
    const bool limited = getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
    memory.totalVirtual = limited ? limit.rlim_cur : std::uint64_t{1} << 47;
    memory.availableVirtual = memory.totalVirtual > used ? memory.totalVirtual - used : 0;
    return memory;
}

}  // namespace genutil::platform
