// Locks between threads: exclusion, waiting, and the end of a thread that holds one.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <vector>

#include "osthread.h"
#include "tests/support/worker.h"

namespace {

class Lock : public testing::Test {
  protected:
    static void SetUpTestSuite() { OSSetThreaded(); }

    // Visits enter and leave.
    static void Visit(_osmutex* mutex) {
        OSMutexWait(mutex);
        OSMutexRelease(mutex);
    }
    void Read() {
        OSRWLockReadWait(m_lock);
        OSRWLockReadRelease(m_lock);
    }
    void Write() {
        OSRWLockWriteWait(m_lock);
        OSRWLockWriteRelease(m_lock);
    }
    // Whether another thread gets the mutex now; one that does not is stuck.
    static bool IsFree(_osmutex* mutex) {
        Worker visitor([&] { Visit(mutex); });
        visitor.Join();
        return visitor.IsDone();
    }

    _osmutex* m_mutex = OSMutexCreate();
    _osmutex* m_other = OSMutexCreate();
    _osrdwr* m_lock = OSRWLockCreate();
    _oscondition* m_condition = OSConditionCreate();

    ~Lock() override {
        OSMutexDestroy(m_mutex);
        OSMutexDestroy(m_other);
        OSRWLockDestroy(m_lock);
        OSConditionDestroy(m_condition);
    }
};

using Mutex = Lock;
using ReadWriteLock = Lock;
using Condition = Lock;

}  // namespace

// -- Mutexes -------------------------------------------------------------------------------------

TEST_F(Mutex, IsReleasedAsOftenAsItWasTaken) {
    EXPECT_FALSE(OSMutexWaitIsPresentThisThread(m_mutex));
    OSMutexWait(m_mutex);
    OSMutexWait(m_mutex);
    const auto visit = [&] { Visit(m_mutex); };
    Worker visitor(visit), second(visit), third(visit);  // who is woken wakes the next
    EXPECT_TRUE(IsHeldUp(visitor));
    OSMutexRelease(m_mutex);
    EXPECT_TRUE(OSMutexWaitIsPresentThisThread(m_mutex));
    EXPECT_TRUE(IsHeldUp(visitor));
    OSMutexRelease(m_mutex);
    EXPECT_FALSE(OSMutexWaitIsPresentThisThread(m_mutex));
}

TEST_F(Mutex, ExcludesOtherThreads) {
    int steps = 0;
    AtTheSameTime(4, [&, this](int) {
        for (int i = 0; i < 100000; ++i) {
            OSMutexWait(m_mutex);
            ++steps;
            OSMutexRelease(m_mutex);
        }
    });
    EXPECT_EQ(steps, 4 * 100000);
}

TEST_F(Mutex, ReleasesAllOfAThread) {
    std::vector<_osmutex*> many(30);
    for (_osmutex*& mutex : many) OSMutexWait(mutex = OSMutexCreate());
    OSMutexWait(m_mutex);
    OSMutexWait(m_mutex);
    for (std::size_t i = 0; i < many.size(); i += 2) OSMutexRelease(many[i]);
    std::atomic<bool> holds{false}, goOn{false};
    Worker holder([&] {
        OSMutexWait(m_other);
        holds = true;
        Eventually([&] { return goOn.load(); });
        OSMutexRelease(m_other);
    });
    ASSERT_TRUE(Eventually([&] { return holds.load(); }));

    EXPECT_EQ(Printed([] { OSMutexWaitRemoveThisThread(); }), "");
    EXPECT_FALSE(OSMutexWaitIsPresentThisThread(m_mutex));
    EXPECT_TRUE(IsFree(m_mutex));
    for (_osmutex* mutex : many) EXPECT_TRUE(IsFree(mutex));
    // Nobody else's, though.
    Worker visitor([&] { Visit(m_other); });
    EXPECT_TRUE(IsHeldUp(visitor));
    goOn = true;
    visitor.Join();
    for (_osmutex* mutex : many) OSMutexDestroy(mutex);
}

