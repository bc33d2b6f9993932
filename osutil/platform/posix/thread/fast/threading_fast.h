// Included only by threading.h, at its end.
//
// The calls of threading.h that take a free lock, or release one that no thread waits for. They are
// a few instructions and therefore inline. Sleeping and waking are in mutex.cpp and
// read_write_lock.cpp.
//
// After a call has released a lock, it uses only its address, because the next holder may destroy
// it.
#pragma once

#include <atomic>
#include <cerrno>
#include <cstdint>

namespace genutil::platform {

// -- The calling thread --------------------------------------------------------------------------

// A lock in the list of those that one thread holds. Only that thread accesses it.
struct HeldLock {
    HeldLock* previous;
    HeldLock* next;
    void (*abandon)(HeldLock* lock);                  // called when the thread ends
    void (*renew)(HeldLock* lock, std::uint32_t id);  // called when the thread gets another id
};

struct ThisThread {
    std::uint32_t id;  // 0 until first requested
    HeldLock* held;
    void* pointer;
    void (*atEnd)(void*);
    void (*renewed)(void*);

    void Hold(HeldLock& lock) {
        lock.previous = nullptr;
        lock.next = held;
        if (held) held->previous = &lock;
        held = &lock;
    }
    void LetGo(HeldLock& lock) {
        (lock.previous ? lock.previous->next : held) = lock.next;
        if (lock.next) lock.next->previous = lock.previous;
    }
};

// This model avoids the call that finds the thread variables of a library.
extern thread_local constinit ThisThread t_thisThread __attribute__((tls_model("initial-exec")));

// Fills t_thisThread and arranges the call at the thread's end. Returns false if the system has no
// room for the latter.
bool EnterThread();

inline ThisThread& CurrentThread() {
    if (t_thisThread.id == 0) [[unlikely]]
        EnterThread();
    return t_thisThread;
}

inline std::uint32_t ThreadId() {
    return CurrentThread().id;
}

inline void* ThreadPointer() {
    return t_thisThread.pointer;
}

// -- Mutexes -------------------------------------------------------------------------------------

constexpr std::uint32_t kAwaited = 0x80000000;  // a thread may be sleeping until the state changes
constexpr std::uint32_t kHolder = ~kAwaited;

struct Mutex : HeldLock {
    std::atomic<std::uint32_t> state;  // 0 if free; otherwise the holder, with or without kAwaited
    std::uint32_t levels;              // number of releases required
};

unsigned WakeForMutex(const void* mutex);  // always returns 0

inline bool IsHolder(const Mutex* mutex, const ThisThread& self) {
    return (mutex->state.load(std::memory_order_relaxed) & kHolder) == self.id;
}

inline bool ChangeFreeMutex(Mutex* mutex, std::uint32_t id, Sharing sharing) {
    if (sharing == Sharing::kAlone) {
        mutex->state.store(id, std::memory_order_relaxed);
        return true;
    }
    std::uint32_t state = 0;
    return mutex->state.compare_exchange_strong(state, id, std::memory_order_acquire);
}

inline bool TakeMutexAtOnce(Mutex* mutex, Sharing sharing) {
    ThisThread& self = t_thisThread;
    if (!mutex || self.id == 0) return false;
    const std::uint32_t state = mutex->state.load(std::memory_order_relaxed);
    if (state == 0) {
        if (!ChangeFreeMutex(mutex, self.id, sharing)) return false;
        mutex->levels = 1;
        self.Hold(*mutex);
        return true;
    }
    if ((state & kHolder) != self.id) return false;
    ++mutex->levels;
    return true;
}

inline unsigned FreeMutex(Mutex* mutex, Sharing sharing) {
    if (sharing == Sharing::kAlone)
        mutex->state.store(0, std::memory_order_release);
    else if (mutex->state.exchange(0, std::memory_order_release) & kAwaited) [[unlikely]]
        return WakeForMutex(mutex);
    return 0;
}

inline unsigned ReleaseMutex(Mutex* mutex, Sharing sharing) {
    if (!mutex) return EINVAL;
    ThisThread& self = CurrentThread();
    if (!IsHolder(mutex, self)) return EPERM;
    if (--mutex->levels != 0) return 0;
    self.LetGo(*mutex);
    return FreeMutex(mutex, sharing);
}

}  // namespace genutil::platform

