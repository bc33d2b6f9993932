// Changes one value in the text of an ini file (ini_text.h) and leaves every other line as it is.
#pragma once

#include <cstddef>
#include <string_view>

namespace genutil {

// The text with [begin, end) replaced by the parts, one behind the other.
struct IniEdit {
    static constexpr unsigned kMostParts = 9;

    std::size_t begin, end;
    std::string_view parts[kMostParts];
    unsigned count;

    void Add(std::string_view part) { parts[count++] = part; }
};

// Whether a file can hold these names and value, so that they are read back and nothing else
// changes: no line ends, no section that ends within a character, no "=" in a key, no key that
// begins as a comment or a section does.
bool IniHolds(std::string_view section, std::string_view key, std::string_view value);

// Each of these plans a change of a text and returns false when there is nothing to change. A value
// keeps the spelling of its line up to it; a new key goes below the last line of its section that
// is not blank, and a new section to the end. New lines end as the first of the text does.
bool PlanIniValue(std::string_view text, std::string_view section, std::string_view key,
                  std::string_view value, IniEdit* edit);
bool PlanIniKeyRemoval(std::string_view text, std::string_view section, std::string_view key,
                       IniEdit* edit);
bool PlanIniSectionRemoval(std::string_view text, std::string_view section, IniEdit* edit);

}  // namespace genutil
