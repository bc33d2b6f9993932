// A flag of each thread that needs no memory, so that it works while memory is short.
#pragma once

#include <atomic>
#include <cstdint>

#include "osutil/platform/thread/threading.h"

namespace genutil {

// Up to 64 threads have the flag at the same time.
class ThreadFlag {
  public:
    // Returns false if the calling thread has the flag already, or if too many others have it.
    bool Set() {
        if (IsSet()) return false;
        const std::uint32_t self = platform::ThreadId();
        for (auto& thread : m_threads) {
            std::uint32_t free = 0;
            if (thread.compare_exchange_strong(free, self, std::memory_order_relaxed)) return true;
        }
        return false;
    }
    void Clear() {
        if (auto* thread = Find()) thread->store(0, std::memory_order_relaxed);
    }
    bool IsSet() { return Find() != nullptr; }

  private:
    std::atomic<std::uint32_t>* Find() {
        const std::uint32_t self = platform::ThreadId();
        for (auto& thread : m_threads)
            if (thread.load(std::memory_order_relaxed) == self) return &thread;
        return nullptr;
    }

    std::atomic<std::uint32_t> m_threads[64]{};
};

}  // namespace genutil
