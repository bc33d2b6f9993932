// What the library keeps for each thread: the mutexes it holds, the value of its variable store,
// the zone it last converted in and a count of its calls.
//
// Records stand in 211 buckets by thread number, and a question about a mutex is put to a whole
// bucket. A thread changes its own record only, so nothing here locks; other threads of the bucket
// may read along. A record outlives its thread and goes to a later one of its bucket.
#pragma once

#include <atomic>
#include <cstdint>

#include "osutil/platform/thread/threading.h"

struct _osmutex;

namespace genutil {

// The mutexes that a thread holds, in the order in which it took them: once for each time.
class HeldMutexes {
  public:
    HeldMutexes() = default;
    ~HeldMutexes();
    HeldMutexes(const HeldMutexes&) = delete;
    HeldMutexes& operator=(const HeldMutexes&) = delete;

    // Without memory the mutex is not listed, after a report.
    void Add(_osmutex* mutex) {
        const std::uint32_t count = m_count.load(std::memory_order_relaxed);
        if (count == m_capacity) return AddWithGrowth(mutex);
        m_entries.load(std::memory_order_relaxed)[count].store(mutex, std::memory_order_relaxed);
        m_count.store(count + 1, std::memory_order_release);
    }

    // Takes out the latest entry of all if it is of the mutex; whether it was.
    bool RemoveLast(const _osmutex* mutex) {
        const std::uint32_t count = Count();
        if (count == 0 || At(count - 1) != mutex) return false;
        m_count.store(count - 1, std::memory_order_release);
        return true;
    }

    // Takes out the latest entry of the mutex, if there is one.
    void Remove(const _osmutex* mutex);
    void RemoveAll(const _osmutex* mutex);
    void Clear() { m_count.store(0, std::memory_order_relaxed); }

    // By any thread, while the owner may go on.
    bool Has(const _osmutex* mutex) const;

    std::uint32_t Count() const { return m_count.load(std::memory_order_relaxed); }
    _osmutex* At(std::uint32_t index) const {
        return m_entries.load(std::memory_order_relaxed)[index].load(std::memory_order_relaxed);
    }

  private:
    using Entry = std::atomic<_osmutex*>;
    struct Block;
    static constexpr std::uint32_t kFirstCapacity = 8;

    void AddWithGrowth(_osmutex* mutex);
    void RemoveAt(std::uint32_t at);

    Entry m_first[kFirstCapacity]{};
    std::atomic<Entry*> m_entries{m_first};
    Block* m_blocks{nullptr};
    std::atomic<std::uint32_t> m_count{0};
    std::uint32_t m_capacity{kFirstCapacity};
};

// The zone of a thread's last conversion, and the state of TZ in which it was the right one.
struct ZoneInUse {
    const void* zone = nullptr;
    std::uint32_t state = 0;
};

// The last date of a trace line, and the zone that it is in.
struct TraceDate {
    std::int64_t second = 0;
    std::uint32_t zoneState = 0;
    char zone[36] = {};  // the thread's own; empty if it has none
    char text[24] = {};
};

struct ThreadRecord {
    HeldMutexes held;
    void* value = nullptr;                  // of the variable store
    void (*releaseValue)(void*) = nullptr;  // null where the value is not the library's own
    std::atomic<std::uint32_t> calls{0};    // of lock functions
    std::uint32_t thread = 0;               // its number
    ZoneInUse lastZone;
    TraceDate traceDate;
    std::atomic<bool> used{true};  // by a thread that runs
    ThreadRecord* next = nullptr;  // in the bucket

    void CountCall() {
        calls.store(calls.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    }
};

ThreadRecord* EnterThreadRecord();

// The calling thread's, if it has one already.
inline ThreadRecord* KnownThreadRecord() {
    return static_cast<ThreadRecord*>(platform::ThreadPointer());
}

// The calling thread's; null, after a report, without memory for a first one.
inline ThreadRecord* CurrentThreadRecord() {
    ThreadRecord* record = KnownThreadRecord();
    return record ? record : EnterThreadRecord();
}

// Whether a thread of the calling thread's bucket holds the mutex.
bool IsHeldInBucket(const _osmutex* mutex);

// How many calls of lock functions there were in threaded mode, modulo 2^32.
std::uint32_t CountLockCalls();

}  // namespace genutil
