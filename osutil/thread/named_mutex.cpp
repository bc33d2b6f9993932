// Mutexes by name.
//
// Order: the pool's mutex, then a named one that is being released or is free. The pool's mutex is
// never held while waiting for a named one that another thread may hold.
#include <atomic>
#include <cstddef>
#include <new>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "genutil/atomic_ref.h"
#include "genutil/singleton.h"
#include "osthread.h"
#include "osutil/thread/lock.h"
#include "osutil/thread/threaded.h"

using namespace genutil;

// Programs hold such objects by value.
static_assert(sizeof(void*) != 4 || sizeof(CGNNamedMutexPool) == 28);

static_assert(sizeof(void*) != 4 || sizeof(CGNNamedMutex) == 16);

namespace {

constexpr char kSource[] = "osutil/osnammut";

// An entry with the number of its users that still wait. These will return, unlike a holder that
// has ended.
struct Entry : CGNNamedMutex {
    std::atomic<std::int32_t> waiting{0};
};

// The pool's mutex, and the number of entries that are kept without users. A name that is used
// again soon, or another name, takes over such an entry. For callers these entries do not exist.
struct PoolMutex : _osmutex {
    int idle;
};
constexpr int kMostIdle = 4;

class PoolGuard {
  public:
    explicit PoolGuard(_osmutex* mutex) : m_handle(mutex ? mutex->handle : nullptr) {
        if (m_handle && !platform::TakeMutexAtOnce(m_handle)) platform::WaitMutex(m_handle);
    }
    ~PoolGuard() {
        if (m_handle) platform::ReleaseMutex(m_handle);
    }
    PoolGuard(const PoolGuard&) = delete;
    PoolGuard& operator=(const PoolGuard&) = delete;

  private:
    platform::Mutex* m_handle;
};

// Accessed by threads that do not hold the pool's mutex.
AtomicRef<unsigned char> Held(CGNNamedMutex* entry) {
    return AtomicRef<unsigned char>(entry->held);
}

void DestroyEntry(Entry* entry) {
    if (!entry) return;
    OSMutexDestroy(entry->mutex);
    delete entry->name;
    entry->~Entry();
    Release(entry);
}

Entry* NewEntry(const CGNString& name) {
    void* memory = Allocate(sizeof(Entry));
    if (!AssertAllocation(memory != nullptr, kSource, __LINE__)) return nullptr;
    auto* entry = new (memory) Entry{};
    entry->mutex = OSMutexCreate();
    entry->name = New<CGNString>(name);
    AssertAllocation(entry->name != nullptr, kSource, __LINE__);
    if (entry->mutex && entry->name && *entry->name == name) return entry;
    DestroyEntry(entry);
    return nullptr;
}

Entry* EntryAt(const CGNList& entries, int index) {
    return reinterpret_cast<Entry*>(entries.GetItem(index));
}

struct Found {
    Entry* entry;  // entry of the name, with users or without; null if there is none
    int index;     // index of the entry
    Entry* idle;   // any entry without users that the search passed
};

// Searches the latest entry first, because a thread that releases a mutex has often waited for it
// just before.
Found Find(const CGNList& entries, const CGNString& name) {
    Entry* idle = nullptr;
    for (int index = entries.GetCount(); index-- > 0;) {
        auto* entry = EntryAt(entries, index);
        if (*entry->name == name) return {entry, index, idle};
        if (entry->users == 0) idle = entry;
    }
    return {nullptr, -1, idle};
}

// Returns null if allocation fails.
Entry* FindOrCreateNamedMutex(CGNList& entries, _osmutex* mutex, const CGNString& name) {
    const Found found = Find(entries, name);
    Entry* entry = found.entry ? found.entry : found.idle;
    if (!entry) {
        entry = NewEntry(name);
        if (!entry || entries.AddItem(reinterpret_cast<GNItem>(entry))) return entry;
        DestroyEntry(entry);
        return nullptr;
    }
    if (!found.entry) {
        *entry->name = name;
        if (*entry->name != name) return nullptr;
    }
    if (entry->users == 0) --static_cast<PoolMutex*>(mutex)->idle;
    return entry;
}

// A new user finds the entry under the pool's mutex and is counted from then on.
Sharing SharingOf(const Entry* entry, std::int32_t ownUses) {
    return entry->users == ownUses ? Sharing::kAlone : Sharing::kShared;
}

bool Holds(const _osmutex* mutex) {
    const ThreadRecord* self = KnownThreadRecord();
    return self && self->held.Has(mutex);
}

// Returns true if a user is left over from a thread that released the mutex without the pool: a
// user that does not wait must be the holder, but the mutex is free.
bool HasLostUser(const Entry* entry) {
    if (entry->users <= entry->waiting.load()) return false;
    if (platform::WaitMutex(entry->mutex->handle, 0) != 0) return false;
    platform::ReleaseMutex(entry->mutex->handle);
    return true;
}

}  // namespace

