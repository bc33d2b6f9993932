// Mutexes, read-write locks and conditions. In a process that is not threaded they are only created
// and destroyed.
//
// Order: a thread may hold any locks when it takes another. Nothing here holds a lock of its own
// while it waits for one of the caller's, except the guard of a condition, whose holder waits for
// no other lock.
#include "osutil/thread/lock.h"

#include <new>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "osthread.h"

using namespace genutil;

struct _oscondition {
    platform::Semaphore* semaphore;  // one unit for each signalled waiter
    platform::Mutex* guard;          // guards the number
    std::int32_t waiters;            // number of waiters not yet signalled
};
static_assert(sizeof(void*) != 4 || sizeof(_oscondition) == 12);

namespace {

template <class Record>
Record* NewRecord() {
    void* memory = Allocate(sizeof(Record));
    if (!AssertAllocation(memory != nullptr, "osutil/osthread", __LINE__)) return nullptr;
    return new (memory) Record{};
}

// Counts a call of a function that only acts in threaded mode. Returns true if it must act.
bool IsCallToDo(const void* lock) {
    if (!IsThreaded()) return false;
    if (ThreadRecord* self = CurrentThreadRecord()) self->CountCall();
    return lock != nullptr;
}

// Reports the failure of a wait. Returns true if the wait neither failed nor timed out.
bool IsInTime(unsigned error) {
    return error != platform::kTimedOut && Succeeded(error);
}

}  // namespace

// -- Mutexes -------------------------------------------------------------------------------------

_osmutex* OSMutexCreate() {
    auto* mutex = NewRecord<_osmutex>();
    if (IsCallToDo(mutex)) Succeeded(platform::MakeMutex(&mutex->handle));
    return mutex;
}

namespace genutil {

bool MakeMutexUsable(_osmutex* mutex) {
    return !IsThreaded() || mutex->handle || Succeeded(platform::MakeMutex(&mutex->handle));
}

[[gnu::noinline]] bool WaitAtLength(_osmutex* mutex, std::uint32_t limit) {
    ThreadRecord* self = CurrentThreadRecord();
    if (!IsInTime(platform::WaitMutex(mutex->handle, limit))) return false;
    if (self) NoteWait(self, mutex);
    return true;
}

[[gnu::noinline]] bool ReleaseAtLength(_osmutex* mutex) {
    if (ThreadRecord* self = CurrentThreadRecord()) {
        self->CountCall();
        self->held.Remove(mutex);
    }
    return ReleaseHandle(mutex);
}

}  // namespace genutil

void OSMutexWait(_osmutex* mutex) {
    WaitMutex(mutex);
}

unsigned char OSMutexTryWait(_osmutex* mutex, std::uint32_t limit) {
    return mutex && WaitMutex(mutex, limit);
}

void OSMutexRelease(_osmutex* mutex) {
    EndMutex(mutex);
}

unsigned char OSMutexWaitIsPresentThisThread(_osmutex* mutex) {
    return IsThreaded() && mutex && IsHeldInBucket(mutex);
}

void OSMutexWaitRemoveThisThread() {
    ThreadRecord* self = IsThreaded() ? CurrentThreadRecord() : nullptr;
    if (!self) return;
    self->CountCall();
    const std::uint32_t count = self->held.Count();
    for (std::uint32_t i = 0; i < count; ++i) ReleaseHandle(self->held.At(i));
    self->held.Clear();
}

void OSMutexDestroy(_osmutex* mutex) {
    if (IsCallToDo(mutex)) {
        // So that a thread which destroys a mutex that it holds has nothing left to release.
        if (ThreadRecord* self = CurrentThreadRecord()) self->held.RemoveAll(mutex);
        platform::CloseMutex(mutex->handle);
    }
    Release(mutex);
}

// -- Read-write locks ----------------------------------------------------------------------------

_osrdwr* OSRWLockCreate() {
    _osrdwr* lock = platform::NewReadWriteLock();
    AssertAllocation(lock != nullptr, "osutil/osthread", __LINE__);
    if (IsCallToDo(lock)) Succeeded(platform::MakeReadWriteLock(lock));
    return lock;
}

