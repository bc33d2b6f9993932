// The slow paths of mutexes. The robust mutexes of pthreads would also pass on a lock whose holder
// has ended, but at several times the cost of each lock.
#include "genutil/allocate.h"
#include "genutil/simd.h"
#include "osutil/platform/posix/thread/futex.h"
#include "osutil/platform/thread/threading.h"

namespace genutil::platform {

namespace {

void Abandon(HeldLock* lock) {
    FreeMutex(static_cast<Mutex*>(lock), Sharing::kShared);
}

// No other thread remains that could wait.
void Renew(HeldLock* lock, std::uint32_t id) {
    static_cast<Mutex*>(lock)->state.store(id, std::memory_order_relaxed);
}

}  // namespace

unsigned MakeMutex(Mutex** mutex) {
    *mutex = New<Mutex>();
    if (*mutex) {
        (*mutex)->abandon = Abandon;
        (*mutex)->renew = Renew;
    }
    return *mutex ? 0 : ENOMEM;
}

namespace {

// Spins first, because most locks are held for less time than sleeping and waking takes, if the
// holder is running.
bool TakeSoon(Mutex* mutex) {
    for (int i = 0; i < 40; ++i) {
        simd::Pause();
        if (mutex->state.load(std::memory_order_relaxed) == 0 &&
            TakeMutexAtOnce(mutex, Sharing::kShared))
            return true;
    }
    return false;
}

// Takes the mutex with the mark set, because it is not known whether others still sleep. A thread
// whose limit has passed leaves the mark as well: it may have been woken in place of another.
unsigned TakeBusyMutex(Mutex* mutex, ThisThread& self, const Deadline& deadline) {
    std::uint32_t state = mutex->state.load(std::memory_order_relaxed);
    for (;;) {
        const std::uint32_t next = state == 0 ? self.id | kAwaited : state | kAwaited;
        if (next != state && !mutex->state.compare_exchange_weak(
                                 state, next, std::memory_order_acquire, std::memory_order_relaxed))
            continue;
        if (state == 0) break;
        if (!FutexWait(&mutex->state, next, deadline)) return kTimedOut;
        state = mutex->state.load(std::memory_order_relaxed);
    }
    mutex->levels = 1;
    self.Hold(*mutex);
    return 0;
}

}  // namespace

unsigned WaitMutex(Mutex* mutex, std::uint32_t limit) {
    if (!mutex) return EINVAL;
    ThisThread& self = CurrentThread();  // gives the thread its id
    if (TakeMutexAtOnce(mutex)) return 0;
    if (limit == 0) return kTimedOut;
    const Deadline deadline(limit);
    return TakeSoon(mutex) ? 0 : TakeBusyMutex(mutex, self, deadline);
}

unsigned WakeForMutex(const void* mutex) {
    FutexWake(&static_cast<const Mutex*>(mutex)->state, 1);
    return 0;
}

void CloseMutex(Mutex* mutex) {
    if (!mutex) return;
    ThisThread& self = CurrentThread();
    if (IsHolder(mutex, self)) self.LetGo(*mutex);
    delete mutex;
}

}  // namespace genutil::platform
