// Reads the text of an ini file: lines "[section]" and, below them, "key = value".
//
// Names are found in any case of ASCII letters, with blanks around them. A line that begins with
// ";" is a comment. A value loses the blanks around it and then one pair of quotation marks or
// apostrophes that encloses all of it. A byte-order mark of UTF-8 is no part of the text. The views
// returned point into the text.
#pragma once

#include <string_view>

namespace genutil {

// The lines of the first section of that name, without its head; false when there is none.
bool FindIniSection(std::string_view text, std::string_view name, std::string_view* lines);

// The value of the first such key among the lines of a section; false when there is none.
bool FindIniValue(std::string_view lines, std::string_view key, std::string_view* value);

}  // namespace genutil
