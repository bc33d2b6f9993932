#include "osutil/platform/thread/threading.h"

#include <process.h>

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

const unsigned kTimedOut = WAIT_TIMEOUT;
static_assert(kNoLimit == INFINITE);

namespace {

template <class Object>
HANDLE HandleOf(Object* object) {
    return static_cast<HANDLE>(object);
}

template <class Object>
unsigned Keep(HANDLE handle, Object** object) {
    *object = static_cast<Object*>(handle);
    return handle ? 0 : GetLastError();
}

unsigned CodeOf(BOOL done) {
    return done ? 0 : GetLastError();
}

// A mutex whose holder has ended is treated as released.
unsigned Wait(HANDLE handle, DWORD limit) {
    const DWORD result = WaitForSingleObject(handle, limit);
    return result == WAIT_FAILED ? GetLastError() : result == WAIT_TIMEOUT ? kTimedOut : 0;
}

unsigned __stdcall RunTask(void* block) {
    auto* task = static_cast<ThreadTask*>(block);
    return task->run(task);
}

}  // namespace

// -- Threads -------------------------------------------------------------------------------------

unsigned StartThread(ThreadTask* task, Thread** thread) {
    unsigned id;
    const auto handle = _beginthreadex(nullptr, 0, RunTask, task, 0, &id);
    return Keep(reinterpret_cast<HANDLE>(handle), thread);
}

unsigned WaitForThreadEnd(Thread* thread, std::uint32_t limit, unsigned* exitCode) {
    const unsigned error = Wait(HandleOf(thread), limit);
    DWORD code = 0;
    if (!error && exitCode && GetExitCodeThread(HandleOf(thread), &code)) *exitCode = code;
    return error;
}

void CloseThread(Thread* thread) {
    if (thread) CloseHandle(HandleOf(thread));
}

void EndThisThread() {
    _endthreadex(0);
    __builtin_unreachable();
}

std::uint32_t CountForks() {
    return 0;
}

std::uint32_t ThreadId() {
    return GetCurrentThreadId();
}

namespace {

void (*g_atEnd)(void*) = nullptr;

void WINAPI CallAtEnd(void* pointer) {
    if (pointer) g_atEnd(pointer);
}

// The system calls into this module at the end of threads, so the module must stay loaded.
DWORD AllocateIndex() {
    HMODULE module;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCSTR>(&CallAtEnd), &module);
    return FlsAlloc(CallAtEnd);
}

// The compiler's thread variables require several calls and a lock here; this is a single call.
DWORD PointerIndex() {
    static const DWORD s_index = AllocateIndex();
    return s_index;
}

}  // namespace

void* ThreadPointer() {
    return FlsGetValue(PointerIndex());
}

bool SetThreadPointer(void* pointer, void (*atEnd)(void*), void (*)(void*)) {
    g_atEnd = atEnd;
    return FlsSetValue(PointerIndex(), pointer) != 0;
}

// -- Mutexes -------------------------------------------------------------------------------------

unsigned MakeMutex(Mutex** mutex) {
    return Keep(::CreateMutexA(nullptr, FALSE, nullptr), mutex);
}

unsigned WaitMutex(Mutex* mutex, std::uint32_t limit) {
    return Wait(HandleOf(mutex), limit);
}

unsigned ReleaseMutex(Mutex* mutex, Sharing) {
    return CodeOf(::ReleaseMutex(HandleOf(mutex)));
}

void CloseMutex(Mutex* mutex) {
    if (mutex) CloseHandle(HandleOf(mutex));
}

// -- Semaphores ----------------------------------------------------------------------------------

unsigned MakeSemaphore(Semaphore** semaphore) {
    return Keep(::CreateSemaphoreA(nullptr, 0, kMostUnits, nullptr), semaphore);
}

void QueueForSemaphore(Semaphore*, Place*) {}

unsigned WaitSemaphore(Semaphore* semaphore, Place*, std::uint32_t limit) {
    return Wait(HandleOf(semaphore), limit);
}

bool TakesUnitAfterAll(Semaphore* semaphore, Place*) {
    return Wait(HandleOf(semaphore), 0) == 0;
}

unsigned ReleaseSemaphore(Semaphore* semaphore, int count) {
    return CodeOf(::ReleaseSemaphore(HandleOf(semaphore), count, nullptr));
}

void CloseSemaphore(Semaphore* semaphore) {
    if (semaphore) CloseHandle(HandleOf(semaphore));
}

}  // namespace genutil::platform
