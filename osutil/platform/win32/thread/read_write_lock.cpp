// Read-write locks made of three system objects.
//
// A thread holds the guard while it changes the state: readers briefly, a writer for as long as it
// writes. A writer waits for the guard and the absence of readers at once, so it never holds the
// guard while it still waits.
#include <algorithm>
#include <iterator>

#include "genutil/allocate.h"
#include "osutil/platform/thread/threading.h"
#include "osutil/platform/win32/windows_api.h"

struct _osrdwr {
    HANDLE guard;
    HANDLE noReaders;    // an event, signalled while there are no readers
    HANDLE readerCount;  // a semaphore whose count is the number of readers
    DWORD readers[211];  // their threads, 0 for a free slot; for inspection of a process
    DWORD writer;        // its thread, 0 if there is none
};
static_assert(sizeof(void*) != 4 || sizeof(_osrdwr) == 4 * (3 + 211 + 1));

namespace genutil::platform {

namespace {

// The record, followed by the number of releases that the writer owes. Only the writer uses it.
struct Lock : _osrdwr {
    unsigned levels;
};

unsigned CodeOf(DWORD result) {
    return result == WAIT_FAILED ? GetLastError() : result == WAIT_TIMEOUT ? kTimedOut : 0;
}

unsigned WaitForBoth(HANDLE first, HANDLE second, DWORD limit) {
    const HANDLE handles[] = {first, second};
    return CodeOf(WaitForMultipleObjects(2, handles, TRUE, limit));
}

unsigned WaitForGuard(HANDLE guard, DWORD limit) {
    return CodeOf(WaitForSingleObject(guard, limit));
}

unsigned ReleaseGuard(HANDLE guard) {
    return ::ReleaseMutex(guard) ? 0 : GetLastError();
}

// Replaces the first `from` among the readers, if there is one.
void ChangeReader(_osrdwr* lock, DWORD from, DWORD to) {
    DWORD* slot = std::find(std::begin(lock->readers), std::end(lock->readers), from);
    if (slot != std::end(lock->readers)) *slot = to;
}

void CloseObjects(_osrdwr* lock) {
    for (HANDLE* handle : {&lock->noReaders, &lock->guard, &lock->readerCount}) {
        if (*handle) CloseHandle(*handle);
        *handle = nullptr;
    }
}

}  // namespace

_osrdwr* NewReadWriteLock() {
    return New<Lock>();
}

void FreeReadWriteLock(_osrdwr* lock) {
    if (!lock) return;
    CloseObjects(lock);
    delete static_cast<Lock*>(lock);
}

unsigned MakeReadWriteLock(_osrdwr* lock) {
    lock->guard = ::CreateMutexA(nullptr, FALSE, nullptr);
    if (lock->guard) lock->noReaders = ::CreateEventA(nullptr, TRUE, TRUE, nullptr);
    if (lock->noReaders) lock->readerCount = ::CreateSemaphoreA(nullptr, 0, kMostUnits, nullptr);
    if (lock->readerCount) return 0;
    const unsigned error = GetLastError();
    CloseObjects(lock);
    return error;
}

unsigned ReadWait(_osrdwr* lock, std::uint32_t limit) {
    if (const unsigned error = WaitForGuard(lock->guard, limit)) return error;
    ChangeReader(lock, 0, GetCurrentThreadId());
    LONG before = 0;
    ::ReleaseSemaphore(lock->readerCount, 1, &before);
    if (before == 0) ResetEvent(lock->noReaders);
    return ReleaseGuard(lock->guard);
}

unsigned ReadRelease(_osrdwr* lock) {
    if (const unsigned error = WaitForGuard(lock->guard, INFINITE)) return error;
    if (WaitForSingleObject(lock->readerCount, 0) != WAIT_OBJECT_0) {
        ReleaseGuard(lock->guard);
        return ERROR_NOT_OWNER;  // nobody reads
    }
    ChangeReader(lock, GetCurrentThreadId(), 0);
    // The count can be read only by changing it: one up, and down again.
    LONG remaining = 0;
    ::ReleaseSemaphore(lock->readerCount, 1, &remaining);
    WaitForSingleObject(lock->readerCount, INFINITE);
    if (remaining == 0) SetEvent(lock->noReaders);
    return ReleaseGuard(lock->guard);
}

unsigned WriteWait(_osrdwr* lock, std::uint32_t limit) {
    const bool isWriter = lock->writer == GetCurrentThreadId();
    // The writer may also be reading.
    if (const unsigned error = isWriter ? WaitForGuard(lock->guard, limit)
                                        : WaitForBoth(lock->guard, lock->noReaders, limit))
        return error;
    lock->writer = GetCurrentThreadId();
    static_cast<Lock*>(lock)->levels = isWriter ? static_cast<Lock*>(lock)->levels + 1 : 1;
    return 0;
}

unsigned WriteRelease(_osrdwr* lock) {
    if (lock->writer != GetCurrentThreadId()) return ERROR_NOT_OWNER;
    if (--static_cast<Lock*>(lock)->levels == 0) lock->writer = 0;
    return ReleaseGuard(lock->guard);
}

}  // namespace genutil::platform
