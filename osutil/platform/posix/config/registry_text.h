// Texts in the form of the registry's store: UTF-8, with names folded to lower case for comparison.
#pragma once

#include <cstddef>
#include <string_view>

#include "osutil/platform/file/path_units.h"

namespace genutil::platform {

class StoreText {
  public:
    enum Form { kAsIs, kFolded };

    // Converts a text in the current code set. Bytes that do not convert are passed unchanged.
    StoreText(const char* text, Form form);
    StoreText(const StoreText&) = delete;
    StoreText& operator=(const StoreText&) = delete;

    bool IsMade() const {
        return m_text != nullptr;
    }  // false if allocation failed, which has been
       // reported
    std::string_view Get() const { return {m_text, m_length}; }

    // Normalises the text as the path of a key, with one "\" between two names. Returns false for a
    // path that a registry rejects: a leading "\", or a name of more than 255 characters.
    bool MakeKeyPath();

  private:
    PathBuffer<char> m_buffer;
    char* m_text = nullptr;
    std::size_t m_length = 0;
};

}  // namespace genutil::platform
