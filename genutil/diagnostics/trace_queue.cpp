#include "genutil/diagnostics/trace_queue.h"

#include <cstring>
#include <mutex>
#include <utility>

#include "genutil/allocate.h"
#include "osutil/platform/thread/threading.h"
#include "osutil/thread/mutex_holder.h"

namespace genutil {
namespace {

// The writing thread waits this long for more lines before it writes those that it has, so that
// other threads seldom have to wake it.
constexpr std::uint32_t kMillisecondsToGather = 2;

using Length = std::uint32_t;  // precedes each line

// All queues of the process. Those that exist when it ends are written then.
std::mutex g_mutex;
TraceQueue* g_first = nullptr;

// For a program that did not arrange a call at its own end.
struct AtEnd {
    ~AtEnd() { TraceQueue::StopAll(); }
} g_atEnd;

}  // namespace

TraceQueue* TraceQueue::Make(void* trace, Write write) {
    if (!AllocationPasses(sizeof(TraceQueue))) return nullptr;
    auto* queue = new (std::nothrow) TraceQueue;
    if (!queue) return nullptr;
    queue->m_trace = trace;
    queue->m_write = write;
    if (!queue->Make()) {
        Destroy(queue);
        return nullptr;
    }
    const std::lock_guard<std::mutex> lock(g_mutex);
    queue->m_next = std::exchange(g_first, queue);
    return queue;
}

bool TraceQueue::Make() {
    m_forks = platform::CountForks();
    m_switch = OSMutexCreate();
    m_guard = OSMutexCreate();
    m_work = OSConditionCreate();
    m_written = OSConditionCreate();
    m_lines = static_cast<char*>(Allocate(kCapacity));
    m_batch = static_cast<char*>(Allocate(kCapacity));
    return m_switch && m_guard && m_work && m_written && m_lines && m_batch;
}

void TraceQueue::Destroy(TraceQueue* queue) {
    if (!queue) return;
    {
        const std::lock_guard<std::mutex> lock(g_mutex);
        for (TraceQueue** at = &g_first; *at; at = &(*at)->m_next) {
            if (*at != queue) continue;
            *at = queue->m_next;
            break;
        }
    }
    if (queue->IsOfParent()) return;  // its locks may be held by threads that do not exist here
    queue->Stop();
    OSMutexDestroy(queue->m_switch);
    OSMutexDestroy(queue->m_guard);
    OSConditionDestroy(queue->m_work);
    OSConditionDestroy(queue->m_written);
    Release(queue->m_lines);
    Release(queue->m_batch);
    delete queue;
}

void TraceQueue::StopAll() {
    const std::lock_guard<std::mutex> lock(g_mutex);
    for (TraceQueue* queue = g_first; queue; queue = queue->m_next) queue->Stop();
}

bool TraceQueue::IsOfParent() const {
    return m_forks != platform::CountForks();
}

bool TraceQueue::Start() {
    if (IsOfParent()) return false;
    const MutexHolder one(m_switch);
    const MutexHolder lock(m_guard);
    if (m_isOn) return true;
    m_isStopping = m_isIdle = m_isUrgent = false;
    const auto run = [](void* queue) { return static_cast<TraceQueue*>(queue)->Run(), 0u; };
    m_thread = OSThreadCreate(run, this, nullptr);
    m_isOn = m_thread != nullptr;
    return m_isOn;
}

void TraceQueue::Stop() {
    if (IsOfParent()) return;
    const MutexHolder one(m_switch);
    if (!m_isOn) return;
    // While a process ends, some systems end its other threads first.
    if (OSThreadWaitFor(m_thread, 0)) WriteWithoutThread();
    {
        const MutexHolder lock(m_guard);
        m_isStopping = true;
        m_isOn = false;
        OSConditionSignal(m_work);
        OSConditionBroadcast(m_written);
    }
    OSThreadTerminateWait(m_thread);
    OSThreadDestroy(std::exchange(m_thread, nullptr));
}

void TraceQueue::WriteWithoutThread() {
    const MutexHolder lock(m_guard);
    WriteBatch();
    std::swap(m_lines, m_batch);
    m_batchSize = std::exchange(m_used, 0);
    m_batchDone = 0;
    WriteBatch();
}

void TraceQueue::Drain() {
    if (IsOfParent() || !m_isOn) return;
    const MutexHolder lock(m_guard);
    DrainHeld();
}

void TraceQueue::DrainHeld() {
    while (m_isOn && (m_used > 0 || m_batchSize > 0)) {
        m_isUrgent = true;
        OSConditionSignal(m_work);
        OSConditionWait(m_written, m_guard);
    }
}

// Returns false if the caller must write the line.
bool TraceQueue::WaitForRoom(std::size_t size) {
    if (size > kCapacity / 4) {
        DrainHeld();
        return false;
    }
    while (m_isOn && m_used + size > kCapacity) {
        m_isUrgent = true;
        OSConditionSignal(m_work);
        OSConditionWait(m_written, m_guard);
    }
    return m_isOn;
}

bool TraceQueue::Append(const char* line, std::size_t length) {
    if (!m_isOn.load(std::memory_order_relaxed) || IsOfParent()) return false;
    const std::size_t size = sizeof(Length) + length;
    const MutexHolder lock(m_guard);
    if (m_used + size > kCapacity && !WaitForRoom(size)) return false;
    if (!m_isOn.load(std::memory_order_relaxed)) return false;
    const auto number = static_cast<Length>(length);
    std::memcpy(m_lines + m_used, &number, sizeof number);
    std::memcpy(m_lines + m_used + sizeof number, line, length);
    m_used += size;
    if (m_isIdle || (m_used > kCapacity / 2 && !m_isUrgent)) {
        m_isUrgent = m_used > kCapacity / 2;
        m_isIdle = false;
        OSConditionSignal(m_work);
    }
    return true;
}

void TraceQueue::Run() {
    OSMutexWait(m_guard);
    for (;;) {
        while (m_used == 0 && !m_isStopping) {
            m_isIdle = true;
            OSConditionWait(m_work, m_guard);
        }
        m_isIdle = false;
        if (m_used == 0) break;
        if (!m_isUrgent && !m_isStopping)
            OSConditionWaitFor(m_work, m_guard, kMillisecondsToGather);
        m_isUrgent = false;
        std::swap(m_lines, m_batch);
        m_batchSize = std::exchange(m_used, 0);
        m_batchDone = 0;
        OSMutexRelease(m_guard);
        OSConditionBroadcast(m_written);  // there is room
        WriteBatch();
        OSMutexWait(m_guard);
        m_batchSize = 0;
        OSConditionBroadcast(m_written);
    }
    OSMutexRelease(m_guard);
}

void TraceQueue::WriteBatch() {
    if (m_batchDone == m_batchSize) return;
    TraceBatch batch(m_batch, m_batchSize, &m_batchDone);
    m_write(m_trace, batch);
}

const char* TraceBatch::Take(std::int64_t room, std::size_t* length) {
    char* const begin = m_records + *m_done;
    char* end = begin;
    m_taken = *m_done;
    do {
        Length number;
        std::memcpy(&number, m_records + m_taken, sizeof number);
        std::memmove(end, m_records + m_taken + sizeof number, number);
        end += number;
        m_taken += sizeof number + number;
    } while (m_taken < m_size && end - begin < room);
    *length = static_cast<std::size_t>(end - begin);
    return begin;
}

}  // namespace genutil
