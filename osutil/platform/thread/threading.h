// Platform layer: threads and locks.
//
// A call that can fail returns the system's error code, or 0 on success. A null mutex or semaphore
// is one that could not be created. Calls with it fail with a code and do nothing. Every lock is
// for the threads of this process only.
//
// A wait has a limit in milliseconds, kNoLimit for none. It fails with kTimedOut when the limit has
// passed. With a limit of 0 it does not wait.
#pragma once

#include <atomic>
#include <cstdint>

struct _osrdwr;  // the record of a read-write lock; its content is private to each implementation

namespace genutil::platform {

constexpr std::uint32_t kNoLimit = 0xFFFFFFFF;
extern const unsigned kTimedOut;

// -- Threads -------------------------------------------------------------------------------------

struct Thread;  // represents a thread until it is closed

// The task of a new thread, at the start of the caller's own block, which `run` may release.
struct ThreadTask {
    unsigned (*run)(ThreadTask* task);
};

// Starts a thread. *thread is null on failure, for which a system may give no code.
unsigned StartThread(ThreadTask* task, Thread** thread);
// Waits until the thread has ended, including everything that runs at its end. May be called any
// number of times. *exitCode, if not null, receives the result of the task, or 0 if the thread
// ended by EndThisThread().
unsigned WaitForThreadEnd(Thread* thread, std::uint32_t limit = kNoLimit,
                          unsigned* exitCode = nullptr);
void CloseThread(Thread* thread);  // releases the thread, ended or not; null is allowed
[[noreturn]] void EndThisThread();

// Returns the number of forks between the start of the program and this process. A child's number
// differs from that of its parent, whose other threads it does not have.
std::uint32_t CountForks();

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
unsigned WaitMutex(Mutex* mutex, std::uint32_t limit = kNoLimit);
void CloseMutex(Mutex* mutex);  // no other thread may use it; null is allowed

// Whether other threads may use a mutex during a call. A caller that excludes them by another lock
// passes kAlone, which is faster.
enum class Sharing { kShared, kAlone };

// Takes the mutex if that requires only a few instructions. Otherwise returns false.
bool TakeMutexAtOnce(Mutex* mutex, Sharing sharing = Sharing::kShared);
// Releases the mutex. Fails unless the calling thread holds it.
unsigned ReleaseMutex(Mutex* mutex, Sharing sharing = Sharing::kShared);

// -- Semaphores ----------------------------------------------------------------------------------

constexpr int kMostUnits = 0x7FFFFFF;

// Units for waiting threads. They are given to the waiters in the order in which these queued, or
// in the order of the waits on a system without queueing before the wait. The caller calls all
// functions except WaitSemaphore() under a lock of its own.
struct Semaphore;

// The place of a waiter in the queue. It exists until the end of its wait.
struct Place {
    Place* previous;
    Place* next;
    std::atomic<std::uint32_t> hasUnit;
};

unsigned MakeSemaphore(Semaphore** semaphore);
void QueueForSemaphore(Semaphore* semaphore, Place* place);
unsigned WaitSemaphore(Semaphore* semaphore, Place* place, std::uint32_t limit = kNoLimit);
// Gives up a place after its wait has timed out. Returns true if a unit was given to the waiter in
// the meantime, which the caller then has.
bool TakesUnitAfterAll(Semaphore* semaphore, Place* place);
// Gives units to `count` waiters, of which there must be as many.
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

unsigned ReadWait(_osrdwr* lock, std::uint32_t limit = kNoLimit);
unsigned ReadRelease(_osrdwr* lock);
unsigned WriteWait(_osrdwr* lock, std::uint32_t limit = kNoLimit);
unsigned WriteRelease(_osrdwr* lock);

}  // namespace genutil::platform

#include "threading_fast.h"  // of the platform being built: the inline calls
