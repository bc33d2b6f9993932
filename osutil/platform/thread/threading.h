// What the library asks of an operating system about threads and locks.
//
// A call that can fail gives the system's error code, 0 for success. A null mutex or semaphore is
// one that was never made: its calls fail with a code and do nothing. Every lock is for the threads
// of this process only.
#pragma once

#include <cstdint>

struct _osrdwr;  // the record of a read-write lock: what is in it is each side's own

namespace genutil::platform {

// -- Threads -------------------------------------------------------------------------------------

struct Thread;  // what stands for a thread, until it is closed

// What a new thread does; the start of a block of the caller's, which `run` may release.
struct ThreadTask {
    unsigned (*run)(ThreadTask* task);
};

// Null where it fails, which a system may do without a code.
unsigned StartThread(ThreadTask* task, Thread** thread);
// Returns when the thread has ended, with all that ends with it. Any number of times.
unsigned WaitForThreadEnd(Thread* thread);
void CloseThread(Thread* thread);  // lets go of it, ended or not; null is allowed
[[noreturn]] void EndThisThread();

// Never 0, and no other running thread's. Cheap.
std::uint32_t ThreadId();

// A pointer of the calling thread; null until it sets one. If it is not null, `atEnd` is called on
// the thread with it when the thread ends, and `renewed` in the child of a fork, in which the
// thread goes on under a new number. Both are the same functions for all. Returns false, with
// nothing set, if the system has no room.
void* ThreadPointer();
bool SetThreadPointer(void* pointer, void (*atEnd)(void* pointer), void (*renewed)(void* pointer));

// -- Mutexes -------------------------------------------------------------------------------------

// Recursive: the holder may wait again and then releases as often. Where a thread ends that holds
// one, the next waiter gets it, as if it had been released.
struct Mutex;

unsigned MakeMutex(Mutex** mutex);
unsigned WaitMutex(Mutex* mutex);
unsigned TryMutex(Mutex* mutex);  // WaitMutex that fails at once if another thread holds it
void CloseMutex(Mutex* mutex);    // no other thread may use it; null is allowed

// Whether other threads may use a mutex during a call. A caller that knows they do not, because
// they find it under another lock that it holds, spares what that takes.
enum class Sharing { kShared, kAlone };

// WaitMutex as far as it is a few instructions; else false.
bool TakeMutexAtOnce(Mutex* mutex, Sharing sharing = Sharing::kShared);
// Fails unless the calling thread holds it.
unsigned ReleaseMutex(Mutex* mutex, Sharing sharing = Sharing::kShared);

// -- Semaphores ----------------------------------------------------------------------------------

constexpr int kMostUnits = 0x7FFFFFF;

// Counts units, none at first, up to kMostUnits. Units go to waiters in the order in which they
// queued; a system that lets nobody queue before it waits takes the order of the waits.
struct Semaphore;

unsigned MakeSemaphore(Semaphore** semaphore);
std::uint32_t QueueForSemaphore(Semaphore* semaphore);  // the place, to be waited in once
unsigned WaitSemaphore(Semaphore* semaphore, std::uint32_t place);
unsigned ReleaseSemaphore(Semaphore* semaphore, int count);
void CloseSemaphore(Semaphore* semaphore);  // null is allowed

// -- Read-write locks ----------------------------------------------------------------------------

// Readers share, a writer excludes everybody else. A writer that waits holds up no reader. The
// writer may enter again, for writing and for reading, and releases as often. A writer that ends
// gives way as the holder of a mutex does; a reader that ends stays counted.

// The record alone, which takes part in nothing; null without memory.
_osrdwr* NewReadWriteLock();
unsigned MakeReadWriteLock(_osrdwr* lock);  // makes what it needs of the system
void FreeReadWriteLock(_osrdwr* lock);      // no other thread may use it; null is allowed

unsigned ReadWait(_osrdwr* lock);
unsigned ReadRelease(_osrdwr* lock);
unsigned WriteWait(_osrdwr* lock);
unsigned WriteRelease(_osrdwr* lock);

}  // namespace genutil::platform

#include "threading_fast.h"  // from the side that is built: the calls that stand in their callers
