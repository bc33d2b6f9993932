// Semaphores with queue places. The system's own give a unit to the first thread that arrives after
// it, so a thread that signals and then waits could take the unit meant for another one, and both
// would sleep.
#include "genutil/allocate.h"
#include "osutil/platform/posix/thread/futex.h"
#include "osutil/platform/thread/threading.h"

namespace genutil::platform {

// The places without a unit, in their order.
struct Semaphore {
    Place* first;
    Place* last;
    std::uint32_t forks;  // of the process whose threads have the places
};

namespace {

void Remove(Semaphore* semaphore, Place* place) {
    (place->previous ? place->previous->next : semaphore->first) = place->next;
    (place->next ? place->next->previous : semaphore->last) = place->previous;
}

// In the child of a fork, their stacks are used for other threads.
void ForgetThreadsOfParent(Semaphore* semaphore) {
    const std::uint32_t forks = CountForks();
    if (semaphore->forks != forks) *semaphore = {nullptr, nullptr, forks};
}

}  // namespace

unsigned MakeSemaphore(Semaphore** semaphore) {
    *semaphore = New<Semaphore>();
    return *semaphore ? 0 : ENOMEM;
}

void QueueForSemaphore(Semaphore* semaphore, Place* place) {
    if (!semaphore) return;
    ForgetThreadsOfParent(semaphore);
    place->previous = semaphore->last;
    place->next = nullptr;
    place->hasUnit.store(0, std::memory_order_relaxed);
    (semaphore->last ? semaphore->last->next : semaphore->first) = place;
    semaphore->last = place;
}

unsigned WaitSemaphore(Semaphore* semaphore, Place* place, std::uint32_t limit) {
    if (!semaphore) return EINVAL;
    const Deadline deadline(limit);
    while (place->hasUnit.load(std::memory_order_acquire) == 0)
        if (!FutexWait(&place->hasUnit, 0, deadline)) return kTimedOut;
    return 0;
}

bool TakesUnitAfterAll(Semaphore* semaphore, Place* place) {
    if (place->hasUnit.load(std::memory_order_acquire) != 0) return true;
    Remove(semaphore, place);
    return false;
}

unsigned ReleaseSemaphore(Semaphore* semaphore, int count) {
    if (!semaphore) return EINVAL;
    ForgetThreadsOfParent(semaphore);
    for (; count > 0 && semaphore->first; --count) {
        Place* place = semaphore->first;
        Remove(semaphore, place);
        place->hasUnit.store(1, std::memory_order_release);  // the place may end here
        FutexWake(&place->hasUnit, 1);
    }
    return 0;
}

void CloseSemaphore(Semaphore* semaphore) {
    delete semaphore;
}

}  // namespace genutil::platform
