// The record of a mutex, and the operations of the library's own locks on it.
#pragma once

#include <atomic>

#include "osthread.h"
#include "osutil/platform/thread/threading.h"
#include "osutil/thread/thread_record.h"
#include "osutil/thread/threaded.h"

struct _osmutex {
    genutil::platform::Mutex* handle;  // null if created while the process was not threaded
    // The last thread that took the mutex, 0 after a release: for inspection of a process. A
    // release of an inner level also clears it.
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

// Creates the system object of a mutex that was created before the process was threaded. Returns
// true if the mutex can be waited for, or if the process is not threaded.
bool MakeMutexUsable(_osmutex* mutex);

// Returns true if a condition, which may be null, has its system objects.
bool IsUsable(const _oscondition* condition);

// The complete calls, if they require more than a few instructions.
bool WaitAtLength(_osmutex* mutex, std::uint32_t limit);
bool ReleaseAtLength(_osmutex* mutex);

// Performs OSMutexWait() if that requires only a few instructions. Otherwise returns false. The
// process must be threaded.
inline bool TakeMutexAtOnce(_osmutex* mutex, Sharing sharing) {
    ThreadRecord* self = KnownThreadRecord();
    if (!self || !platform::TakeMutexAtOnce(mutex->handle, sharing)) return false;
    NoteWait(self, mutex);
    return true;
}

// Performs OSMutexRelease(). Returns true if the calling thread held the mutex. The process must be
// threaded.
inline bool ReleaseMutex(_osmutex* mutex, Sharing sharing) {
    ThreadRecord* self = KnownThreadRecord();
    if (!self || !self->held.RemoveLast(mutex)) return ReleaseAtLength(mutex);
    self->CountCall();
    return ReleaseHandle(mutex, sharing);
}

// OSMutexTryWait() and OSMutexRelease() for internal callers.
inline bool WaitMutex(_osmutex* mutex, std::uint32_t limit = platform::kNoLimit) {
    return !IsThreaded() || !mutex || TakeMutexAtOnce(mutex, Sharing::kShared) ||
           WaitAtLength(mutex, limit);
}
inline void EndMutex(_osmutex* mutex) {
    if (IsThreaded() && mutex) ReleaseMutex(mutex, Sharing::kShared);
}

}  // namespace genutil
