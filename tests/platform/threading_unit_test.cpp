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

TEST(Threading, NullMutexFails) {
    for (const std::uint32_t limit : {0u, 1u, platform::kNoLimit}) {
        EXPECT_NE(platform::WaitMutex(nullptr, limit), 0u);
        EXPECT_NE(platform::WaitMutex(nullptr, limit), platform::kTimedOut);
    }
    EXPECT_NE(platform::ReleaseMutex(nullptr), 0u);
}