CGNNamedMutexPool::CGNNamedMutexPool() : m_entries(10, 10), m_mutex(nullptr) {}

CGNNamedMutexPool::~CGNNamedMutexPool() {
    for (int i = 0; i < m_entries.GetCount(); ++i) DestroyEntry(EntryAt(m_entries, i));
    OSMutexDestroy(m_mutex);
}

unsigned char CGNNamedMutexPool::Init() {
    if (m_mutex) return MakeMutexUsable(m_mutex);
    void* memory = Allocate(sizeof(PoolMutex));
    if (!AssertAllocation(memory != nullptr, kSource, __LINE__)) return 0;
    m_mutex = new (memory) PoolMutex{};
    if (!IsThreaded() || Succeeded(platform::MakeMutex(&m_mutex->handle))) return 1;
    Release(m_mutex);
    m_mutex = nullptr;
    return 0;
}

unsigned char CGNNamedMutexPool::WaitNamedMutex(const CGNString& name) {
    return WaitNamedMutex(name, platform::kNoLimit);
}

unsigned char CGNNamedMutexPool::WaitNamedMutex(const CGNString& name, std::uint32_t limit) {
    Entry* entry;
    bool isTaken;
    {
        PoolGuard guard(m_mutex);
        entry = FindOrCreateNamedMutex(m_entries, m_mutex, name);
        if (!entry) return 0;
        if (!MakeMutexUsable(entry->mutex)) {
            // Without users, the entry is reused for the next name, or freed with the pool.
            if (entry->users == 0 && m_mutex) ++static_cast<PoolMutex*>(m_mutex)->idle;
            return 0;
        }
        isTaken = !IsThreaded() || TakeMutexAtOnce(entry->mutex, SharingOf(entry, 0));
        ++entry->users;
        if (!isTaken) ++entry->waiting;
    }
    if (!isTaken) {
        isTaken = WaitMutex(entry->mutex, limit);
        if (!isTaken) {
            PoolGuard guard(m_mutex);
            --entry->waiting;
            EndUse(entry);
            return 0;
        }
        --entry->waiting;
    }
    Held(entry).store(1, std::memory_order_relaxed);
    return 1;
}

void CGNNamedMutexPool::ReleaseNamedMutex(const CGNString& name) {
    PoolGuard guard(m_mutex);
    Entry* entry = Find(m_entries, name).entry;
    if (!entry || entry->users == 0) return;
    const bool isHolder = !IsThreaded() || Holds(entry->mutex);
    if (!isHolder) {
        Succeeded(platform::ReleaseMutex(entry->mutex->handle));  // fails, and reports it
        if (!HasLostUser(entry)) return;
    }
    Held(entry).store(0, std::memory_order_relaxed);
    if (IsThreaded() && isHolder) ReleaseMutex(entry->mutex, SharingOf(entry, 1));
    EndUse(entry);
}

// Ends one use. The last use destroys the entry, unless it is kept for another name.
void CGNNamedMutexPool::EndUse(CGNNamedMutex* used) {
    auto* entry = static_cast<Entry*>(used);
    if (--entry->users != 0) return;
    if (auto* mutex = static_cast<PoolMutex*>(m_mutex); mutex && mutex->idle < kMostIdle) {
        ++mutex->idle;
        return;
    }
    m_entries.DeleteItem(Find(m_entries, *entry->name).index);
    DestroyEntry(entry);
}

// The mark is read under the pool's mutex, because the list may change.
void CGNNamedMutexPool::RelIfWaitNamedMutex(const CGNString& name) {
    PoolGuard guard(m_mutex);
    Entry* entry = Find(m_entries, name).entry;
    if (entry && Held(entry).load(std::memory_order_relaxed)) ReleaseNamedMutex(name);
}

CGNGlobalNamedMutexPool* CGNGlobalNamedMutexPool::m_pInstance = nullptr;

CGNGlobalNamedMutexPool* CGNGlobalNamedMutexPool::GetInstance() {
    return InstanceOf(m_pInstance, []() -> CGNGlobalNamedMutexPool* {
        auto* pool = new (std::nothrow) CGNGlobalNamedMutexPool;
        if (pool && pool->Init()) return pool;
        delete pool;
        return nullptr;
    });
}