// There are more threads than buckets here, so at least two of them share one.
TEST_F(Mutex, PresenceIncludesThreadsOfTheSameBucket) {
    constexpr std::size_t kBuckets = 211;
    struct Seen {
        std::atomic<unsigned long> thread{0};
        bool present = false;
    };
    std::vector<Seen> seen(kBuckets + 1);
    std::atomic<unsigned long> holder{0};
    std::atomic<bool> holds{false};
    std::atomic<std::size_t> answers{0};
    Worker chooser([&] {
        std::array<unsigned long, kBuckets> first{};
        unsigned long shared = 0;
        for (Seen& own : seen) {
            Eventually([&] { return own.thread != 0; });
            if (first[own.thread % kBuckets] != 0) shared = own.thread;
            first[own.thread % kBuckets] = own.thread;
        }
        holder = shared;
    });
    AtTheSameTime(static_cast<int>(seen.size()), [&, this](int i) {
        Seen& own = seen[static_cast<std::size_t>(i)];
        own.thread = OSGetCurrentThreadID();
        Eventually([&] { return holder != 0; });
        if (holder == own.thread) {
            OSMutexWait(m_mutex);
            holds = true;
        }
        Eventually([&] { return holds.load(); });
        own.present = OSMutexWaitIsPresentThisThread(m_mutex);
        ++answers;
        Eventually([&] { return answers == seen.size(); });
        if (holder == own.thread) OSMutexRelease(m_mutex);
    });
    for (const Seen& own : seen)
        EXPECT_EQ(own.present, own.thread % kBuckets == holder % kBuckets) << own.thread;
}

TEST_F(Mutex, IsReleasedWhenItsHolderEnds) {
    {
        Worker([&] { OSMutexWait(m_mutex), OSMutexWait(m_mutex), OSMutexWait(m_other); });
    }
    EXPECT_FALSE(OSMutexWaitIsPresentThisThread(m_mutex));
    ExpectError([&] { OSMutexRelease(m_mutex); });  // of nothing that is held
    EXPECT_TRUE(IsFree(m_mutex));
    EXPECT_TRUE(IsFree(m_other));
}

TEST_F(Mutex, ReleaseByAnotherThreadIsAnError) {
    const auto release = [&] { OSMutexRelease(m_mutex); };
    ExpectError(release);
    OSMutexWait(m_mutex);
    ExpectError([&] { Worker worker(release); });
    Worker visitor([&] { Visit(m_mutex); });
    EXPECT_TRUE(IsHeldUp(visitor));
    EXPECT_EQ(Printed(release), "");
}

TEST_F(Mutex, MayBeDestroyedByItsHolder) {
    _osmutex* mutex = OSMutexCreate();
    OSMutexWait(mutex);
    OSMutexWait(m_mutex);
    OSMutexWait(mutex);
    OSMutexDestroy(mutex);
    EXPECT_EQ(Printed([] { OSMutexWaitRemoveThisThread(); }), "");
    EXPECT_TRUE(IsFree(m_mutex));
}

// Each kind of wait with a limit: it fails while another thread is in, and enters afterwards.
TEST_F(Lock, WaitsEndAtTheirLimit) {
    CGNNamedMutexPool pool;
    ASSERT_TRUE(pool.Init());
    const auto endWriting = [this] { OSRWLockWriteRelease(m_lock); };
    const auto endMutex = [this] { OSMutexRelease(m_mutex); };
    const auto endName = [&] { pool.ReleaseNamedMutex("a"); };
    const struct {
        const char* what;
        std::function<void()> hold, end;
        std::function<bool(std::uint32_t)> tryIt;
        std::function<void()> leave;
    } kRows[] = {
        {"mutex", [this] { OSMutexWait(m_mutex); }, endMutex,
         [this](std::uint32_t limit) { return OSMutexTryWait(m_mutex, limit); }, endMutex},
        {"read", [this] { OSRWLockWriteWait(m_lock); }, endWriting,
         [this](std::uint32_t limit) { return OSRWLockReadTryWait(m_lock, limit); },
         [this] { OSRWLockReadRelease(m_lock); }},
        {"write", [this] { OSRWLockWriteWait(m_lock); }, endWriting,
         [this](std::uint32_t limit) { return OSRWLockWriteTryWait(m_lock, limit); }, endWriting},
        {"write while another reads", [this] { OSRWLockReadWait(m_lock); },
         [this] { OSRWLockReadRelease(m_lock); },
         [this](std::uint32_t limit) { return OSRWLockWriteTryWait(m_lock, limit); }, endWriting},
        {"name", [&] { pool.WaitNamedMutex("a"); }, endName,
         [&](std::uint32_t limit) { return pool.WaitNamedMutex("a", limit); }, endName},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(Printed([&] {
                      row.hold();
                      for (const std::uint32_t limit : {0u, 1u, 25u})
                          Worker([&] { EXPECT_FALSE(row.tryIt(limit)) << limit; }).Join();
                      const auto enter = [&](std::uint32_t limit) {
                          EXPECT_TRUE(row.tryIt(limit)) << limit;
                          row.leave();
                      };
                      Worker patient([&] { enter(1000000); });
                      Worker endless([&] { enter(OSNoLimit); });
                      EXPECT_TRUE(IsHeldUp(patient));
                      row.end();
                      patient.Join();
                      endless.Join();
                      EXPECT_TRUE(row.tryIt(0));
                      row.leave();
                  }),
                  "");
    }
    EXPECT_FALSE(OSMutexTryWait(nullptr, 0) || OSRWLockReadTryWait(nullptr, 0) ||
                 OSRWLockWriteTryWait(nullptr, 0) || OSConditionWaitFor(nullptr, m_mutex, 0));
}

