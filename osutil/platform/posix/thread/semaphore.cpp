// Semaphores with queue places. The system's own give a unit to the first thread that arrives after
// it, so a thread that signals and then waits could take the unit meant for another one, and both
// would sleep.
#include <atomic>

#include "genutil/allocate.h"
#include "osutil/platform/posix/thread/futex.h"
#include "osutil/platform/thread/threading.h"

namespace genutil::platform {

// Both numbers wrap around. Their difference is the number of units.
struct Semaphore {
    std::atomic<std::uint32_t> queued;    // places given to waiters
    std::atomic<std::uint32_t> released;  // places below it have received their unit
};

namespace {

// Sleeping threads are distinguished by the last bits of their place.
std::uint32_t KindOf(std::uint32_t place) {
    return std::uint32_t{1} << place % 32;
}

}  // namespace

unsigned MakeSemaphore(Semaphore** semaphore) {
    *semaphore = New<Semaphore>();
    return *semaphore ? 0 : ENOMEM;
}

std::uint32_t QueueForSemaphore(Semaphore* semaphore) {
    return semaphore ? semaphore->queued.fetch_add(1, std::memory_order_relaxed) : 0;
}

unsigned WaitSemaphore(Semaphore* semaphore, std::uint32_t place) {
    if (!semaphore) return EINVAL;
    for (;;) {
        const std::uint32_t released = semaphore->released.load(std::memory_order_acquire);
        if (static_cast<std::int32_t>(released - place) > 0) return 0;
        FutexWait(&semaphore->released, released, KindOf(place));
    }
}

unsigned ReleaseSemaphore(Semaphore* semaphore, int count) {
    if (!semaphore) return EINVAL;
    const auto units = static_cast<std::uint32_t>(count);
    const std::uint32_t first = semaphore->released.fetch_add(units, std::memory_order_release);
    std::uint32_t kinds = 0;
    for (std::uint32_t i = 0; i < units && i < 32; ++i) kinds |= KindOf(first + i);
    FutexWake(&semaphore->released, INT_MAX, kinds);
    return 0;
}

void CloseSemaphore(Semaphore* semaphore) {
    delete semaphore;
}

}  // namespace genutil::platform
