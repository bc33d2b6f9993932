// Threads and locks of the platform layer that no caller shows.
#include <gtest/gtest.h>

#include <atomic>

#include "osutil/platform/thread/threading.h"
#include "tests/support/worker.h"

using namespace genutil;

TEST(Threading, CallsTheEndOfAThreadWithItsPointer) {
    static std::atomic<int> s_ends;
    s_ends = 0;
    int value = 0;
    bool wasNull = false, isOwn = false;
    {
        Worker worker([&] {
            // The library keeps its record there: no call of it may come first or between.
            wasNull = platform::ThreadPointer() == nullptr;
            platform::SetThreadPointer(
                &value,
                [](void* pointer) {
                    ++*static_cast<int*>(pointer);
                    ++s_ends;
                },
                [](void*) {});
            isOwn = platform::ThreadPointer() == &value;
        });
    }
    EXPECT_TRUE(wasNull);
    EXPECT_TRUE(isOwn);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(s_ends, 1);
}

TEST(Threading, TryMutexFailsForOtherThreads) {
    platform::Mutex* mutex = nullptr;
    ASSERT_EQ(platform::MakeMutex(&mutex), 0u);
    EXPECT_EQ(platform::TryMutex(mutex), 0u);
    EXPECT_EQ(platform::TryMutex(mutex), 0u);
    unsigned tried = 0;
    const auto tryIt = [&] { tried = platform::TryMutex(mutex); };
    for (int levels = 2; levels > 0; --levels) {
        { Worker worker(tryIt); }
        EXPECT_NE(tried, 0u) << levels;
        EXPECT_EQ(platform::ReleaseMutex(mutex), 0u);
    }
    { Worker worker(tryIt); }
    EXPECT_EQ(tried, 0u);
    platform::CloseMutex(mutex);

    EXPECT_NE(platform::WaitMutex(nullptr), 0u);
    EXPECT_NE(platform::TryMutex(nullptr), 0u);
    EXPECT_NE(platform::ReleaseMutex(nullptr), 0u);
}
