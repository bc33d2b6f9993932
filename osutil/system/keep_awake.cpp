// Keeping the machine awake while there are objects that request it.
#include "osutil/system/keep_awake.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "ossystem.h"
#include "osthread.h"
#include "osutil/platform/system/awake.h"
#include "osutil/platform/system/machine.h"

void* OSKeepAwake::m_hDLL = nullptr;
void* OSKeepAwake::m_lpfnDllFunc1 = nullptr;
unsigned char OSKeepAwake::m_bLibraryLoaded = 0;
_osthread* OSKeepAwake::m_thread = nullptr;
genutil::AwakeEvent* OSKeepAwake::m_threadAwakeEvent = nullptr;
genutil::AwakeEvent* OSKeepAwake::m_threadTerminateEvent = nullptr;
genutil::AwakeLock* OSKeepAwake::m_awakeCritSect = nullptr;
long OSKeepAwake::m_awakeCtr = 0;

namespace genutil {

namespace {
std::uint32_t g_workersProcess = 0;
}

AwakeSystem g_awakeSystem = {platform::LoadAwakeLibrary, platform::FindAwakeFunction,
                             platform::CallAwakeFunction, platform::FreeAwakeLibrary, 2000};

// Reset by the wait that it ends. Guarded by the lock.
struct AwakeEvent {
    bool signalled = false;
    bool Take() { return signalled && !(signalled = false); }
};

// Guards the number of requesting objects, and the events.
struct AwakeLock {
    std::mutex mutex;
    std::condition_variable changed;
};

struct KeepAwakeService {
    using Class = OSKeepAwake;

    struct Worker {
        AwakeEvent *awake, *terminate;
        AwakeLock* lock;
        const long* counter;
        void* function;
    };

    // A forked process has a copy of the service without its worker, which may have held the lock
    // at that moment. The copy is abandoned, and the next object creates a new service.
    static void LeaveServiceOfParent() {
        if (!Class::m_thread || g_workersProcess == platform::ProcessId()) return;
        Class::m_thread = nullptr;
        Class::m_threadAwakeEvent = Class::m_threadTerminateEvent = nullptr;
        Class::m_awakeCritSect = nullptr;
        Class::m_hDLL = Class::m_lpfnDllFunc1 = nullptr;
        Class::m_bLibraryLoaded = 0;
    }

    // Created once and never freed, because objects may outlive the service.
    static AwakeLock* Lock() {
        if (!Class::m_awakeCritSect) Class::m_awakeCritSect = New<AwakeLock>();
        AssertAllocation(Class::m_awakeCritSect != nullptr, "osutil/oskeepawake", __LINE__);
        return Class::m_awakeCritSect;
    }

    static bool Load() {
        LeaveServiceOfParent();
        if (Class::m_bLibraryLoaded) return false;
        void* const library = Lock() ? g_awakeSystem.load() : nullptr;
        if (!library) return false;
        Class::m_hDLL = library;
        Class::m_bLibraryLoaded = 1;
        Class::m_lpfnDllFunc1 = g_awakeSystem.find(library);
        if (Class::m_lpfnDllFunc1) StartWorker();
        return true;
    }

    static void StartWorker() {
        auto* worker = New<Worker>();
        Class::m_threadAwakeEvent = New<AwakeEvent>();
        Class::m_threadTerminateEvent = New<AwakeEvent>();
        const bool made = worker && Class::m_threadAwakeEvent && Class::m_threadTerminateEvent;
        if (!AssertAllocation(made, "osutil/oskeepawake", __LINE__)) {
            delete worker;
            return;
        }
        // Objects that were created while an earlier service existed may still request it.
        Class::m_threadAwakeEvent->signalled = Class::m_awakeCtr > 0;
        *worker = {Class::m_threadAwakeEvent, Class::m_threadTerminateEvent, Class::m_awakeCritSect,
                   &Class::m_awakeCtr, Class::m_lpfnDllFunc1};
        g_workersProcess = platform::ProcessId();
        Class::m_thread = OSThreadCreate(Work, worker, nullptr);
        if (!Class::m_thread) delete worker;
    }

    static unsigned int Work(void* argument) {
        auto* worker = static_cast<Worker*>(argument);
        std::unique_lock<std::mutex> lock(worker->lock->mutex);
        while (!worker->terminate->signalled) {
            if (worker->awake->Take()) StayAwake(*worker, lock);
            worker->lock->changed.wait(
                lock, [&] { return worker->awake->signalled || worker->terminate->signalled; });
        }
        delete worker;
        return 0;
    }

    // Keeps the machine awake as long as there is a requesting object.
    static void StayAwake(const Worker& worker, std::unique_lock<std::mutex>& lock) {
        const auto isOver = [&] { return *worker.counter == 0 || worker.terminate->signalled; };
        bool called = false;
        while (!isOver()) {
            g_awakeSystem.call(worker.function, platform::kStayAwake);
            called = true;
            worker.lock->changed.wait_for(lock, std::chrono::milliseconds(g_awakeSystem.period),
                                          isOver);
        }
        if (called && !worker.terminate->signalled) g_awakeSystem.call(worker.function, 0);
    }

    static void Ask() {
        if (!Lock()) return;
        const std::lock_guard<std::mutex> lock(Class::m_awakeCritSect->mutex);
        if (++Class::m_awakeCtr != 1 || !Class::m_threadAwakeEvent) return;
        Class::m_threadAwakeEvent->signalled = true;
        Class::m_awakeCritSect->changed.notify_all();
    }

    // A copied object withdraws a request that it never made, so the number must not become
    // negative.
    static void TakeBack() {
        LeaveServiceOfParent();
        if (!Lock()) return;
        bool last = false;
        {
            const std::lock_guard<std::mutex> lock(Class::m_awakeCritSect->mutex);
            if (Class::m_awakeCtr > 0) last = --Class::m_awakeCtr == 0;
            if (last) Class::m_awakeCritSect->changed.notify_all();
        }
        if (last && Class::m_lpfnDllFunc1) g_awakeSystem.call(Class::m_lpfnDllFunc1, 0);
    }

    static void Unload() {
        LeaveServiceOfParent();
        if (!Class::m_bLibraryLoaded) return;
        if (Class::m_thread) {
            {
                const std::lock_guard<std::mutex> lock(Class::m_awakeCritSect->mutex);
                Class::m_threadTerminateEvent->signalled = true;
                Class::m_awakeCritSect->changed.notify_all();
            }
            OSThreadTerminateWait(Class::m_thread);
            OSThreadDestroy(Class::m_thread);
        }
        delete Class::m_threadAwakeEvent;
        delete Class::m_threadTerminateEvent;
        g_awakeSystem.free(Class::m_hDLL);
        Class::m_thread = nullptr;
        Class::m_threadAwakeEvent = Class::m_threadTerminateEvent = nullptr;
        Class::m_hDLL = Class::m_lpfnDllFunc1 = nullptr;
        Class::m_bLibraryLoaded = 0;
    }
};

}  // namespace genutil

using genutil::KeepAwakeService;

OSKeepAwake::OSKeepAwake(unsigned char keep) : m_loader(KeepAwakeService::Load()), m_keep(keep) {
    if (!keep) return;
    if (m_lpfnDllFunc1) genutil::g_awakeSystem.call(m_lpfnDllFunc1, genutil::platform::kStayAwake);
    KeepAwakeService::Ask();
}

OSKeepAwake& OSKeepAwake::operator=(const OSKeepAwake& other) = default;

OSKeepAwake::~OSKeepAwake() {
    if (m_keep) KeepAwakeService::TakeBack();
    if (m_loader) KeepAwakeService::Unload();
}
