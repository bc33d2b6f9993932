// Locks across a fork: the child's thread goes on with those that it held.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "osthread.h"
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
