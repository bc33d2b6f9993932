// Objects that keep the machine awake, with a system that counts its calls.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "ossystem.h"
#include "osutil/platform/system/awake.h"
#include "osutil/system/keep_awake.h"
#include "tests/support/worker.h"

namespace {

std::atomic<int> g_loads, g_frees, g_awakeCalls, g_sleepCalls;
bool g_hasFunction = true;
int g_library;

class FakeSystem {
  public:
    FakeSystem() : m_real(genutil::g_awakeSystem) {
        g_loads = g_frees = g_awakeCalls = g_sleepCalls = 0;
        g_hasFunction = true;
        genutil::g_awakeSystem = {[] { return ++g_loads, static_cast<void*>(&g_library); },
                                  [](void* library) { return g_hasFunction ? library : nullptr; },
                                  [](void*, unsigned long flags) {
                                      if (flags == genutil::platform::kStayAwake) ++g_awakeCalls;
                                      if (flags == 0) ++g_sleepCalls;
                                  },
                                  [](void*) { ++g_frees; }, 5};
    }
    ~FakeSystem() { genutil::g_awakeSystem = m_real; }

  private:
    genutil::AwakeSystem m_real;
};

bool Reaches(const std::atomic<int>& number, int least) {
    return Eventually([&] { return number >= least; });
}

TEST(KeepAwake, AsksWhileOneObjectIsAlive) {
    const FakeSystem system;
    const OSKeepAwake owner(0);
    EXPECT_EQ(g_loads, 1);
    EXPECT_EQ(g_awakeCalls, 0);
    auto first = std::make_unique<OSKeepAwake>(), second = std::make_unique<OSKeepAwake>(1);
    EXPECT_TRUE(Reaches(g_awakeCalls, 10)) << "the worker asks again and again";
    first.reset();
    EXPECT_EQ(g_sleepCalls, 0);
    EXPECT_TRUE(Reaches(g_awakeCalls, g_awakeCalls + 5));
    second.reset();
    // The last object's own call and the worker's.
    EXPECT_TRUE(Reaches(g_sleepCalls, 2));
    const int calls = g_awakeCalls;
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_EQ(g_awakeCalls, calls);
    EXPECT_EQ(g_sleepCalls, 2);
    EXPECT_EQ(g_loads, 1);
    EXPECT_EQ(g_frees, 0);
}

TEST(KeepAwake, RestartsAfterItsOwner) {
    const FakeSystem system;
    auto owner = std::make_unique<OSKeepAwake>(0);
    auto asking = std::make_unique<OSKeepAwake>(1);
    owner.reset();
    EXPECT_EQ(g_frees, 1);
    const int calls = g_awakeCalls;
    auto next = std::make_unique<OSKeepAwake>(0);
    EXPECT_EQ(g_loads, 2);
    EXPECT_TRUE(Reaches(g_awakeCalls, calls + 5)) << "for the object that still asks";
    asking.reset();
    EXPECT_TRUE(Reaches(g_sleepCalls, 2));
    for (int round = 0; round < 100; ++round) {
        next.reset();
        next = std::make_unique<OSKeepAwake>(1);
    }
    next.reset();
    EXPECT_EQ(g_frees, g_loads);
}

TEST(KeepAwake, CallsNothingWithoutTheFunction) {
    const FakeSystem system;
    g_hasFunction = false;
    {
        OSKeepAwake one, two;
        two = one;
    }
    EXPECT_EQ(g_awakeCalls + g_sleepCalls, 0);
    EXPECT_EQ(g_frees, g_loads);
}

TEST(KeepAwake, ServesManyThreads) {
    const FakeSystem system;
    {
        const OSKeepAwake owner(0);
        AtTheSameTime(4, [](int) {
            for (int i = 0; i < 200; ++i) OSKeepAwake asking;
        });
    }
    EXPECT_EQ(g_loads, 1);
    EXPECT_EQ(g_frees, 1);
    const int calls = g_awakeCalls;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(g_awakeCalls, calls);
}

#ifndef _WIN32
TEST(KeepAwake, ForkedProcessesDoNotHang) {
    const FakeSystem system;
    auto owner = std::make_unique<OSKeepAwake>();
    const pid_t child = fork();
    if (child == 0) {
        alarm(5);
        owner.reset();
        _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}
#endif

// Whether there is a session's manager or not.
TEST(KeepAwake, WorksOnTheRealSystem) {
    for (int round = 0; round < 3; ++round) OSKeepAwake awake;
}

}  // namespace
