// Profiles that were read lately, so that a file that did not change is not read again.
//
// A file is held from its second reading on, when its state (file_state.h) was the same both
// times. Nobody waits for the cache: who finds it in use reads the file. So a process that was
// forked while it was in use only reads more slowly.
#pragma once

#include <string_view>

#include "genutil/allocate.h"
#include "osutil/platform/posix/file/file_state.h"

namespace genutil::platform {

enum class Cached { kNo, kLoad, kFound, kMissing };  // kLoad: the file is worth being held

constexpr std::int64_t kLargestCachedProfile = 1 << 20;

// Looks for a value in the file of that state, and stores as much as there is room for.
Cached AskProfileCache(const FileState& state, std::string_view section, std::string_view key,
                       char* out, std::size_t size, std::size_t* length);

// Holds a text; takes the memory over, unless the cache is in use.
void FillProfileCache(const FileState& state, Owned<char>* text);

}  // namespace genutil::platform
