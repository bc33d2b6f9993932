// What the library asks of an operating system about the registry: texts under the keys of the
// current user, found in any letter case.
//
// A key is named by a path with "\" between names; the empty one is the user's root. Names and
// texts are in the current code set. Any thread may call.
#pragma once

#include <cstddef>

namespace genutil::platform {

// Stores a value, of whatever type, as a terminated text; false, with the buffer in any state, when
// there is none or it does not fit with its terminator.
bool ReadRegistryValue(const char* key, const char* name, char* out, std::size_t size);

// Calls visit with each value of a key, until one does not fit a buffer of `size` bytes with its
// terminator, be it the name or the text.
void VisitRegistryValues(const char* key, std::size_t size,
                         void (*visit)(void* context, const char* name, const char* text),
                         void* context);

// Stores a text, and makes the key where there is none. False when it is not stored.
bool WriteRegistryValue(const char* key, const char* name, const char* text);

// False when there is no such value, or it cannot be removed.
bool RemoveRegistryValue(const char* key, const char* name);

}  // namespace genutil::platform
