#include "genutil/diagnostics/trace_settings.h"

#include <cstring>
#include <new>

#include "genutil/assert_allocation.h"
#include "osthread.h"
#include "osutil/platform/thread/threading.h"
#include "osutil/thread/mutex_holder.h"

namespace genutil {

TraceMutex* NewTraceMutex() {
    void* memory = Allocate(sizeof(TraceMutex));
    if (!AssertAllocation(memory != nullptr, "genutil/gentrace", __LINE__)) return nullptr;
    auto* mutex = new (memory) TraceMutex{};
    MakeTraceMutexUsable(mutex);
    return mutex;
}

bool MakeTraceMutexUsable(TraceMutex* mutex) {
    return MakeMutexUsable(mutex) && MakeMutexUsable(&mutex->sinkMutex);
}

void DestroyTraceMutex(_osmutex* mutex) {
    if (!mutex) return;
    TraceSettings* settings = static_cast<TraceMutex*>(mutex)->settings.load();
    while (settings) {
        TraceSettings* older = settings->older;
        delete settings;
        settings = older;
    }
    platform::CloseMutex(static_cast<TraceMutex*>(mutex)->sinkMutex.handle);
    OSMutexDestroy(mutex);
}

void WriteToSink(TraceMutex* mutex, const char* line, std::size_t length) {
    const MutexHolder lock(&mutex->sinkMutex);
    // Read under the lock, because ResetSink() waits for it: the earlier argument may be freed
    // then.
    const TraceSettings* settings = SettingsOf(mutex);
    if (settings && settings->sink)
        settings->sink(line, static_cast<long>(length), settings->sinkArgument);
}

bool AdmitsModule(const char* modules, const char* name) {
    const bool excludes = *modules == '-';
    const char* at = modules + (excludes ? 1 : 0);
    if (!*at) return true;
    const std::size_t length = std::strlen(name);
    for (;;) {
        const std::size_t item = std::strcspn(at, ",");
        if (item == length && std::memcmp(at, name, length) == 0) return !excludes;
        if (!at[item]) return excludes;
        at += item + 1;
    }
}

}  // namespace genutil
