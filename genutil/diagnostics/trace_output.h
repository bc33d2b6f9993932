// The destinations of trace lines: the bits of CGNTrace::ResetOutput().
#pragma once

#include "genutil/atomic_ref.h"

namespace genutil {

constexpr char kToFile = 1, kToStandardOutput = 2, kToSink = 4, kToRing = 8;

// Access to members that threads read without the lock.
template <class Member>
AtomicRef<Member> Shared(const Member& member) {
    return AtomicRef<Member>(const_cast<Member&>(member));
}

}  // namespace genutil
