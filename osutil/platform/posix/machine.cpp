// The machine as /proc and /etc tell it; kept awake through the session's manager.
#include "osutil/platform/machine.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <mutex>

#include "mbutil.h"
#include "osutil/platform/posix/paths.h"

namespace genutil::platform {

// What there are numbers for is long gone.
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

// The value of a line `PRETTY_NAME="Debian GNU/Linux 12 (bookworm)"`.
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
    std::snprintf(out, size, "%s", value);  // UTF-8 as yet
    return *out != 0;
}

void CopyName(const char* name, char* out, std::size_t size) {
    const NameText text(name);
    const char* const from = text.Get() ? text.Get() : "";
    out[mbstrncpyi(out, from, static_cast<unsigned>(size - 1))] = 0;
}

}  // namespace

bool ReadSystemName(char* out, std::size_t size) {
    char name[512] = "";  // as long as a line
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
    CopyName(*name ? name : "Linux", out, size);
    return true;
}

void ReadHostName(char* out, std::size_t size) {
    utsname system;
    CopyName(uname(&system) == 0 ? system.nodename : "", out, size);
}

// -- Memory --------------------------------------------------------------------------------------

namespace {

struct MemoryRow {
    const char* name;
    std::uint64_t* bytes;
};

// Lines "MemTotal:  16318764 kB".
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
    // What a process may have of its address space, or all of it.
    rlimit limit = {};
    const bool limited = getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
    memory.totalVirtual = limited ? limit.rlim_cur : std::uint64_t{1} << 47;
    memory.availableVirtual = memory.totalVirtual > used ? memory.totalVirtual - used : 0;
    return memory;
}

// -- Keeping awake -------------------------------------------------------------------------------

// The session's manager keeps the machine awake while a file that it hands out is open. libsystemd
// speaks to it; machines without it, or without a manager, sleep as they like.
namespace {

struct Bus;
struct Message;
using OpenSystem = int (*)(Bus**);
using SetTimeout = int (*)(Bus*, std::uint64_t);
using CallMethod = int (*)(Bus*, const char*, const char*, const char*, const char*, void*,
                           Message**, const char*, ...);
using ReadReply = int (*)(Message*, const char*, ...);
using FreeReply = Message* (*)(Message*);
using CloseBus = Bus* (*)(Bus*);

struct Manager {
    OpenSystem open;
    SetTimeout setTimeout;
    CallMethod call;
    ReadReply read;
    FreeReply freeReply;
    CloseBus close;
};

struct {
    std::mutex lock;
    Manager manager = {};
    int file = -1;
    bool refused = false;  // asked in vain: not asked again
} g_awake;

template <class Function>
bool Find(void* library, const char* name, Function* function) {
    *function = reinterpret_cast<Function>(dlsym(library, name));
    return *function != nullptr;
}

int TakeFile(const Manager& manager, Bus* bus, const char* what) {
    Message* reply = nullptr;
    if (manager.call(bus, "org.freedesktop.login1", "/org/freedesktop/login1",
                     "org.freedesktop.login1.Manager", "Inhibit", nullptr, &reply, "ssss", what,
                     program_invocation_short_name, "work in progress", "block") < 0)
        return -1;
    int file = -1;
    if (manager.read(reply, "h", &file) >= 0) file = fcntl(file, F_DUPFD_CLOEXEC, 3);
    manager.freeReply(reply);
    return file;
}

int StayAwake(const Manager& manager) {
    constexpr std::uint64_t kMicroseconds = 2000000;
    Bus* bus = nullptr;
    if (manager.open(&bus) < 0) return -1;
    manager.setTimeout(bus, kMicroseconds);
    int file = TakeFile(manager, bus, "sleep:idle");
    if (file < 0) file = TakeFile(manager, bus, "idle");  // needs fewer rights
    manager.close(bus);
    return file;
}

void Sleep() {
    if (g_awake.file >= 0) close(g_awake.file);
    g_awake.file = -1;
}

}  // namespace

void* LoadAwakeLibrary() {
    return dlopen("libsystemd.so.0", RTLD_NOW | RTLD_LOCAL);
}

void* FindAwakeFunction(void* library) {
    const std::lock_guard<std::mutex> lock(g_awake.lock);
    Manager& manager = g_awake.manager;
    g_awake.refused = false;
    const bool all = Find(library, "sd_bus_open_system", &manager.open) &&
                     Find(library, "sd_bus_set_method_call_timeout", &manager.setTimeout) &&
                     Find(library, "sd_bus_call_method", &manager.call) &&
                     Find(library, "sd_bus_message_read", &manager.read) &&
                     Find(library, "sd_bus_message_unref", &manager.freeReply) &&
                     Find(library, "sd_bus_flush_close_unref", &manager.close);
    return all ? &manager : nullptr;
}

void CallAwakeFunction(void* function, unsigned long flags) {
    const std::lock_guard<std::mutex> lock(g_awake.lock);
    if (flags != kStayAwake) return Sleep();
    if (g_awake.file >= 0 || g_awake.refused) return;
    g_awake.file = StayAwake(*static_cast<const Manager*>(function));
    g_awake.refused = g_awake.file < 0;
}

void FreeAwakeLibrary(void* library) {
    {
        const std::lock_guard<std::mutex> lock(g_awake.lock);
        Sleep();
    }
    dlclose(library);
}

}  // namespace genutil::platform