// Waits that give up, among others that do not, under releases of all kinds.
TEST_F(Lock, LimitsLoseNoWakeUp) {
    int steps = 0, writes = 0;
    std::atomic<int> expected{0}, expectedWrites{0};
    AtTheSameTime(4, [&, this](int thread) {
        for (int i = 0; i < 300; ++i) {
            const std::uint32_t limit =
                thread % 2 == 0 ? OSNoLimit : static_cast<std::uint32_t>(i % 3);
            if (OSMutexTryWait(m_mutex, limit)) {
                ++steps, ++expected;
                OSMutexRelease(m_mutex);
            }
            if (OSRWLockWriteTryWait(m_lock, limit)) {
                ++writes, ++expectedWrites;
                OSRWLockWriteRelease(m_lock);
            }
            if (OSRWLockReadTryWait(m_lock, limit)) OSRWLockReadRelease(m_lock);
        }
    });
    EXPECT_EQ(steps, expected);
    EXPECT_EQ(writes, expectedWrites);
    EXPECT_TRUE(OSRWLockWriteTryWait(m_lock, 0));
    OSRWLockWriteRelease(m_lock);
}

TEST_F(Lock, NullIsIgnored) {
    EXPECT_EQ(Printed([&] {
                  OSMutexWait(nullptr);
                  OSMutexRelease(nullptr);
                  OSMutexDestroy(nullptr);
                  OSRWLockReadWait(nullptr);
                  OSRWLockReadRelease(nullptr);
                  OSRWLockWriteWait(nullptr);
                  OSRWLockWriteRelease(nullptr);
                  OSRWLockDestroy(nullptr);
                  OSConditionWait(nullptr, m_mutex);
                  OSConditionSignal(nullptr);
                  OSConditionBroadcast(nullptr);
                  OSConditionDestroy(nullptr);
                  OSThreadTerminateWait(nullptr);
                  OSThreadDestroy(nullptr);
              }),
              "");
    EXPECT_FALSE(OSMutexWaitIsPresentThisThread(nullptr));
}

// -- Read-write locks ----------------------------------------------------------------------------

TEST_F(ReadWriteLock, ReadersEnterWhileAWriterWaits) {
    OSRWLockReadWait(m_lock);
    std::atomic<bool> secondReads{false}, secondMayEnd{false};
    Worker second([&] {
        OSRWLockReadWait(m_lock);
        secondReads = true;
        Eventually([&] { return secondMayEnd.load(); });
        OSRWLockReadRelease(m_lock);
    });
    EXPECT_TRUE(Eventually([&] { return secondReads.load(); }));
    Worker writer([&] { Write(); });
    EXPECT_TRUE(IsHeldUp(writer));
    Worker([&] { Read(); }).Join();
    OSRWLockReadRelease(m_lock);
    EXPECT_TRUE(IsHeldUp(writer));
    secondMayEnd = true;
}

TEST_F(ReadWriteLock, WriterExcludesOthersAndEntersAgain) {
    ExpectError([&] { OSRWLockReadRelease(m_lock); });  // nobody is in
    ExpectError([&] { OSRWLockWriteRelease(m_lock); });
    OSRWLockWriteWait(m_lock);
    OSRWLockWriteWait(m_lock);
    OSRWLockReadWait(m_lock);
    OSRWLockWriteWait(m_lock);
    OSRWLockWriteRelease(m_lock);
    Worker reader([&] { Read(); }), another([&] { Read(); });
    Worker([&] { ExpectError([&] { OSRWLockWriteRelease(m_lock); }); }).Join();
    OSRWLockReadRelease(m_lock);
    OSRWLockWriteRelease(m_lock);
    EXPECT_TRUE(IsHeldUp(reader));
    // Out of the write with a read of its own begun inside: readers may come, a writer not yet.
    OSRWLockReadWait(m_lock);
    OSRWLockWriteRelease(m_lock);
    reader.Join();
    another.Join();
    const auto write = [&] { Write(); };
    Worker writer(write), second(write), third(write);
    EXPECT_TRUE(IsHeldUp(writer));
    OSRWLockReadRelease(m_lock);
}

