// The threading mode of the process, and reports of failed thread and lock calls.
#pragma once

#include <atomic>

namespace genutil {

extern std::atomic<unsigned char> g_isThreaded;  // 1 from the first OSSetThreaded() on

inline bool IsThreaded() {
    return g_isThreaded.load(std::memory_order_relaxed) != 0;
}

// Prints the error code of a system call on standard output, unless it is 0. Returns true if it is
// 0.
bool TellError(unsigned error);

inline bool Succeeded(unsigned error) {
    return error == 0 || TellError(error);
}

}  // namespace genutil
