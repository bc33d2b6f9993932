// Records of threads, and threads and locks when memory runs out.
#include <gtest/gtest.h>

#include <vector>

#include "osthread.h"
#include "osutil/thread/lock.h"
#include "osutil/thread/thread_record.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/worker.h"

using namespace genutil;

namespace {

_osmutex* Number(std::size_t i) {
    static char s_places[100];
    return reinterpret_cast<_osmutex*>(&s_places[i]);
}

}  // namespace

TEST(HeldMutexes, RemoveInAnyOrder) {
    HeldMutexes held;
    for (std::size_t i = 0; i < 50; ++i) held.Add(Number(i % 25));
    EXPECT_FALSE(held.RemoveLast(Number(0)));
    EXPECT_TRUE(held.RemoveLast(Number(24)));
    held.Remove(Number(0));
    EXPECT_TRUE(held.Has(Number(0))) << "the earlier one";
    held.Remove(Number(0));
    EXPECT_FALSE(held.Has(Number(0)));
    held.RemoveAll(Number(7));
    EXPECT_FALSE(held.Has(Number(7)));
    ASSERT_EQ(held.Count(), 45u);
    EXPECT_EQ(held.At(0), Number(1));
    EXPECT_EQ(held.At(6), Number(8));
    EXPECT_EQ(held.At(44), Number(23));
}

TEST(ThreadRecord, CountsLockCallsAndKnowsTheOwner) {
    OSSetThreaded();
    const std::uint32_t before = CountLockCalls();
    _osmutex* mutex = OSMutexCreate();
    OSMutexWait(mutex);
    EXPECT_EQ(mutex->owner, OSGetCurrentThreadID());
    OSMutexRelease(mutex);
    EXPECT_EQ(mutex->owner, 0u);
    ThreadRecord* record = nullptr;
    {
        Worker worker([&] { OSMutexWait(mutex), record = KnownThreadRecord(); });
    }
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->held.Count(), 0u) << "a later thread's";
    OSMutexDestroy(mutex);
    EXPECT_EQ(CountLockCalls() - before, 5u);
}

TEST(Allocation, FailuresAreReturnedAndOtherLocksWork) {
    OSSetThreaded();
    Worker worker([] {
        {
            AllocationGate none(0);
            EXPECT_EQ(OSMutexCreate(), nullptr);
            EXPECT_EQ(OSConditionCreate(), nullptr);
            EXPECT_EQ(OSThreadCreate([](void*) { return 0u; }, nullptr, nullptr), nullptr);
            EXPECT_FALSE(CGNLclSt::Instance()->Init(3));
        }
        {
            AllocationGate theRecordOnly(1);
            EXPECT_EQ(OSThreadCreate([](void*) { return 0u; }, nullptr, nullptr), nullptr);
        }
        CGNLclSt::Instance()->Init(3);
        std::vector<_osmutex*> mutexes(20);
        for (_osmutex*& mutex : mutexes) mutex = OSMutexCreate();
        {
            AllocationGate none(0);
            EXPECT_EQ(CGNLclSt::Instance()->SetLocalVariable("a", nullptr), -1);
            for (_osmutex* mutex : mutexes) OSMutexWait(mutex);  // more than there is room to list
        }
        EXPECT_EQ(Printed([&] {
                      for (_osmutex* mutex : mutexes) OSMutexRelease(mutex);
                  }),
                  "");
        for (_osmutex* mutex : mutexes) OSMutexDestroy(mutex);
    });
}

// Each allocation of a first wait fails once; the name can be used afterwards all the same.
TEST(Allocation, NamedMutexIsUsableAfterAFailure) {
    OSSetThreaded();
    CGNNamedMutexPool pool;
    {
        AllocationGate none(0);
        EXPECT_FALSE(pool.Init());
    }
    ASSERT_TRUE(pool.Init());
    const CGNString name("a name"), longer("a name that is longer than the one before");
    bool isTaken = false;
    for (int allocations = 0; !isTaken; ++allocations) {
        ASSERT_LT(allocations, 10);
        AllocationGate some(allocations);
        isTaken = pool.WaitNamedMutex(name);
    }
    pool.ReleaseNamedMutex(name);
    {
        AllocationGate none(0);
        EXPECT_FALSE(pool.WaitNamedMutex(longer));
        EXPECT_TRUE(pool.WaitNamedMutex(name));
    }
    pool.ReleaseNamedMutex(name);
}
