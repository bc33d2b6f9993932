// The calling thread: its id, the locks that it holds, and its end.
#include <errno.h>
#include <pthread.h>
#include <unistd.h>

#include "osutil/platform/thread/threading.h"

namespace genutil::platform {

const unsigned kTimedOut = ETIMEDOUT;

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