// -- Read-write locks ----------------------------------------------------------------------------

struct _osrdwr : genutil::platform::HeldLock {
    // The upper half counts readers. While a writer holds the lock, it counts the readers that wait
    // for it, whose place is already taken, and the reads that the writer itself began. Threads
    // sleep on the lower half, which does not change as readers come and go.
    std::atomic<std::uint64_t> state;
    std::atomic<std::uint32_t> writer;  // id of its thread; only that thread can find its own id
                                        // there
    std::uint32_t levels;               // number of releases required
};

namespace genutil::platform {

constexpr std::uint64_t kWriting = 1;
constexpr std::uint64_t kWriterSleeps = 2;  // a writer may be sleeping until the lock is free
constexpr std::uint64_t kReader = std::uint64_t{1} << 32;

unsigned SleepAsReader(_osrdwr* lock, std::uint32_t limit);
unsigned TakeBusyLock(_osrdwr* lock, std::uint32_t limit);
void WakeForLock(const void* lock, std::uint64_t state);

inline bool IsWriter(const _osrdwr* lock, const ThisThread& self) {
    return lock->writer.load(std::memory_order_relaxed) == self.id;
}

// Clears the mark of a sleeping writer if the lock becomes free, because no later release will wake
// it.
inline std::uint64_t WithoutMarkIfFree(std::uint64_t state) {
    return state == kWriterSleeps ? 0 : state;
}

inline unsigned ReadWait(_osrdwr* lock, std::uint32_t limit) {
    // Counted at once, whoever holds the lock, so that no writer can begin from then on.
    const std::uint64_t state = lock->state.fetch_add(kReader, std::memory_order_acquire);
    if ((state & kWriting) && !IsWriter(lock, CurrentThread())) [[unlikely]]
        return SleepAsReader(lock, limit);
    return 0;
}

inline unsigned ReadRelease(_osrdwr* lock) {
    std::uint64_t state = lock->state.load(std::memory_order_relaxed), next;
    do {
        if (state < kReader) return EPERM;
        next = WithoutMarkIfFree(state - kReader);
    } while (!lock->state.compare_exchange_weak(state, next, std::memory_order_release,
                                                std::memory_order_relaxed));
    if (next == 0 && (state & kWriterSleeps)) [[unlikely]]
        WakeForLock(lock, kWriterSleeps);
    return 0;
}

inline unsigned WriteWait(_osrdwr* lock, std::uint32_t limit) {
    ThisThread& self = CurrentThread();
    if (IsWriter(lock, self)) {
        ++lock->levels;
        return 0;
    }
    std::uint64_t state = 0;
    if (!lock->state.compare_exchange_strong(state, kWriting, std::memory_order_acquire,
                                             std::memory_order_relaxed)) [[unlikely]] {
        if (const unsigned error = TakeBusyLock(lock, limit)) return error;
    }
    lock->writer.store(self.id, std::memory_order_relaxed);
    lock->levels = 1;
    self.Hold(*lock);
    return 0;
}

inline void EndWriting(_osrdwr* lock) {
    lock->writer.store(0, std::memory_order_relaxed);
    std::uint64_t state = lock->state.load(std::memory_order_relaxed);
    while (!lock->state.compare_exchange_weak(state, WithoutMarkIfFree(state & ~kWriting),
                                              std::memory_order_release, std::memory_order_relaxed))
        ;
    if (state != kWriting) [[unlikely]]
        WakeForLock(lock, state);
}

inline unsigned WriteRelease(_osrdwr* lock) {
    ThisThread& self = CurrentThread();
    if (!IsWriter(lock, self)) return EPERM;
    if (--lock->levels != 0) return 0;
    self.LetGo(*lock);
    EndWriting(lock);
    return 0;
}

}  // namespace genutil::platform
