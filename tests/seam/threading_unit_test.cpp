// What the platform promises of threads and locks, where nothing above it shows.
#include <gtest/gtest.h>

#include <atomic>

#include "osutil/platform/threading.h"
#include "tests/support/worker.h"

using namespace genutil;

TEST(Threading, AThreadsPointerStartsNullAndItsEndIsCalledWithIt) {
    static std::atomic<int> s_ends;
    s_ends = 0;
    int value = 0;
    bool wasNull = false, isOwn = false;
    {
        Worker worker([&] {
            // The library keeps its record there: no call of it may come first or between.
            wasNull = platform::ThreadPointer() == nullptr;
            platform::SetThreadPointer(&value, [](void* pointer) {
                ++*static_cast<int*>(pointer);
                ++s_ends;
            });
            isOwn = platform::ThreadPointer() == &value;
        });
    }
    EXPECT_TRUE(wasNull);
    EXPECT_TRUE(isOwn);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(s_ends, 1);
}

TEST(Threading, AMutexIsTriedByOthersInVain) {
    platform::Mutex* mutex = nullptr;
    ASSERT_EQ(platform::MakeMutex(&mutex), 0u);
    EXPECT_EQ(platform::TryMutex(mutex), 0u);
    EXPECT_EQ(platform::TryMutex(mutex), 0u);
    unsigned tried = 0, released = 0;
    const auto tryIt = [&] {
        tried = platform::TryMutex(mutex);
        released = platform::ReleaseMutex(mutex);
    };
    { Worker worker(tryIt); }
    EXPECT_NE(tried, 0u);
    EXPECT_NE(released, 0u);
    EXPECT_EQ(platform::ReleaseMutex(mutex), 0u);
    { Worker worker(tryIt); }
    EXPECT_NE(tried, 0u) << "once more to release";
    EXPECT_EQ(platform::ReleaseMutex(mutex), 0u);
    { Worker worker(tryIt); }
    EXPECT_EQ(tried, 0u);
    EXPECT_EQ(released, 0u);
    // Left by a thread that ended: free again.
    {
        Worker([&] { platform::WaitMutex(mutex), platform::WaitMutex(mutex); });
    }
    EXPECT_EQ(platform::TryMutex(mutex), 0u);
    platform::CloseMutex(mutex);

    EXPECT_NE(platform::WaitMutex(nullptr), 0u);
    EXPECT_NE(platform::TryMutex(nullptr), 0u);
    EXPECT_NE(platform::ReleaseMutex(nullptr), 0u);
}

TEST(Threading, ASemaphoreCountsUnits) {
    platform::Semaphore* semaphore = nullptr;
    ASSERT_EQ(platform::MakeSemaphore(&semaphore), 0u);
    EXPECT_EQ(platform::ReleaseSemaphore(semaphore, 2), 0u);
    std::atomic<int> taken{0};
    Worker worker([&] {
        for (int i = 0; i < 3; ++i) {
            platform::WaitSemaphore(semaphore, platform::QueueForSemaphore(semaphore));
            ++taken;
        }
    });
    EXPECT_TRUE(Eventually([&] { return taken == 2; }));
    EXPECT_TRUE(HoldsBack([&] { return taken != 2; }));
    platform::ReleaseSemaphore(semaphore, 1);
    worker.Join();
    platform::CloseSemaphore(semaphore);
}
