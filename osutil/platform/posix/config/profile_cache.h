// A cache of recently read profiles, so that an unchanged file is not read again.
//
// A file is cached from its second reading on, if its state (file_state.h) was the same both times.
// No thread waits for the cache. If it is in use, the file is read. A process that was forked while
// the cache was in use therefore only reads more slowly.
#pragma once

#include <string_view>

#include "osutil/config/ini_convert.h"
#include "osutil/platform/posix/file/file_state.h"

namespace genutil::platform {

enum class Cached { kNo, kLoad, kFound, kMissing };  // kLoad: the file should be cached

constexpr std::int64_t kLargestCachedProfile = 1 << 20;

// Looks for a value in the file with that state, and stores as much as there is room for.
Cached AskProfileCache(const FileState& state, std::string_view section, std::string_view key,
                       char* out, std::size_t size, std::size_t* length);

// Caches the text of a file in that state and takes ownership of its memory, unless the cache is in
// use. A text that cannot be indexed is not kept, and the file is no longer reported as kLoad.
void FillProfileCache(const FileState& state, IniText* text);

// Removes a file from the cache, in whatever state, unless the cache is in use.
void ForgetProfile(const FileState& state);

}  // namespace genutil::platform
