// The resource libraries that a process searches, one after the other.
#pragma once

#include "osutil/platform/resource/modules.h"

namespace genutil {

struct ResourceTable {
    static constexpr int kSlots = 10;
    platform::Module slots[kSlots] = {};  // ends at the first null; the most recent comes first

    // Puts a library into slot 0 and returns the one that stood there, which is dropped, not moved
    // up: programs attach anew to change the language, and it must not answer for texts that the
    // new one lacks.
    platform::Module Place(platform::Module module);

    // Whether the module is to be freed, which is gone from its second slot then. Programs rely on
    // it that one which stands once stays: only the slot behind its first one is looked at.
    bool Remove(platform::Module module);
};

}  // namespace genutil
