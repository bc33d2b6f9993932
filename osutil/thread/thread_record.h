// The data that the library keeps for each thread: the mutexes it holds, the value of its variable
// store, the zone of its last conversion and a count of its calls.
//
// Records are in 211 buckets by thread number, and a query for a mutex examines a whole bucket. A
// thread changes only its own record, so there are no locks here; other threads of the bucket may
// read concurrently. A record outlives its thread and is reused by a later one of its bucket.
#pragma once

#include <atomic>
#include <cstdint>

#include "osutil/platform/thread/threading.h"

struct _osmutex;

namespace genutil {

// The mutexes that a thread holds, in the order of acquisition, with an entry for each time.
class HeldMutexes {
  public:
    HeldMutexes() = default;
    ~HeldMutexes();
    HeldMutexes(const HeldMutexes&) = delete;
    HeldMutexes& operator=(const HeldMutexes&) = delete;

    // Adds an entry. If allocation fails, which is reported, the mutex is not listed.
    void Add(_osmutex* mutex) {
        const std::uint32_t count = m_count.load(std::memory_order_relaxed);
        if (count == m_capacity) return AddWithGrowth(mutex);
        m_entries.load(std::memory_order_relaxed)[count].store(mutex, std::memory_order_relaxed);
        m_count.store(count + 1, std::memory_order_release);
    }

    // Removes the latest entry if it is of the mutex. Returns true if it was.
    bool RemoveLast(const _osmutex* mutex) {
        const std::uint32_t count = Count();
        if (count == 0 || At(count - 1) != mutex) return false;
        m_count.store(count - 1, std::memory_order_release);
        return true;
    }

    // Removes the latest entry of the mutex, if there is one.
    void Remove(const _osmutex* mutex);
    void RemoveAll(const _osmutex* mutex);
    void Clear() { m_count.store(0, std::memory_order_relaxed); }

    // May be called from any thread, while the owner continues.
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

// The zone of a thread's last conversion, and the state of TZ for which it is valid.
struct ZoneInUse {
    const void* zone = nullptr;
    std::uint32_t state = 0;
};

// The date of the last trace line, and its zone.
struct TraceDate {
    std::int64_t second = 0;
    std::uint32_t zoneState = 0;
    char zone[36] = {};  // the thread's own; empty if it has none
    char text[24] = {};
};

struct ReleasedVariable;

struct ThreadRecord {
    HeldMutexes held;
    ReleasedVariable* released = nullptr;  // variables whose values are released at the end
    void (*releaseVariables)(ReleasedVariable** first) = nullptr;  // set with the first of them
    void* value = nullptr;                                         // value of the variable store
    void (*releaseValue)(void*) = nullptr;  // null if the value is not owned by the library
    std::atomic<std::uint32_t> calls{0};    // number of calls of lock functions
    std::uint32_t thread = 0;               // id of the thread
    ZoneInUse lastZone;
    TraceDate traceDate;
    std::atomic<bool> used{true};  // true while its thread runs
    ThreadRecord* next = nullptr;  // next record in the bucket

    void CountCall() {
        calls.store(calls.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    }
};

ThreadRecord* EnterThreadRecord();

// Returns the calling thread's record, if it already has one.
inline ThreadRecord* KnownThreadRecord() {
    return static_cast<ThreadRecord*>(platform::ThreadPointer());
}

// Returns the calling thread's record. Returns null, after reporting it, if allocation of a new one
// fails.
inline ThreadRecord* CurrentThreadRecord() {
    ThreadRecord* record = KnownThreadRecord();
    return record ? record : EnterThreadRecord();
}

// Returns true if a thread of the calling thread's bucket holds the mutex.
bool IsHeldInBucket(const _osmutex* mutex);

// Returns the number of calls of lock functions in threaded mode, modulo 2^32.
std::uint32_t CountLockCalls();

}  // namespace genutil
