// Settings of a trace beyond its members, which programs have compiled in. They are kept with its
// mutex and therefore shared by copies of a trace.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "genstr.h"
#include "gentrace.h"
#include "genutil/allocate.h"
#include "genutil/diagnostics/trace_queue.h"
#include "osutil/thread/lock.h"

namespace genutil {

// One state of the settings. It does not change once threads can see it.
struct TraceSettings {
    CGNString format;   // of lines; empty for the default
    CGNString modules;  // whose messages are written, see AdmitsModule()
    CGNTrace::Sink sink = nullptr;
    void* sinkArgument = nullptr;
    std::int32_t keptFiles = 0;
    bool isJson = false, isUtc = false, isDaily = false;
    TraceSettings* older = nullptr;  // kept, because a thread may still be reading it
};

struct TraceMutex : _osmutex {
    std::atomic<TraceSettings*> settings;  // null for the defaults
    std::atomic<TraceQueue*> queue;        // null unless lines are written asynchronously
    std::int32_t fileDay;                  // day number of the open file's first line; 0 if unknown
    // Held while the sink runs, without the trace's own mutex, which the writing thread of the
    // queue may need before the sink returns.
    _osmutex sinkMutex;
};

TraceMutex* NewTraceMutex();
bool MakeTraceMutexUsable(TraceMutex* mutex);  // as MakeMutexUsable()
void DestroyTraceMutex(_osmutex* mutex);       // null is allowed

// Passes a line to the sink, if there is one.
void WriteToSink(TraceMutex* mutex, const char* line, std::size_t length);

// Returns the current settings, or null for the defaults.
inline const TraceSettings* SettingsOf(const _osmutex* mutex) {
    return mutex ? static_cast<const TraceMutex*>(mutex)->settings.load(std::memory_order_acquire)
                 : nullptr;
}

// Publishes settings that `change` has modified. Returns false if it returns false or if allocation
// fails.
template <class Change>
bool ChangeSettings(TraceMutex* mutex, Change change) {
    TraceSettings* older = mutex->settings.load(std::memory_order_relaxed);
    auto* settings = older ? New<TraceSettings>(*older) : New<TraceSettings>();
    if (!settings) return false;
    const bool isCopied =
        !older || (settings->format == older->format && settings->modules == older->modules);
    if (!isCopied || !change(*settings)) {
        delete settings;
        return false;
    }
    settings->older = older;
    mutex->settings.store(settings, std::memory_order_release);
    return true;
}

// Returns true if the list of modules is empty or contains the name. Names are separated by commas;
// a list that begins with "-" contains the modules that are not written.
bool AdmitsModule(const char* modules, const char* name);

}  // namespace genutil
