// Included only by threading.h, at its end.
//
// The inline calls of threading.h. On Windows the locks are system calls, whose cost makes inlining
// pointless, so there is only this one.
#pragma once

namespace genutil::platform {

inline bool TakeMutexAtOnce(Mutex*, Sharing) {
    return false;
}

}  // namespace genutil::platform
