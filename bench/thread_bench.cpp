// Locks compared with those of the standard library, in a process with more than one thread.
#include <benchmark/benchmark.h>

#include <memory>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <unordered_map>

#include "osthread.h"

namespace {

// Operations that the locks spell differently.
struct Mutex {
    Mutex() : m_mutex(OSMutexCreate()) {}
    ~Mutex() { OSMutexDestroy(m_mutex); }
    void lock() { OSMutexWait(m_mutex); }
    void unlock() { OSMutexRelease(m_mutex); }

  private:
    _osmutex* m_mutex;
};

struct ReadWriteLock {
    ReadWriteLock() : m_lock(OSRWLockCreate()) {}
    ~ReadWriteLock() { OSRWLockDestroy(m_lock); }
    void lock() { OSRWLockWriteWait(m_lock); }
    void unlock() { OSRWLockWriteRelease(m_lock); }
    void lock_shared() { OSRWLockReadWait(m_lock); }
    void unlock_shared() { OSRWLockReadRelease(m_lock); }

  private:
    _osrdwr* m_lock;
};

// One lock for all threads of a case. It is created on first use, which is after the process has
// become threaded.
template <class Lock>
Lock& Shared() {
    static Lock s_lock;
    return s_lock;
}

template <class Lock>
void Outer(benchmark::State& state) {
    Lock& lock = Shared<Lock>();
    for (auto _ : state) {
        lock.lock();
        benchmark::ClobberMemory();
        lock.unlock();
    }
}

template <class Lock>
void Inner(benchmark::State& state) {
    Lock& lock = Shared<Lock>();
    lock.lock();
    Outer<Lock>(state);
    lock.unlock();
}

template <class Lock>
void Read(benchmark::State& state) {
    Lock& lock = Shared<Lock>();
    for (auto _ : state) {
        lock.lock_shared();
        benchmark::ClobberMemory();
        lock.unlock_shared();
    }
}

// One write for fifteen reads.
template <class Lock>
void Mixed(benchmark::State& state) {
    Lock& lock = Shared<Lock>();
    unsigned turn = 0;
    for (auto _ : state) {
        if ((++turn & 15) == 0) {
            lock.lock();
            lock.unlock();
        } else {
            lock.lock_shared();
            lock.unlock_shared();
        }
    }
}

// The same function as the pool, by a hash map under a mutex.
class MapOfMutexes {
  public:
    void WaitNamedMutex(const std::string& name) {
        Entry* entry;
        {
            std::lock_guard guard(m_mutex);
            entry = &m_entries[name];
            ++entry->users;
        }
        entry->mutex.lock();
    }
    void ReleaseNamedMutex(const std::string& name) {
        std::lock_guard guard(m_mutex);
        const auto at = m_entries.find(name);
        if (at == m_entries.end()) return;
        at->second.mutex.unlock();
        if (--at->second.users == 0) m_entries.erase(at);
    }

  private:
    struct Entry {
        std::recursive_mutex mutex;
        int users = 0;
    };
    std::mutex m_mutex;
    std::unordered_map<std::string, Entry> m_entries;
};

struct Pool : CGNNamedMutexPool {
    Pool() { Init(); }
};

// With a number of other names in use. @tparam kOthers that number.
template <class Names, class Text, int kOthers>
void Named(benchmark::State& state) {
    Names names;
    for (int i = 0; i < kOthers; ++i) names.WaitNamedMutex(("order " + std::to_string(i)).c_str());
    const Text name(("customer " + std::to_string(4711)).c_str());
    for (auto _ : state) {
        names.WaitNamedMutex(name);
        benchmark::ClobberMemory();
        names.ReleaseNamedMutex(name);
    }
    for (int i = 0; i < kOthers; ++i)
        names.ReleaseNamedMutex(("order " + std::to_string(i)).c_str());
}

template <class Names, class Text>
void NamedByThread(benchmark::State& state) {
    Names& names = Shared<Names>();
    const Text name(("customer " + std::to_string(state.thread_index())).c_str());
    for (auto _ : state) {
        names.WaitNamedMutex(name);
        benchmark::ClobberMemory();
        names.ReleaseNamedMutex(name);
    }
}

using Case = void (*)(benchmark::State&);

void Register(const std::string& name, const char* peer, Case own, Case other, int threads = 1) {
    for (const auto& [who, what] : {std::pair{"genutil", own}, std::pair{peer, other}})
        benchmark::RegisterBenchmark((name + "/" + who).c_str(), what)
            ->Threads(threads)
            ->UseRealTime();
}

// Calls OSSetThreaded() and runs a thread once, because the C library uses its locks only from then
// on.
[[maybe_unused]] const bool g_registered = [] {
    OSSetThreaded();
    _osthread* thread = OSThreadCreate([](void*) { return 0u; }, nullptr, nullptr);
    OSThreadTerminateWait(thread);
    OSThreadDestroy(thread);

    using Recursive = std::recursive_mutex;
    using SharedMutex = std::shared_mutex;
    constexpr char kRecursive[] = "std::recursive_mutex", kShared[] = "std::shared_mutex";
    Register("mutex inner level", kRecursive, Inner<Mutex>, Inner<Recursive>);
    for (const int threads : {1, 2, 4}) {
        const std::string tail = threads == 1 ? "" : ", " + std::to_string(threads) + " threads";
        Register("mutex" + tail, kRecursive, Outer<Mutex>, Outer<Recursive>, threads);
        Register("read" + tail, kShared, Read<ReadWriteLock>, Read<SharedMutex>, threads);
        Register("write" + tail, kShared, Outer<ReadWriteLock>, Outer<SharedMutex>, threads);
        Register("read or write" + tail, kShared, Mixed<ReadWriteLock>, Mixed<SharedMutex>,
                 threads);
    }

    constexpr char kMap[] = "hash map";
    Register("named lock", kMap, Named<Pool, CGNString, 0>, Named<MapOfMutexes, std::string, 0>);
    Register("named lock, 8 others held", kMap, Named<Pool, CGNString, 8>,
             Named<MapOfMutexes, std::string, 8>);
    Register("named lock, 2 threads", kMap, NamedByThread<Pool, CGNString>,
             NamedByThread<MapOfMutexes, std::string>, 2);
    return true;
}();

}  // namespace