void OSRWLockReadWait(_osrdwr* lock) {
    if (IsCallToDo(lock)) Succeeded(platform::ReadWait(lock));
}

unsigned char OSRWLockReadTryWait(_osrdwr* lock, std::uint32_t limit) {
    return lock && (!IsCallToDo(lock) || IsInTime(platform::ReadWait(lock, limit)));
}

void OSRWLockReadRelease(_osrdwr* lock) {
    if (IsCallToDo(lock)) Succeeded(platform::ReadRelease(lock));
}

void OSRWLockWriteWait(_osrdwr* lock) {
    if (IsCallToDo(lock)) Succeeded(platform::WriteWait(lock));
}

unsigned char OSRWLockWriteTryWait(_osrdwr* lock, std::uint32_t limit) {
    return lock && (!IsCallToDo(lock) || IsInTime(platform::WriteWait(lock, limit)));
}

void OSRWLockWriteRelease(_osrdwr* lock) {
    if (IsCallToDo(lock)) Succeeded(platform::WriteRelease(lock));
}

void OSRWLockDestroy(_osrdwr* lock) {
    IsCallToDo(lock);
    platform::FreeReadWriteLock(lock);
}

// -- Conditions ----------------------------------------------------------------------------------

namespace {

// Releases a unit for each waiter, at most `most`.
void Signal(_oscondition* condition, std::int32_t most) {
    if (!IsCallToDo(condition) || !Succeeded(platform::WaitMutex(condition->guard))) return;
    const std::int32_t count = condition->waiters < most ? condition->waiters : most;
    if (count > 0 && Succeeded(platform::ReleaseSemaphore(condition->semaphore, count)))
        condition->waiters -= count;
    platform::ReleaseMutex(condition->guard);
}

}  // namespace

_oscondition* OSConditionCreate() {
    auto* condition = NewRecord<_oscondition>();
    if (IsCallToDo(condition) && Succeeded(platform::MakeMutex(&condition->guard)))
        Succeeded(platform::MakeSemaphore(&condition->semaphore));
    return condition;
}

bool genutil::IsUsable(const _oscondition* condition) {
    return condition && condition->guard && condition->semaphore;
}

namespace {

// A unit that was given between the end of the limit and the guard is a signal.
bool IsSignalledAfterAll(_oscondition* condition, platform::Place* place) {
    if (!Succeeded(platform::WaitMutex(condition->guard))) return false;
    const bool isSignalled = platform::TakesUnitAfterAll(condition->semaphore, place);
    if (!isSignalled) --condition->waiters;
    platform::ReleaseMutex(condition->guard);
    return isSignalled;
}

}  // namespace

void OSConditionWait(_oscondition* condition, _osmutex* mutex) {
    OSConditionWaitFor(condition, mutex, platform::kNoLimit);
}

unsigned char OSConditionWaitFor(_oscondition* condition, _osmutex* mutex, std::uint32_t limit) {
    if (!IsCallToDo(condition) || !Succeeded(platform::WaitMutex(condition->guard))) return 0;
    platform::Place place;
    ++condition->waiters;
    platform::QueueForSemaphore(condition->semaphore, &place);
    platform::ReleaseMutex(condition->guard);
    OSMutexRelease(mutex);
    const unsigned error = platform::WaitSemaphore(condition->semaphore, &place, limit);
    const bool isSignalled =
        error == platform::kTimedOut ? IsSignalledAfterAll(condition, &place) : Succeeded(error);
    OSMutexWait(mutex);
    return isSignalled;
}

void OSConditionSignal(_oscondition* condition) {
    Signal(condition, 1);
}

void OSConditionBroadcast(_oscondition* condition) {
    Signal(condition, platform::kMostUnits);
}

void OSConditionDestroy(_oscondition* condition) {
    if (IsCallToDo(condition)) {
        platform::CloseMutex(condition->guard);
        platform::CloseSemaphore(condition->semaphore);
    }
    Release(condition);
}
