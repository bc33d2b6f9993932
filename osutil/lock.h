// The record of a mutex, and the steps that the library's own locks take with it.
#pragma once

#include <atomic>

#include "osutil/platform/threading.h"

struct _osmutex {
    genutil::platform::Mutex* handle;  // null when made in a process that was not threaded
    // The thread that took it last, 0 since a release: for whoever looks into a process. A release
    // of an inner level clears it too.
    std::atomic<unsigned long> owner;
};
static_assert(sizeof(void*) != 4 || sizeof(_osmutex) == 8);

namespace genutil {

using platform::Sharing;

// OSMutexWait as far as it is a few instructions; false when it must be called. True, with nothing
// done, in a process that is not threaded.
bool TakeMutexAtOnce(_osmutex* mutex, Sharing sharing);

// OSMutexRelease; whether the calling thread held the mutex.
bool ReleaseMutex(_osmutex* mutex, Sharing sharing);

}  // namespace genutil
