// Threads.
#include <new>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "osthread.h"
#include "osutil/platform/thread/threading.h"
#include "osutil/thread/thread_value.h"
#include "osutil/thread/threaded.h"

using namespace genutil;

struct _osthread {
    platform::Thread* handle;
};
static_assert(sizeof(_osthread) == sizeof(void*));

namespace genutil {

namespace {

using StartFunction = unsigned (*)(void*);

// The task of a new thread. The thread releases it before the caller's function runs, because that
// function may end the thread.
struct StartBlock : platform::ThreadTask {
    StartFunction start;
    void* argument;
    void* threadValue;
};

// The thread sets its value itself, so that it is available before anything can request it.
unsigned RunStartBlock(platform::ThreadTask* task) {
    auto* block = static_cast<StartBlock*>(task);
    const StartFunction start = block->start;
    void* argument = block->argument;
    if (block->threadValue) SetThreadValue(block->threadValue, nullptr);
    Release(block);
    return start(argument);
}

StartBlock* NewStartBlock(StartFunction start, void* argument, void* threadValue) {
    void* memory = Allocate(sizeof(StartBlock));
    if (!AssertAllocation(memory != nullptr, "osutil/osthread", __LINE__)) return nullptr;
    return new (memory) StartBlock{{RunStartBlock}, start, argument, threadValue};
}

}  // namespace
}  // namespace genutil

unsigned char OSIsThreaded() {
    return g_isThreaded.load(std::memory_order_relaxed);
}

void OSSetThreaded() {
    g_isThreaded.store(1, std::memory_order_relaxed);
}

_osthread* OSThreadCreate(unsigned int (*start)(void*), void* argument, void* threadValue) {
    if (!start) return nullptr;
    auto* thread = static_cast<_osthread*>(Allocate(sizeof(_osthread)));
    AssertAllocation(thread != nullptr, "osutil/osthread", __LINE__);
    StartBlock* block = thread ? NewStartBlock(start, argument, threadValue) : nullptr;
    // A system may fail to start a thread without an error code.
    if (block && Succeeded(platform::StartThread(block, &thread->handle)) && thread->handle)
        return thread;
    Release(block);
    Release(thread);
    return nullptr;
}

unsigned long OSGetCurrentThreadID() {
    return platform::ThreadId();
}

void OSThreadTerminateWait(_osthread* thread) {
    if (thread) Succeeded(platform::WaitForThreadEnd(thread->handle));
}

unsigned char OSThreadWaitFor(_osthread* thread, std::uint32_t limit, unsigned int* exitCode) {
    if (!thread) return 0;
    const unsigned error = platform::WaitForThreadEnd(thread->handle, limit, exitCode);
    return error != platform::kTimedOut && Succeeded(error);
}

void OSThreadExit() {
    platform::EndThisThread();
}

void OSThreadDestroy(_osthread* thread) {
    if (!thread) return;
    platform::CloseThread(thread->handle);
    Release(thread);
}
