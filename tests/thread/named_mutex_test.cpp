// Mutexes by name: exclusion, and names that stay usable however a mutex was given up.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <memory>
#include <string>

#include "osthread.h"
#include "tests/support/worker.h"

namespace {

class NamedMutex : public testing::Test {
  protected:
    static void SetUpTestSuite() { OSSetThreaded(); }
    NamedMutex() { EXPECT_TRUE(m_pool.Init()); }

    // Waits for the name and releases it, on a thread of its own.
    std::unique_ptr<Worker> Visit(const std::string& name) {
        return std::make_unique<Worker>([this, name] {
            EXPECT_TRUE(m_pool.WaitNamedMutex(name.c_str()));
            m_pool.ReleaseNamedMutex(name.c_str());
        });
    }

    CGNNamedMutexPool m_pool;
};

}  // namespace

TEST_F(NamedMutex, ExcludesTheSameNameOnly) {
    EXPECT_TRUE(m_pool.Init()) << "once more changes nothing";
    m_pool.WaitNamedMutex("a");
    m_pool.WaitNamedMutex("a");
    auto same = Visit("a");
    for (const char* other : {"b", "A", "", "aa", "\x83\x41"}) Visit(other)->Join();
    EXPECT_TRUE(IsHeldUp(*same));
    m_pool.ReleaseNamedMutex("a");
    EXPECT_TRUE(IsHeldUp(*same));
    m_pool.ReleaseNamedMutex("a");
    same->Join();
    EXPECT_EQ(Printed([&] {
                  m_pool.ReleaseNamedMutex("a");  // which is out of use by now
                  m_pool.ReleaseNamedMutex("never used");
                  m_pool.RelIfWaitNamedMutex("a");
              }),
              "");
}

TEST_F(NamedMutex, StaysTheHoldersWhenOthersReleaseIt) {
    m_pool.WaitNamedMutex("a");
    Worker foreign([&] { ExpectError([&] { m_pool.ReleaseNamedMutex("a"); }); });
    foreign.Join();
    auto same = Visit("a");
    EXPECT_TRUE(IsHeldUp(*same));
    EXPECT_EQ(Printed([&] { m_pool.RelIfWaitNamedMutex("a"); }), "");  // it is still marked
    same->Join();
}

TEST_F(NamedMutex, ReusesEntriesForOtherNames) {
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 25; ++i) m_pool.WaitNamedMutex(std::to_string(i * (round + 1)).c_str());
        auto last = Visit(std::to_string(24 * (round + 1)));
        EXPECT_TRUE(IsHeldUp(*last));
        for (int i = 0; i < 25; ++i)
            m_pool.ReleaseNamedMutex(std::to_string(i * (round + 1)).c_str());
    }
}

TEST_F(NamedMutex, FirstReleaseClearsTheMark) {
    m_pool.WaitNamedMutex("a");
    m_pool.WaitNamedMutex("a");
    m_pool.RelIfWaitNamedMutex("a");
    m_pool.RelIfWaitNamedMutex("a");  // not marked any more, though held once
    auto waiter = Visit("a");
    EXPECT_TRUE(IsHeldUp(*waiter));
    m_pool.ReleaseNamedMutex("a");
    waiter->Join();
}

TEST_F(NamedMutex, ReleaseByAnotherThreadIsAnError) {
    m_pool.WaitNamedMutex("a");
    auto waiter = Visit("a");
    EXPECT_TRUE(IsHeldUp(*waiter));
    for (int i = 0; i < 3; ++i)
        ExpectError([&] { Worker other([&] { m_pool.ReleaseNamedMutex("a"); }); });
    EXPECT_TRUE(IsHeldUp(*waiter));
    EXPECT_EQ(Printed([&] { m_pool.ReleaseNamedMutex("a"); }), "");
    waiter->Join();
}

TEST_F(NamedMutex, IsUsableAfterAReleaseWithoutThePool) {
    m_pool.WaitNamedMutex("a");
    OSMutexWaitRemoveThisThread();
    {
        Worker ended([&] { m_pool.WaitNamedMutex("b"); });
    }
    for (const char* name : {"a", "b"}) {
        Visit(name)->Join();
        ExpectError([&] { m_pool.ReleaseNamedMutex(name); });
        EXPECT_EQ(Printed([&] { m_pool.ReleaseNamedMutex(name); }), "") << "nobody uses it";
    }
}

TEST_F(NamedMutex, ExcludesOtherThreads) {
    constexpr int kThreads = 4, kSteps = 500;
    std::array<int, 3> steps{};
    AtTheSameTime(kThreads, [&, this](int) {
        for (int i = 0; i < kSteps * 3; ++i) {
            const CGNString name(std::to_string(i % 3).c_str());
            m_pool.WaitNamedMutex(name);
            ++steps[static_cast<std::size_t>(i % 3)];
            m_pool.ReleaseNamedMutex(name);
        }
    });
    for (const int count : steps) EXPECT_EQ(count, kThreads * kSteps);
}

TEST_F(NamedMutex, ProcessHasOnePool) {
    CGNGlobalNamedMutexPool* pool = CGNGlobalNamedMutexPool::GetInstance();
    ASSERT_NE(pool, nullptr);
    EXPECT_EQ(pool, CGNGlobalNamedMutexPool::GetInstance());
    EXPECT_TRUE(pool->WaitNamedMutex("a"));
    Visit("a")->Join();  // another pool's
    pool->ReleaseNamedMutex("a");
}
