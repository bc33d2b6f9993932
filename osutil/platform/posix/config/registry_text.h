// Texts as the registry's store has them: UTF-8, and names for comparison in lower case.
#pragma once

#include <cstddef>
#include <string_view>

#include "osutil/platform/file/path_units.h"

namespace genutil::platform {

class StoreText {
  public:
    enum Form { kAsIs, kFolded };

    // A text in the current code set. Bytes that do not convert pass as they are.
    StoreText(const char* text, Form form);
    StoreText(const StoreText&) = delete;
    StoreText& operator=(const StoreText&) = delete;

    bool IsMade() const { return m_text != nullptr; }  // false: memory ran out, as reported
    std::string_view Get() const { return {m_text, m_length}; }

    // Makes a path of a key of it, with one "\" between two names. False for one that a registry
    // does not take: a leading "\", or a name of more than 255 characters.
    bool MakeKeyPath();

  private:
    PathBuffer<char> m_buffer;
    char* m_text = nullptr;
    std::size_t m_length = 0;
};

}  // namespace genutil::platform
