// Waiting for a change of a 32-bit word in memory.
#pragma once

#include <linux/futex.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdint>

#include "osutil/platform/thread/threading.h"

namespace genutil::platform {

constexpr std::uint32_t kAnySleeper = 0xFFFFFFFF;

// The end of a wait, on the clock that is never set.
class Deadline {
  public:
    explicit Deadline(std::uint32_t limit) : m_time{}, m_isSet(limit != kNoLimit) {
        if (!m_isSet) return;
        clock_gettime(CLOCK_MONOTONIC, &m_time);
        m_time.tv_sec += static_cast<time_t>(limit / 1000);
        m_time.tv_nsec += static_cast<long>(limit % 1000) * 1000000;
        if (m_time.tv_nsec < 1000000000) return;
        m_time.tv_nsec -= 1000000000;
        ++m_time.tv_sec;
    }
    // Returns null if the wait has no limit.
    const timespec* Time() const { return m_isSet ? &m_time : nullptr; }

  private:
    timespec m_time;
    bool m_isSet;
};

// Waits for a wake of the same kind (at least one common bit). Returns at once if the word is not
// `value`, and sometimes spuriously. Returns false if the deadline has passed.
inline bool FutexWait(const void* word, std::uint32_t value, const Deadline& deadline,
                      std::uint32_t kind = kAnySleeper) {
    return syscall(SYS_futex, word, FUTEX_WAIT_BITSET_PRIVATE, value, deadline.Time(), nullptr,
                   kind) == 0 ||
           errno != ETIMEDOUT;
}

// The word may no longer exist. A thread woken at its address checks its condition and sleeps
// again.
inline void FutexWake(const void* word, int count, std::uint32_t kind = kAnySleeper) {
    syscall(SYS_futex, word, FUTEX_WAKE_BITSET_PRIVATE, count, nullptr, nullptr, kind);
}

}  // namespace genutil::platform
