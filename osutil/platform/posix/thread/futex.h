// Waiting for a change of a 32-bit word in memory.
#pragma once

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <climits>
#include <cstdint>

namespace genutil::platform {

constexpr std::uint32_t kAnySleeper = 0xFFFFFFFF;

// Waits for a wake of the same kind (at least one common bit). Returns at once if the word is not
// `value`, and sometimes spuriously.
inline void FutexWait(const void* word, std::uint32_t value, std::uint32_t kind = kAnySleeper) {
    syscall(SYS_futex, word, FUTEX_WAIT_BITSET_PRIVATE, value, nullptr, nullptr, kind);
}

// The word may no longer exist. A thread woken at its address checks its condition and sleeps
// again.
inline void FutexWake(const void* word, int count, std::uint32_t kind = kAnySleeper) {
    syscall(SYS_futex, word, FUTEX_WAKE_BITSET_PRIVATE, count, nullptr, nullptr, kind);
}

}  // namespace genutil::platform
