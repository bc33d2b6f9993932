// Platform layer: the registry, which stores texts under keys of the current user. Letter case of
// names is ignored.
//
// A key is named by a path with "\" between names. An empty path is the user's root. Names and
// texts are in the current code set. All functions may be called from any thread.
#pragma once

#include <cstddef>

namespace genutil::platform {

// Reads a value of any type as a terminated text. Returns false, with the buffer unspecified, if
// there is no such value or if it does not fit with its terminator.
bool ReadRegistryValue(const char* key, const char* name, char* out, std::size_t size);

// Calls visit for each value of a key, until a name or a text does not fit in a buffer of `size`
// bytes with its terminator.
void VisitRegistryValues(const char* key, std::size_t size,
                         void (*visit)(void* context, const char* name, const char* text),
                         void* context);

// Stores a text and creates the key if it does not exist. Returns false if the text was not stored.
bool WriteRegistryValue(const char* key, const char* name, const char* text);

// Removes a value. Returns false if it does not exist or cannot be removed.
bool RemoveRegistryValue(const char* key, const char* name);

}  // namespace genutil::platform
