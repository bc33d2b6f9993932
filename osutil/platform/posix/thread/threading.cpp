#include "osutil/platform/thread/threading.h"

#include <errno.h>
#include <pthread.h>
#include <unistd.h>

#include "genutil/allocate.h"
#include "osutil/platform/posix/thread/futex.h"

namespace genutil::platform {

const unsigned kTimedOut = ETIMEDOUT;

// -- Threads -------------------------------------------------------------------------------------

// A pthread can be joined only once. Other and later callers wait for that join.
struct Thread {
    pthread_t system;
    pthread_mutex_t joining;
    bool joined;
    unsigned exitCode;  // once joined
};

namespace {

void* RunTask(void* block) {
    auto* task = static_cast<ThreadTask*>(block);
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(task->run(task)));
}

// A wait without a limit uses the calls that every tool knows.
int Lock(pthread_mutex_t* mutex, const Deadline& deadline) {
    const timespec* end = deadline.Time();
    return end ? pthread_mutex_clocklock(mutex, CLOCK_MONOTONIC, end) : pthread_mutex_lock(mutex);
}

int Join(pthread_t thread, void** result, const Deadline& deadline) {
    const timespec* end = deadline.Time();
    return end ? pthread_clockjoin_np(thread, result, CLOCK_MONOTONIC, end)
               : pthread_join(thread, result);
}

}  // namespace

unsigned StartThread(ThreadTask* task, Thread** thread) {
    *thread = nullptr;
    auto* started = New<Thread>();
    if (!started) return ENOMEM;
    pthread_mutex_init(&started->joining, nullptr);
    const int error = pthread_create(&started->system, nullptr, RunTask, task);
    if (error) {
        delete started;
        return static_cast<unsigned>(error);
    }
    *thread = started;
    return 0;
}

unsigned WaitForThreadEnd(Thread* thread, std::uint32_t limit, unsigned* exitCode) {
    if (!thread) return EINVAL;
    const Deadline deadline(limit);
    int error = Lock(&thread->joining, deadline);
    if (error) return static_cast<unsigned>(error);
    if (!thread->joined) {
        void* result = nullptr;
        error = Join(thread->system, &result, deadline);
        thread->joined = error == 0;
        thread->exitCode = static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(result));
    }
    if (!error && exitCode) *exitCode = thread->exitCode;
    pthread_mutex_unlock(&thread->joining);
    return static_cast<unsigned>(error);
}

void CloseThread(Thread* thread) {
    if (!thread) return;
    if (!thread->joined) pthread_detach(thread->system);
    pthread_mutex_destroy(&thread->joining);
    delete thread;
}

void EndThisThread() {
    pthread_exit(nullptr);
}

// -- The calling thread --------------------------------------------------------------------------

thread_local constinit ThisThread t_thisThread{};

namespace {

void LeaveThread(void*) {
    ThisThread& self = t_thisThread;
    if (self.pointer) {
        void* pointer = self.pointer;
        self.pointer = nullptr;
        self.atEnd(pointer);
    }
    while (self.held) {
        HeldLock* lock = self.held;
        self.held = lock->next;
        if (self.held) self.held->previous = nullptr;
        lock->abandon(lock);
    }
    self.id = 0;  // if other destructors of the thread take locks from here on, this function is
                  // called again
}

std::atomic<std::uint32_t> g_forks{0};

// In the child of a fork, the only thread continues under a new id with the locks that it holds.
void RenewThread() {
    g_forks.fetch_add(1, std::memory_order_relaxed);
    ThisThread& self = t_thisThread;
    if (!self.id) return;
    self.id = static_cast<std::uint32_t>(gettid());
    for (HeldLock* lock = self.held; lock; lock = lock->next) lock->renew(lock, self.id);
    if (self.pointer) self.renewed(self.pointer);
}

struct EndKey {
    EndKey() : valid(pthread_key_create(&key, LeaveThread) == 0) {
        pthread_atfork(nullptr, nullptr, RenewThread);
    }
    pthread_key_t key;
    bool valid;
};

}  // namespace

bool EnterThread() {
    static const EndKey s_end;
    t_thisThread.id = static_cast<std::uint32_t>(gettid());
    return s_end.valid && pthread_setspecific(s_end.key, &t_thisThread) == 0;
}

std::uint32_t CountForks() {
    return g_forks.load(std::memory_order_relaxed);
}

bool SetThreadPointer(void* pointer, void (*atEnd)(void*), void (*renewed)(void*)) {
    if (!EnterThread()) return false;
    t_thisThread.pointer = pointer;
    t_thisThread.atEnd = atEnd;
    t_thisThread.renewed = renewed;
    return true;
}

}  // namespace genutil::platform
