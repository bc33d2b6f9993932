// Waiting for a 32-bit word in memory to change.
#pragma once

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <climits>
#include <cstdint>

namespace genutil::platform {

constexpr std::uint32_t kAnySleeper = 0xFFFFFFFF;

// Returns at a wake of its kind (a bit or more), at once when the word is not `value`, and now and
// then for no reason.
inline void FutexWait(const void* word, std::uint32_t value, std::uint32_t kind = kAnySleeper) {
    syscall(SYS_futex, word, FUTEX_WAIT_BITSET_PRIVATE, value, nullptr, nullptr, kind);
}

// The word may be gone already: what is woken in its place looks again and sleeps on.
inline void FutexWake(const void* word, int count, std::uint32_t kind = kAnySleeper) {
    syscall(SYS_futex, word, FUTEX_WAKE_BITSET_PRIVATE, count, nullptr, nullptr, kind);
}

}  // namespace genutil::platform
