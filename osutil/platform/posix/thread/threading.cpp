#include "osutil/platform/thread/threading.h"

#include <errno.h>
#include <pthread.h>
#include <unistd.h>

#include "genutil/allocate.h"
#include "osutil/platform/posix/thread/futex.h"

namespace genutil::platform {

// A pthread can be joined only once. Other and later callers wait for that join.
struct Thread {
    pthread_t system;
    Mutex* joining;
    bool joined;
    unsigned exitCode;  // once joined
};

namespace {

void* RunTask(void* block) {
    auto* task = static_cast<ThreadTask*>(block);
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(task->run(task)));
}

#if defined(__SANITIZE_THREAD__)  // does not know pthread_clockjoin_np
constexpr clockid_t kJoinClock = CLOCK_REALTIME;
int JoinUntil(pthread_t thread, void** result, const timespec* end) {
    return pthread_timedjoin_np(thread, result, end);
}
#else
constexpr clockid_t kJoinClock = CLOCK_MONOTONIC;
int JoinUntil(pthread_t thread, void** result, const timespec* end) {
    return pthread_clockjoin_np(thread, result, kJoinClock, end);
}
#endif

}  // namespace

unsigned StartThread(ThreadTask* task, Thread** thread) {
    *thread = nullptr;
    auto* started = New<Thread>();
    if (!started) return ENOMEM;
    unsigned error = MakeMutex(&started->joining);
    if (!error)
        error = static_cast<unsigned>(pthread_create(&started->system, nullptr, RunTask, task));
    if (error) {
        CloseMutex(started->joining);
        delete started;
        return error;
    }
    *thread = started;
    return 0;
}

unsigned WaitForThreadEnd(Thread* thread, std::uint32_t limit, unsigned* exitCode) {
    if (!thread) return EINVAL;
    const Deadline deadline(limit, kJoinClock);
    if (const unsigned error = WaitMutex(thread->joining, limit)) return error;
    int error = 0;
    if (!thread->joined) {
        void* result = nullptr;
        const timespec* end = deadline.Time();
        error =
            end ? JoinUntil(thread->system, &result, end) : pthread_join(thread->system, &result);
        thread->joined = error == 0;
        thread->exitCode = static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(result));
    }
    if (!error && exitCode) *exitCode = thread->exitCode;
    ReleaseMutex(thread->joining);
    return static_cast<unsigned>(error);
}

void CloseThread(Thread* thread) {
    if (!thread) return;
    if (!thread->joined) pthread_detach(thread->system);
    CloseMutex(thread->joining);
    delete thread;
}

void EndThisThread() {
    pthread_exit(nullptr);
}

}  // namespace genutil::platform
