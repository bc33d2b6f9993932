// Where OSLoadString looks.
#pragma once

#include <cstdint>

#include "osutil/platform/resource/modules.h"

class CGNLclSt;

namespace genutil {

// The variable of a thread that holds its resource library.
constexpr char kThreadLibrary[] = "MsgResourceHandle";

// The variables of threads; null without memory. Threads may ask for the first time at once.
CGNLclSt* ThreadVariables();

// What a text that was loaded holds for: as long as both are the same, another call finds the same.
struct ResourceState {
    std::uint32_t changes;    // of the table and of what is loaded, in the process
    platform::Module thread;  // the calling thread's own library
    bool operator==(const ResourceState&) const = default;
};
ResourceState CurrentResourceState();

// To be called behind each change of the table and each library that is freed: its handle may be
// given to another one.
void NoteResourceChange();

}  // namespace genutil
