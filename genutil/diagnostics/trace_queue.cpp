#include "genutil/diagnostics/trace_queue.h"

#include <cstring>
#include <mutex>
#include <thread>
#include <utility>

#include "genutil/allocate.h"
#include "genutil/simd.h"
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
    for (Buffer& buffer : m_buffers) buffer.bytes = static_cast<char*>(Allocate(kCapacity));
    // Without their system objects, the locks would let every thread pass.
    return m_switch && m_guard && MakeMutexUsable(m_switch) && MakeMutexUsable(m_guard) &&
           IsUsable(m_work) && IsUsable(m_written) && m_buffers[0].bytes && m_buffers[1].bytes;
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
    for (const Buffer& buffer : queue->m_buffers) Release(buffer.bytes);
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
    if (m_thread) return !IsClosed();
    m_isStopping = m_isUrgent = false;
    m_isIdle = false;
    for (Buffer& buffer : m_buffers) buffer.filled = 0;
    m_state = 0;
    const auto run = [](void* queue) { return static_cast<TraceQueue*>(queue)->Run(), 0u; };
    m_thread = OSThreadCreate(run, this, nullptr);
    if (!m_thread) m_state = kClosed;
    return m_thread != nullptr;
}

void TraceQueue::Stop() {
    if (IsOfParent()) return;
    const MutexHolder one(m_switch);
    if (!m_thread) return;
    // While a process ends, some systems end its other threads first.
    if (OSThreadWaitFor(m_thread, 0)) WriteWithoutThread();
    {
        const MutexHolder lock(m_guard);
        m_isStopping = true;
        OSConditionSignal(m_work);
    }
    OSThreadTerminateWait(m_thread);
    OSThreadDestroy(std::exchange(m_thread, nullptr));
}

void TraceQueue::WriteWithoutThread() {
    const MutexHolder lock(m_guard);
    WriteBatch();
    if (!IsClosed()) ChangeBuffers(kClosed);
    WriteBatch();
}

// -- The threads with lines ----------------------------------------------------------------------

// Stops the queue if the system has no condition.
bool TraceQueue::Wait(_oscondition* condition) {
    if (OSConditionWaitFor(condition, m_guard, OSNoLimit)) return true;
    m_isStopping = true;
    return false;
}

void TraceQueue::Urge() {
    m_isUrgent = true;
    OSConditionSignal(m_work);
}

void TraceQueue::Drain() {
    if (IsOfParent()) return;
    const MutexHolder lock(m_guard);
    DrainHeld();
}

void TraceQueue::DrainHeld() {
    while (!IsClosed() && !m_isStopping && (HasLines() || m_batchSize > 0)) {
        Urge();
        if (!Wait(m_written)) return;
    }
}

// Returns false if the caller must write the line.
bool TraceQueue::WaitForRoom(std::uint32_t size) {
    const MutexHolder lock(m_guard);
    if (size > kCapacity / 4) {
        DrainHeld();
        return false;
    }
    while (!IsClosed() && (m_state.load() & kReserved) + size > kCapacity) {
        Urge();
        if (!Wait(m_written)) return false;
    }
    return !IsClosed();
}

[[gnu::noinline]] void TraceQueue::WakeIfIdle() {
    const MutexHolder lock(m_guard);
    if (m_isIdle.exchange(false)) OSConditionSignal(m_work);
}

bool TraceQueue::Append(const char* line, std::size_t length) {
    std::uint32_t state = m_state.load(std::memory_order_relaxed);
    if ((state & kClosed) || IsOfParent()) return false;
    const std::size_t wanted = sizeof(Length) + length;
    const auto size = static_cast<std::uint32_t>(wanted < kCapacity ? wanted : kCapacity);
    std::uint32_t at;
    for (;;) {
        if (state & kClosed) return false;
        at = state & kReserved;
        if (size > kCapacity / 4 || at + size > kCapacity) {
            if (!WaitForRoom(size)) return false;
            state = m_state.load();
        } else if (m_state.compare_exchange_weak(state, state + size)) {
            break;
        }
    }

    Buffer& buffer = m_buffers[state & kSecond ? 1 : 0];
    const auto number = static_cast<Length>(length);
    std::memcpy(buffer.bytes + at, &number, sizeof number);
    std::memcpy(buffer.bytes + at + sizeof number, line, length);
    buffer.filled.fetch_add(size, std::memory_order_release);
    if (m_isIdle.load()) WakeIfIdle();
    if (at < kCapacity / 2 && at + size >= kCapacity / 2) {
        const MutexHolder lock(m_guard);
        Urge();
    }
    return true;
}

// -- The writing thread --------------------------------------------------------------------------

void TraceQueue::Run() {
    OSMutexWait(m_guard);
    for (bool isLast = false; !isLast;) {
        while (!HasLines() && !m_isStopping) {
            m_isIdle = true;
            // A line that was reserved before the mark was set may not wake this thread.
            if (!HasLines()) Wait(m_work);
            m_isIdle = false;
        }
        if (!m_isUrgent && !m_isStopping)
            OSConditionWaitFor(m_work, m_guard, kMillisecondsToGather);
        m_isUrgent = false;
        isLast = m_isStopping;
        ChangeBuffers(isLast ? kClosed : 0);
        OSMutexRelease(m_guard);
        OSConditionBroadcast(m_written);  // there is room
        WaitUntilFilled();
        WriteBatch();
        OSMutexWait(m_guard);
        m_batchSize = m_batchDone = 0;
        OSConditionBroadcast(m_written);
    }
    OSMutexRelease(m_guard);
}

// Makes the current buffer the batch.
void TraceQueue::ChangeBuffers(std::uint32_t isClosed) {
    const bool isSecond = m_state.load() & kSecond;  // only changed here
    Buffer& other = m_buffers[isSecond ? 0 : 1];
    other.filled.store(0, std::memory_order_relaxed);
    const std::uint32_t before = m_state.exchange((isSecond ? 0 : kSecond) | isClosed);
    m_batch = &m_buffers[isSecond ? 1 : 0];
    m_batchSize = before & kReserved;
    m_batchDone = 0;
}

void TraceQueue::WaitUntilFilled() const {
    for (int i = 0; m_batch->filled.load(std::memory_order_acquire) != m_batchSize; ++i) {
        if (i < 100)
            simd::Pause();
        else
            std::this_thread::yield();
    }
}

void TraceQueue::WriteBatch() {
    if (m_batchDone >= m_batchSize) return;
    TraceBatch batch(m_batch->bytes, m_batchSize, &m_batchDone);
    m_write(m_trace, batch);
}

const char* TraceBatch::Take(std::int64_t room, std::size_t* length) {
    char* const begin = m_records + *m_done;
    char* end = begin;
    m_taken = *m_done;
    do {
        Length number;
        std::memcpy(&number, m_records + m_taken, sizeof number);
        if (number > m_size - m_taken - sizeof number) {  // its thread was ended by the system
            m_taken = m_size;
            break;
        }
        std::memmove(end, m_records + m_taken + sizeof number, number);
        end += number;
        m_taken += sizeof number + number;
    } while (m_taken < m_size && end - begin < room);
    *length = static_cast<std::size_t>(end - begin);
    return begin;
}

}  // namespace genutil
