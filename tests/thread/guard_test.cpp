// Guards and threads with the lifetime of a scope.
#include <gtest/gtest.h>

#include <mutex>

#include "osguard.h"
#include "tests/support/worker.h"

namespace {

// Whether another thread gets the lock of `make` at once.
template <class Lock, class Make>
bool IsFree(Make make) {
    bool isFree = false;
    Worker([&] {
        Lock lock = make();
        isFree = lock.try_lock();
    }).Join();
    return isFree;
}

template <class Lock, class Make>
void ExpectGuard(Make make) {
    const auto isFree = [&] { return IsFree<Lock>(make); };
    {
        Lock lock = make();
        EXPECT_FALSE(lock.owns_lock());
        EXPECT_TRUE(isFree());
        lock.lock();
        lock.lock();  // once
        EXPECT_TRUE(lock && !isFree());
        lock.unlock();
        EXPECT_TRUE(!lock && isFree());
        EXPECT_TRUE(lock.try_lock_for(5));
    }
    EXPECT_TRUE(isFree());
}

TEST(Guard, HoldsEachKindOfLock) {
    OSSetThreaded();
    _osmutex* mutex = OSMutexCreate();
    _osrdwr* lock = OSRWLockCreate();
    CGNNamedMutexPool pool;
    ASSERT_TRUE(pool.Init());
    ExpectGuard<OSMutexLock>([&] { return OSMutexLock(mutex, std::defer_lock); });
    ExpectGuard<OSWriteLock>([&] { return OSWriteLock(lock, std::defer_lock); });
    ExpectGuard<CGNNamedMutexLock>([&] { return CGNNamedMutexLock(&pool, "a", std::defer_lock); });
    const auto read = [&] { return OSReadLock(lock, std::defer_lock); };
    {
        const OSReadLock first(lock);
        EXPECT_TRUE(first && IsFree<OSReadLock>(read));
        Worker([&] { EXPECT_FALSE(OSWriteLock(lock, 5)); }).Join();
    }
    {
        const OSWriteLock writer(lock);
        EXPECT_FALSE(IsFree<OSReadLock>(read));
        OSMutexLock a(mutex, std::defer_lock);
        CGNNamedMutexLock b(&pool, "b", std::defer_lock);
        const std::scoped_lock both(a, b);
        EXPECT_TRUE(a && b);
    }
    EXPECT_FALSE(OSMutexLock(nullptr) || OSReadLock(nullptr) || CGNNamedMutexLock(nullptr, "a"));
    OSMutexDestroy(mutex);
    OSRWLockDestroy(lock);
}

TEST(Guard, JoinsThreads) {
    std::atomic<bool> goOn{false};
    std::atomic<int> ended{0};
    const auto wait = [&] {
        Eventually([&] { return goOn.load(); });
        return ++ended;
    };
    {
        OSThread none, first(wait), moved(std::move(first));
        EXPECT_TRUE(!none && !first && moved);
        EXPECT_TRUE(none.Join() && first.Join());
        EXPECT_FALSE(moved.Join(5));
        OSThread second([&] { wait(); });
        goOn = true;
        EXPECT_TRUE(second.Join());
        EXPECT_EQ(second.ExitCode(), 0u);
        EXPECT_TRUE(moved.Join(1000000) && !moved);
        EXPECT_TRUE(moved.ExitCode() == 1 || moved.ExitCode() == 2);
        none = OSThread(wait);
    }
    EXPECT_EQ(ended, 3);
}

}  // namespace
