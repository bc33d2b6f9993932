// Ini files that other programs wrote in another form: as UTF-16 with a byte-order mark, or with
// lines that end in CR alone.
#pragma once

#include <cstddef>
#include <string_view>

#include "genutil/allocate.h"

namespace genutil {

struct IniText {
    Owned<char> bytes;
    std::size_t size = 0;

    std::string_view View() const { return {bytes.Get(), size}; }
};

// Returns true if the lines of a text must be converted before they are searched.
// @param beginning the text or a longer piece of it.
bool IsForeignIni(std::string_view beginning);

// Converts a text to lines of the current code set that end in LF, if necessary. Returns false if
// allocation fails.
bool ConvertIni(IniText* text);

}  // namespace genutil
