// Locks beside those of the standard library, in a process with more than one thread.
#include <benchmark/benchmark.h>

#include <memory>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <unordered_map>

#include "osthread.h"

namespace {

// What the locks spell differently.
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

// One lock for all threads of a case: made by the first use, so after the process is threaded.
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

using Case = void (*)(benchmark::State&);

void Register(const std::string& name, const char* peer, Case own, Case other, int threads = 1) {
    for (const auto& [who, what] : {std::pair{"genutil", own}, std::pair{peer, other}})
        benchmark::RegisterBenchmark((name + "/" + who).c_str(), what)
            ->Threads(threads)
            ->UseRealTime();
}

// Calls OSSetThreaded() and has a thread run once, from where on the C library locks in earnest.
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
    return true;
}();

}  // namespace
