#include "osutil/thread/thread_record.h"

#include <new>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "osutil/platform/thread/threading.h"
#include "osutil/thread/lock.h"

namespace genutil {

// -- Held mutexes --------------------------------------------------------------------------------

// Followed by the entries. An outgrown block is kept, because another thread may be reading it. All
// such blocks together are not larger than the current one.
struct HeldMutexes::Block {
    Block* older;
    Entry* Entries() { return reinterpret_cast<Entry*>(this + 1); }
};

HeldMutexes::~HeldMutexes() {
    while (m_blocks) {
        Block* block = m_blocks;
        m_blocks = block->older;
        Release(block);
    }
}

void HeldMutexes::AddWithGrowth(_osmutex* mutex) {
    const std::uint32_t capacity = 2 * m_capacity;
    void* memory = Allocate(sizeof(Block) + std::uint64_t{capacity} * sizeof(Entry));
    if (!AssertAllocation(memory != nullptr, "osutil/osthread", __LINE__)) return;
    auto* grown = new (memory) Block{m_blocks};
    for (std::uint32_t i = 0; i < capacity; ++i)
        new (&grown->Entries()[i]) Entry(i < m_capacity ? At(i) : nullptr);
    m_entries.store(grown->Entries(), std::memory_order_release);
    m_blocks = grown;
    m_capacity = capacity;
    Add(mutex);
}

void HeldMutexes::RemoveAt(std::uint32_t at) {
    Entry* entries = m_entries.load(std::memory_order_relaxed);
    const std::uint32_t last = Count() - 1;
    for (; at < last; ++at) entries[at].store(At(at + 1), std::memory_order_relaxed);
    m_count.store(last, std::memory_order_release);
}

void HeldMutexes::Remove(const _osmutex* mutex) {
    for (std::uint32_t at = Count(); at != 0;)
        if (At(--at) == mutex) return RemoveAt(at);
}

void HeldMutexes::RemoveAll(const _osmutex* mutex) {
    for (std::uint32_t at = Count(); at != 0;)
        if (At(--at) == mutex) RemoveAt(at);
}

// The count is read first, so that the entries read after it have room for at least as many.
bool HeldMutexes::Has(const _osmutex* mutex) const {
    const std::uint32_t count = m_count.load(std::memory_order_acquire);
    const Entry* entries = m_entries.load(std::memory_order_acquire);
    for (std::uint32_t i = 0; i < count; ++i)
        if (entries[i].load(std::memory_order_relaxed) == mutex) return true;
    return false;
}

// -- Records -------------------------------------------------------------------------------------

namespace {

constexpr std::uint32_t kBuckets = 211;
std::atomic<ThreadRecord*> g_buckets[kBuckets];

void EndThread(void* pointer) {
    auto* record = static_cast<ThreadRecord*>(pointer);
    // The system has already released the mutexes that the thread still held.
    record->held.Clear();
    if (record->released) record->releaseVariables(&record->released);
    if (record->value && record->releaseValue) record->releaseValue(record->value);
    record->value = nullptr;
    record->used.store(false, std::memory_order_release);
}

// In the child of a fork, moves the record to the bucket of the thread's new id. There is no other
// thread.
void RenewRecord(void* pointer) {
    auto* record = static_cast<ThreadRecord*>(pointer);
    auto& from = g_buckets[record->thread % kBuckets];
    if (from.load() == record) {
        from.store(record->next);
    } else {
        ThreadRecord* before = from.load();
        while (before->next != record) before = before->next;
        before->next = record->next;
    }
    record->thread = platform::ThreadId();
    auto& to = g_buckets[record->thread % kBuckets];
    record->next = to.load();
    to.store(record);
    for (std::uint32_t i = 0; i < record->held.Count(); ++i)
        record->held.At(i)->owner.store(record->thread, std::memory_order_relaxed);
}

ThreadRecord* ReuseRecord(ThreadRecord* first) {
    for (ThreadRecord* record = first; record; record = record->next) {
        bool used = false;
        if (record->used.compare_exchange_strong(used, true, std::memory_order_acquire))
            return record;
    }
    return nullptr;
}

ThreadRecord* AddRecord(std::atomic<ThreadRecord*>& bucket) {
    void* memory = Allocate(sizeof(ThreadRecord));
    if (!AssertAllocation(memory != nullptr, "osutil/osthread", __LINE__)) return nullptr;
    auto* record = new (memory) ThreadRecord;
    record->next = bucket.load(std::memory_order_relaxed);
    while (!bucket.compare_exchange_weak(record->next, record, std::memory_order_release,
                                         std::memory_order_relaxed))
        ;
    return record;
}

}  // namespace

ThreadRecord* EnterThreadRecord() {
    const std::uint32_t thread = platform::ThreadId();
    auto& bucket = g_buckets[thread % kBuckets];
    ThreadRecord* record = ReuseRecord(bucket.load(std::memory_order_acquire));
    if (!record) record = AddRecord(bucket);
    if (!record) return nullptr;
    record->thread = thread;
    if (platform::SetThreadPointer(record, EndThread, RenewRecord)) return record;
    record->used.store(false, std::memory_order_release);
    return nullptr;
}

bool IsHeldInBucket(const _osmutex* mutex) {
    const auto& bucket = g_buckets[platform::ThreadId() % kBuckets];
    for (auto* record = bucket.load(std::memory_order_acquire); record; record = record->next)
        if (record->held.Has(mutex)) return true;
    return false;
}

std::uint32_t CountLockCalls() {
    std::uint32_t calls = 0;
    for (const auto& bucket : g_buckets)
        for (auto* record = bucket.load(std::memory_order_acquire); record; record = record->next)
            calls += record->calls.load(std::memory_order_relaxed);
    return calls;
}

}  // namespace genutil
