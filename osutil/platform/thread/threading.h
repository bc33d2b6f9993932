// Platform layer: threads and locks.
//
// A call that can fail returns the system's error code, or 0 on success. A null mutex or semaphore
// is one that could not be created. Calls with it fail with a code and do nothing. Every lock is
// for the threads of this process only.
#pragma once

#include <cstdint>

struct _osrdwr;  // the record of a read-write lock; its content is private to each implementation

namespace genutil::platform {

// -- Threads -------------------------------------------------------------------------------------

struct Thread;  // represents a thread until it is closed

// The task of a new thread, at the start of the caller's own block, which `run` may release.
struct ThreadTask {
    unsigned (*run)(ThreadTask* task);
};

// Starts a thread. *thread is null on failure, for which a system may give no code.
unsigned StartThread(ThreadTask* task, Thread** thread);
// Waits until the thread has ended, including everything that runs at its end. May be called any
// number of times.
unsigned WaitForThreadEnd(Thread* thread);
void CloseThread(Thread* thread);  // releases the thread, ended or not; null is allowed
[[noreturn]] void EndThisThread();

// Returns the id of the calling thread. It is never 0 and never that of another running thread.
// Cheap.
std::uint32_t ThreadId();

// A pointer of the calling thread, null until the thread sets one. If it is not null, `atEnd` is
// called with it on the thread when the thread ends, and `renewed` in the child of a fork, where
// the thread continues under a new id. Every call must pass the same two functions. Returns false
// and sets nothing if the system has no room.
void* ThreadPointer();
bool SetThreadPointer(void* pointer, void (*atEnd)(void* pointer), void (*renewed)(void* pointer));

// -- Mutexes -------------------------------------------------------------------------------------

// A recursive mutex: the holder may wait again and must release as many times. If a thread ends
// while it holds a mutex, the next waiter gets it as if it had been released.
struct Mutex;

unsigned MakeMutex(Mutex** mutex);
unsigned WaitMutex(Mutex* mutex);
unsigned TryMutex(Mutex* mutex);  // WaitMutex() that fails at once if another thread holds the
                                  // mutex
void CloseMutex(Mutex* mutex);    // no other thread may use it; null is allowed

// Whether other threads may use a mutex during a call. A caller that excludes them by another lock
// passes kAlone, which is faster.
enum class Sharing { kShared, kAlone };

// Takes the mutex if that requires only a few instructions. Otherwise returns false.
bool TakeMutexAtOnce(Mutex* mutex, Sharing sharing = Sharing::kShared);
// Releases the mutex. Fails unless the calling thread holds it.
unsigned ReleaseMutex(Mutex* mutex, Sharing sharing = Sharing::kShared);

// -- Semaphores ----------------------------------------------------------------------------------

constexpr int kMostUnits = 0x7FFFFFF;

// A counter of units, initially 0, up to kMostUnits. Units are given to waiters in the order in
// which they queued, or in the order of the waits on a system without queueing before the wait.
struct Semaphore;

unsigned MakeSemaphore(Semaphore** semaphore);
std::uint32_t QueueForSemaphore(Semaphore* semaphore);  // returns the place, which must be waited
                                                        // in exactly once
unsigned WaitSemaphore(Semaphore* semaphore, std::uint32_t place);
unsigned ReleaseSemaphore(Semaphore* semaphore, int count);
void CloseSemaphore(Semaphore* semaphore);  // null is allowed

// -- Read-write locks ----------------------------------------------------------------------------

// Readers share the lock. A writer excludes all other threads. A waiting writer does not block
// readers. The writer may enter again, for writing and for reading, and must release as many times.
// If a thread ends while writing, the lock is released as for a mutex. If it ends while reading, it
// remains counted.

// Creates an uninitialised record. Returns null if allocation fails.
_osrdwr* NewReadWriteLock();
unsigned MakeReadWriteLock(_osrdwr* lock);  // creates the required system objects
void FreeReadWriteLock(_osrdwr* lock);      // no other thread may use it; null is allowed

unsigned ReadWait(_osrdwr* lock);
unsigned ReadRelease(_osrdwr* lock);
unsigned WriteWait(_osrdwr* lock);
unsigned WriteRelease(_osrdwr* lock);

}  // namespace genutil::platform

#include "threading_fast.h"  // of the platform being built: the inline calls
