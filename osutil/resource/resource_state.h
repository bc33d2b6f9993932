// The modules that OSLoadString() searches.
#pragma once

#include <cstdint>

#include "osutil/platform/resource/modules.h"

class CGNLclSt;

namespace genutil {

// The thread variable that contains the thread's resource library.
constexpr char kThreadLibrary[] = "MsgResourceHandle";

// Returns the variables of threads, or null if allocation fails. Threads may make their first calls
// concurrently.
CGNLclSt* ThreadVariables();

// The state for which a loaded text is valid. While both members are equal, another call finds the
// same text.
struct ResourceState {
    std::uint32_t changes;    // number of changes in the process, to the table and to the loaded
                              // libraries
    platform::Module thread;  // the calling thread's own library
    bool operator==(const ResourceState&) const = default;
};
ResourceState CurrentResourceState();

// Must be called after each change of the table and after each library is freed, because its handle
// may be reused.
void NoteResourceChange();

}  // namespace genutil
