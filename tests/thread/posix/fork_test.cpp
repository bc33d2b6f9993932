// Locks across a fork: the child's thread goes on with those that it held.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>

#include "osguard.h"
#include "tests/support/worker.h"

TEST(Fork, ChildKeepsTheLocksOfItsThread) {
    OSSetThreaded();
    _osmutex* const mutex = OSMutexCreate();
    _osrdwr* const lock = OSRWLockCreate();
    OSMutexWait(mutex);
    OSMutexWait(mutex);
    OSRWLockWriteWait(lock);
    const pid_t child = fork();
    if (child == 0) {
        alarm(20);
        const auto use = [&] {
            if (!OSMutexWaitIsPresentThisThread(mutex)) std::puts("not present");
            OSMutexRelease(mutex);
            OSMutexRelease(mutex);
            OSMutexWait(mutex);
            OSMutexWaitRemoveThisThread();
            OSRWLockWriteWait(lock);
            OSRWLockWriteRelease(lock);
            OSRWLockWriteRelease(lock);
            OSRWLockReadWait(lock);
            OSRWLockReadRelease(lock);
        };
        _exit(Printed(use).empty() ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(Printed([&] {
                  OSRWLockWriteRelease(lock);
                  OSMutexWaitRemoveThisThread();
              }),
              "");
    OSMutexDestroy(mutex);
    OSRWLockDestroy(lock);
}

// The waiting threads of the parent do not exist in the child.
TEST(Fork, ChildUsesAConditionThatOthersWaitFor) {
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer supports no new threads in a child";
#endif
    OSSetThreaded();
    _osmutex* const mutex = OSMutexCreate();
    _osmutex* const others = OSMutexCreate();
    _oscondition* const condition = OSConditionCreate();
    std::atomic<int> waiting{0};
    const auto wait = [&] {
        OSMutexWait(mutex);
        ++waiting;
        OSConditionWait(condition, mutex);
        OSMutexRelease(mutex);
    };
    int status = -1;
    {
        Worker first(wait), second(wait), holder([&] {
            OSMutexWait(others);
            ++waiting;
            wait();
        });
        ASSERT_TRUE(Eventually([&] { return waiting == 4; }));
        OSMutexWait(mutex);  // both wait
        const pid_t child = fork();
        if (child == 0) {
            alarm(60);
            // That of a thread which the child does not have.
            if (!OSMutexTryWait(others, 0) || !OSMutexTryWait(others, 50)) _exit(2);
            OSMutexRelease(mutex);
            bool isWoken = false;
            OSThread waiter([&] {
                OSMutexWait(mutex);
                waiting = 5;
                isWoken = OSConditionWaitFor(condition, mutex, 50000);
                OSMutexRelease(mutex);
            });
            Eventually([&] { return waiting == 5; });
            OSMutexWait(mutex);
            OSConditionBroadcast(condition);
            const bool isTimedOut = !OSConditionWaitFor(condition, mutex, 1);
            OSMutexRelease(mutex);
            waiter.Join();
            _exit(isWoken && isTimedOut ? 0 : 1);
        }
        waitpid(child, &status, 0);
        OSConditionBroadcast(condition);
        OSMutexRelease(mutex);
    }
    EXPECT_EQ(status, 0);
    OSMutexDestroy(mutex);
    OSMutexDestroy(others);
    OSConditionDestroy(condition);
}
