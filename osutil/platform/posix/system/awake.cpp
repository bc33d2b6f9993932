// The session manager keeps the machine awake while a file that it provides is open. libsystemd
// communicates with it. Machines without the library or the manager sleep as usual.
#include "osutil/platform/system/awake.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <mutex>
#include <new>
#include <utility>

namespace genutil::platform {

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
    bool refused = false;  // a request failed; it is not repeated
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
    if (file < 0) file = TakeFile(manager, bus, "idle");  // requires fewer permissions
    manager.close(bus);
    return file;
}

void Sleep() {
    const int file = std::exchange(g_awake.file, -1);
    if (file >= 0) close(file);
}

// In a forked process: only the parent keeps the machine awake, and a lock held by another thread
// of the parent would never be released.
void LeaveToParent() {
    new (&g_awake.lock) std::mutex;
    Sleep();
    g_awake.refused = false;
}

void PrepareForForks() {
    [[maybe_unused]] static const int s_result = pthread_atfork(nullptr, nullptr, LeaveToParent);
}

}  // namespace

void* LoadAwakeLibrary() {
    return dlopen("libsystemd.so.0", RTLD_NOW | RTLD_LOCAL);
}

void* FindAwakeFunction(void* library) {
    PrepareForForks();
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
