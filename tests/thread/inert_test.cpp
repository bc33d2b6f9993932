// A process before and after it becomes threaded. There is no way
// back: this is a program of its own, with one test.
#include <gtest/gtest.h>

#include "gendate.h"
#include "mbutil.h"
#include "osthread.h"
#include "tests/support/worker.h"

TEST(Inert, LocksDoNothingInAnUnthreadedProcess) {
    EXPECT_FALSE(OSIsThreaded());
    _osmutex* mutex = OSMutexCreate();
    _osrdwr* lock = OSRWLockCreate();
    _oscondition* condition = OSConditionCreate();
    ASSERT_TRUE(mutex && lock && condition);
    CGNLclSt* variables = CGNLclSt::Instance();
    EXPECT_EQ(variables->GetIndex("a"), -1);
    EXPECT_FALSE(variables->Init(-1));
    EXPECT_TRUE(variables->Init(2));
    int value = 0, own = 0;
    EXPECT_EQ(variables->SetLocalVariable("a", &value), 0);

    const auto takeAll = [&] {
        OSMutexWait(mutex);
        EXPECT_FALSE(OSMutexWaitIsPresentThisThread(mutex));
        OSMutexWaitRemoveThisThread();
        OSRWLockReadWait(lock);
        OSRWLockWriteWait(lock);
        OSRWLockReadRelease(lock);
        OSRWLockReadRelease(lock);
        OSConditionWait(condition, mutex);
        OSConditionSignal(condition);
        OSConditionBroadcast(condition);
    };
    CGNLclStTable table = {1, {{nullptr, &own}}};
    CGNNamedMutexPool pool;
    EXPECT_TRUE(pool.Init());
    const auto takeName = [&] { EXPECT_TRUE(pool.WaitNamedMutex("a")); };
    EXPECT_EQ(Printed([&] {
                  takeAll();
                  takeName();
                  Worker(takeName).Join();
                  for (int i = 0; i < 3; ++i) pool.ReleaseNamedMutex("a");
                  Worker worker(
                      [&] {
                          takeAll();
                          EXPECT_EQ(variables->GetLocalVariable("a"), &value);
                      },
                      &table);
              }),
              "");
    _osmutex* brief = OSMutexCreate();
    OSMutexDestroy(brief);

    // An unthreaded process always has the zone of its environment.
    mbSetTZone("AAA3");
    OSTimeZone::GetInstance()->SetTZ("BBB4");
    CGNLclSt::Instance()->SetLocalVariable("timezone", const_cast<char*>("BBB4"));
    std::tm local;
    CGNDateTime::LocalTimeTS(1269093600, local);
    EXPECT_EQ(local.tm_hour, 11);
    mbSetTZone("CCC-5");
    CGNDateTime::LocalTimeTS(1269093600, local);
    EXPECT_EQ(local.tm_hour, 19);
    mbSetTZone(nullptr);

    OSSetThreaded();
    OSSetThreaded();
    EXPECT_TRUE(OSIsThreaded());
    // The object's own table is out of sight, and the locks have nothing to wait for.
    EXPECT_EQ(variables->GetIndex("a"), 0);
    EXPECT_EQ(variables->GetLocalVariable("a"), nullptr);
    ExpectError([&] { OSMutexWait(mutex); });
    EXPECT_FALSE(OSMutexWaitIsPresentThisThread(mutex));
    OSMutexDestroy(mutex);
    OSRWLockDestroy(lock);
    OSConditionDestroy(condition);
}
