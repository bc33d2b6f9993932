// The slow paths of read-write locks. In the system's own locks, a waiting writer blocks readers or
// the writer cannot read, and none recovers when its writer has ended.
#include <bit>
#include <climits>

#include "genutil/allocate.h"
#include "osutil/platform/posix/thread/futex.h"
#include "osutil/platform/thread/threading.h"

namespace genutil::platform {

namespace {

enum SleeperKind : std::uint32_t { kSleepingReader = 1, kSleepingWriter = 2 };

static_assert(std::endian::native == std::endian::little, "the lower half has the state's address");

bool Sleep(_osrdwr* lock, std::uint64_t state, const Deadline& deadline, SleeperKind kind) {
    return FutexWait(&lock->state, static_cast<std::uint32_t>(state), deadline, kind);
}

void Abandon(HeldLock* lock) {
    EndWriting(static_cast<_osrdwr*>(lock));
}

// Readers and waiting threads of the parent do not exist in the child.
void Renew(HeldLock* lock, std::uint32_t id) {
    auto* renewed = static_cast<_osrdwr*>(lock);
    renewed->writer.store(id, std::memory_order_relaxed);
    renewed->state.fetch_and(~kWriterSleeps, std::memory_order_relaxed);
}

}  // namespace

_osrdwr* NewReadWriteLock() {
    auto* lock = New<_osrdwr>();
    if (!lock) return nullptr;
    lock->abandon = Abandon;
    lock->renew = Renew;
    return lock;
}

// The record needs no system objects.
unsigned MakeReadWriteLock(_osrdwr*) {
    return 0;
}

void FreeReadWriteLock(_osrdwr* lock) {
    if (!lock) return;
    ThisThread& self = CurrentThread();
    if (IsWriter(lock, self)) self.LetGo(*lock);
    delete lock;
}

unsigned SleepAsReader(_osrdwr* lock, std::uint32_t limit) {
    const Deadline deadline(limit);
    for (;;) {
        const std::uint64_t state = lock->state.load(std::memory_order_acquire);
        if (!(state & kWriting)) return 0;
        if (Sleep(lock, state, deadline, kSleepingReader)) continue;
        ReadRelease(lock);
        return kTimedOut;
    }
}

// Takes the lock with the mark set, because it is not known whether others still sleep. A thread
// whose limit has passed leaves the mark as well: it may have been woken in place of another.
unsigned TakeBusyLock(_osrdwr* lock, std::uint32_t limit) {
    const Deadline deadline(limit);
    std::uint64_t state = lock->state.load(std::memory_order_relaxed);
    for (;;) {
        const bool isFree = (state & ~kWriterSleeps) == 0;
        const std::uint64_t next = state | kWriterSleeps | (isFree ? kWriting : 0);
        if (next != state && !lock->state.compare_exchange_weak(
                                 state, next, std::memory_order_acquire, std::memory_order_relaxed))
            continue;
        if (isFree) return 0;
        if (!Sleep(lock, next, deadline, kSleepingWriter)) return kTimedOut;
        state = lock->state.load(std::memory_order_relaxed);
    }
}

// Wakes the readers that wait for a writer first. They wake the writers later.
void WakeForLock(const void* lock, std::uint64_t state) {
    const void* word = &static_cast<const _osrdwr*>(lock)->state;
    if (state >= kReader)
        FutexWake(word, INT_MAX, kSleepingReader);
    else if (state & kWriterSleeps)
        FutexWake(word, 1, kSleepingWriter);
}

}  // namespace genutil::platform