TEST_F(ReadWriteLock, ReadersSeeWholeWrites) {
    long first = 0, second = 0;
    std::atomic<int> halves{0};
    AtTheSameTime(6, [&, this](int thread) {
        for (int turn = 0; turn < 700; ++turn) {
            if (thread % 2 == 0) {
                OSRWLockWriteWait(m_lock);
                ++first;
                ++second;
                OSRWLockWriteRelease(m_lock);
            } else {
                OSRWLockReadWait(m_lock);
                if (first != second) ++halves;
                OSRWLockReadRelease(m_lock);
            }
        }
    });
    EXPECT_EQ(halves, 0);
    EXPECT_EQ(first, 3 * 700);
}

TEST_F(ReadWriteLock, IsReleasedWhenItsWriterEnds) {
    {
        Worker([&] { OSRWLockWriteWait(m_lock), OSRWLockWriteWait(m_lock); });
    }
    Worker([&] { Read(), Write(); }).Join();
    ExpectError([&] { OSRWLockWriteRelease(m_lock); });
}

// -- Conditions ----------------------------------------------------------------------------------

TEST_F(Condition, SignalWakesOneWaiterAndBroadcastAll) {
    OSConditionSignal(m_condition);
    OSConditionBroadcast(m_condition);
    int waiting = 0;
    std::atomic<int> woken{0};
    const auto wait = [&] {
        OSMutexWait(m_mutex);
        ++waiting;
        OSConditionWait(m_condition, m_mutex);
        ++woken;
        OSMutexRelease(m_mutex);
    };
    // Who holds the mutex afterwards has seen all waiters give it up.
    const auto waitFor = [&](int count) {
        return Eventually([&] {
            OSMutexWait(m_mutex);
            const bool all = waiting == count;
            OSMutexRelease(m_mutex);
            return all;
        });
    };
    Worker first(wait), second(wait), third(wait), fourth(wait);
    ASSERT_TRUE(waitFor(4));
    EXPECT_TRUE(HoldsBack([&] { return woken != 0; }));
    OSConditionSignal(m_condition);
    EXPECT_TRUE(Eventually([&] { return woken == 1; }));
    EXPECT_TRUE(HoldsBack([&] { return woken != 1; }));
    OSConditionBroadcast(m_condition);
    EXPECT_TRUE(Eventually([&] { return woken == 4; }));
    OSConditionBroadcast(m_condition);
    Worker late(wait);
    ASSERT_TRUE(waitFor(5));
    EXPECT_TRUE(HoldsBack([&] { return woken != 4; }));
    OSConditionSignal(m_condition);
}

TEST_F(Condition, WaitsEndAtTheirLimit) {
    OSMutexWait(m_mutex);
    for (const std::uint32_t limit : {0u, 1u, 25u})
        EXPECT_FALSE(OSConditionWaitFor(m_condition, m_mutex, limit));
    EXPECT_TRUE(OSMutexWaitIsPresentThisThread(m_mutex));
    // A waiter that gives up takes no signal from one that does not, wherever it is in the queue.
    std::atomic<int> woken{0};
    int waiting = 0;
    const auto wait = [&](std::uint32_t limit) {
        return [&, limit] {
            OSMutexWait(m_mutex);
            ++waiting;
            if (OSConditionWaitFor(m_condition, m_mutex, limit)) ++woken;
            OSMutexRelease(m_mutex);
        };
    };
    {
        Worker before(wait(10)), first(wait(OSNoLimit)), between(wait(20)), second(wait(1000000));
        while (waiting < 4) {
            OSMutexRelease(m_mutex);
            OSMutexWait(m_mutex);
        }
        OSMutexRelease(m_mutex);
        before.Join();
        between.Join();
        OSConditionSignal(m_condition);
        EXPECT_TRUE(Eventually([&] { return woken == 1; }));
        EXPECT_TRUE(HoldsBack([&] { return woken != 1; }));
        OSConditionSignal(m_condition);
    }
    EXPECT_EQ(woken, 2);
}

TEST_F(Condition, NoSignalIsMissedBetweenReleaseAndWait) {
    constexpr int kTurns = 1000;
    _oscondition* conditions[2] = {m_condition, OSConditionCreate()};
    int turn = 0;  // the next is made by the player of its parity
    AtTheSameTime(2, [&, this](int player) {
        for (bool isOver = false; !isOver;) {
            OSMutexWait(m_mutex);
            while (turn < kTurns && turn % 2 != player)
                OSConditionWait(conditions[player], m_mutex);
            isOver = turn >= kTurns;
            ++turn;
            OSConditionSignal(conditions[1 - player]);
            OSMutexRelease(m_mutex);
        }
    });
    EXPECT_EQ(turn, kTurns + 2);
    OSConditionDestroy(conditions[1]);
}
