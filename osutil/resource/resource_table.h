// The resource libraries that a process searches, in order.
#pragma once

#include "osutil/platform/resource/modules.h"

namespace genutil {

struct ResourceTable {
    static constexpr int kSlots = 10;
    platform::Module slots[kSlots] = {};  // ends at the first null; most recent first

    // Puts a library into slot 0 and returns the previous one, which is removed rather than moved
    // to slot 1. Programs attach a new library to change the language, and the previous one must
    // not supply texts that the new one lacks.
    platform::Module Place(platform::Module module);

    // Removes a module from its second slot. Returns true if the module must be freed. Programs
    // rely on the fact that a module with one slot is kept: only the slot after its first one is
    // examined.
    bool Remove(platform::Module module);
};

}  // namespace genutil
