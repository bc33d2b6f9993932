// Functions shared by the sources of the number classes.
#pragma once

#include <cstring>
#include <string_view>

#include "gennum.h"
#include "genutil/string/storage.h"

namespace genutil {

// Replaces a text and leaves room for it to grow. Returns false and empties the text if allocation
// fails, because the previous text must not be taken for a result.
inline bool PutText(CGNString& to, std::string_view text) {
    if (StringStorage::Put(to, text.data(), text.size())) return true;
    to.Clear();
    return false;
}

// Returns a string up to its first 0 byte, at most `limit` bytes.
inline std::string_view TextOf(const CGNString& s, std::size_t limit = ~std::size_t{0}) {
    const std::size_t length = limit < s.GetLength() ? limit : s.GetLength();
    const char* text = s;
    const void* end = std::memchr(text, 0, length);
    return {text, end ? static_cast<std::size_t>(static_cast<const char*>(end) - text) : length};
}

}  // namespace genutil
