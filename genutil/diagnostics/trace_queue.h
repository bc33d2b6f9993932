// Lines on their way to a log file, which a thread of its own writes.
//
// Order of locks: none is held by a thread that waits here, and the writing thread takes the
// trace's mutex without holding the queue's.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "osthread.h"

namespace genutil {

// The lines of a batch, taken in runs of whole lines.
class TraceBatch {
  public:
    TraceBatch(char* records, std::size_t size, std::size_t* done)
        : m_records(records), m_size(size), m_done(done) {}
    bool IsEmpty() const { return *m_done == m_size; }
    // Returns the next lines as one text: at least one, and no more after `room` bytes. They count
    // as written with Finish().
    const char* Take(std::int64_t room, std::size_t* length);
    void Finish() { *m_done = m_taken; }

  private:
    char* m_records;
    std::size_t m_size;
    std::size_t* m_done;
    std::size_t m_taken = 0;
};

class TraceQueue {
  public:
    // Writes all lines of a batch. Called on the writing thread.
    using Write = void (*)(void* trace, TraceBatch& batch);

    // Returns null if allocation fails.
    static TraceQueue* Make(void* trace, Write write);
    // Stops the queue first, except in the child of a fork, whose parent writes the lines.
    static void Destroy(TraceQueue* queue);
    // Writes the lines of all queues and stops them.
    static void StopAll();

    bool Start();  // returns false if the thread cannot be started
    void Stop();   // when all lines are written
    void Drain();  // waits until all lines so far are written

    // Returns false if the caller must write the line: the queue is stopped, or the line is too
    // long for it, in which case all earlier lines have been written.
    bool Append(const char* line, std::size_t length);

  private:
    TraceQueue() = default;
    bool Make();
    bool IsOfParent() const;
    bool WaitForRoom(std::size_t size);
    void DrainHeld();
    void Run();
    void WriteBatch();
    void WriteWithoutThread();

    static constexpr std::size_t kCapacity = std::size_t{1} << 20;

    void* m_trace = nullptr;
    Write m_write = nullptr;
    _osmutex* m_switch = nullptr;  // held while the queue is started or stopped
    _osmutex* m_guard = nullptr;
    _oscondition* m_work = nullptr;     // the writing thread waits for it
    _oscondition* m_written = nullptr;  // all others do
    _osthread* m_thread = nullptr;
    std::atomic<bool> m_isOn{false};
    bool m_isStopping = false;
    bool m_isIdle = false;    // the writing thread must be woken
    bool m_isUrgent = false;  // it must not wait for more lines
    std::uint32_t m_forks = 0;
    char* m_lines = nullptr;  // being filled
    std::size_t m_used = 0;
    char* m_batch = nullptr;  // being written
    std::size_t m_batchSize = 0, m_batchDone = 0;
    TraceQueue* m_next = nullptr;  // in the list of all
};

}  // namespace genutil
