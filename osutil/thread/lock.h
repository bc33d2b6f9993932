// The record of a mutex, and the steps that the library's own locks take with it.
#pragma once

#include <atomic>

#include "osthread.h"
#include "osutil/platform/thread/threading.h"
#include "osutil/thread/thread_record.h"
#include "osutil/thread/threaded.h"

struct _osmutex {
    genutil::platform::Mutex* handle;  // null when made in a process that was not threaded
    // The thread that took it last, 0 since a release: for whoever looks into a process. A release
    // of an inner level clears it too.
    std::atomic<unsigned long> owner;
};
static_assert(sizeof(void*) != 4 || sizeof(_osmutex) == 8);

namespace genutil {

using platform::Sharing;

inline void NoteWait(ThreadRecord* self, _osmutex* mutex) {
    self->CountCall();
    mutex->owner.store(self->thread, std::memory_order_relaxed);
    self->held.Add(mutex);
}

inline bool ReleaseHandle(_osmutex* mutex, Sharing sharing = Sharing::kShared) {
    mutex->owner.store(0, std::memory_order_relaxed);
    return Succeeded(platform::ReleaseMutex(mutex->handle, sharing));
}

// Makes the system's object of a mutex that was made before the process was threaded. Returns true
// if the mutex can be waited for, or the process is not threaded.
bool MakeMutexUsable(_osmutex* mutex);

// The two calls in full, for where they take more than a few instructions.
void WaitAtLength(_osmutex* mutex);
bool ReleaseAtLength(_osmutex* mutex);

// OSMutexWait as far as it is a few instructions; false when it takes more. The process is
// threaded.
inline bool TakeMutexAtOnce(_osmutex* mutex, Sharing sharing) {
    ThreadRecord* self = KnownThreadRecord();
    if (!self || !platform::TakeMutexAtOnce(mutex->handle, sharing)) return false;
    NoteWait(self, mutex);
    return true;
}

// OSMutexRelease; whether the calling thread held the mutex. The process is threaded.
inline bool ReleaseMutex(_osmutex* mutex, Sharing sharing) {
    ThreadRecord* self = KnownThreadRecord();
    if (!self || !self->held.RemoveLast(mutex)) return ReleaseAtLength(mutex);
    self->CountCall();
    return ReleaseHandle(mutex, sharing);
}

// OSMutexWait and OSMutexRelease, for callers inside.
inline void WaitMutex(_osmutex* mutex) {
    if (IsThreaded() && mutex && !TakeMutexAtOnce(mutex, Sharing::kShared)) WaitAtLength(mutex);
}
inline void EndMutex(_osmutex* mutex) {
    if (IsThreaded() && mutex) ReleaseMutex(mutex, Sharing::kShared);
}

}  // namespace genutil
