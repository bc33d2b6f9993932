// Changes to one value in the text of an ini file (ini_text.h). Every other line is unchanged.
#pragma once

#include <cstddef>
#include <string_view>

namespace genutil {

// An edit of a text: [begin, end) is replaced with the concatenated parts.
struct IniEdit {
    static constexpr unsigned kMostParts = 9;

    std::size_t begin, end;
    std::string_view parts[kMostParts];
    unsigned count;

    void Add(std::string_view part) { parts[count++] = part; }
};

// Returns true if a file can hold these names and this value so that they are read back and nothing
// else changes. They must not contain line ends, a section must not end within a character, and a
// key must not contain "=" or begin as a comment or a section does.
bool IniHolds(std::string_view section, std::string_view key, std::string_view value);

// Each function below plans a change of a text. Returns false if there is nothing to change. A
// changed line keeps its spelling up to the value. A new key is added after the last line of its
// section that is not blank, and a new section at the end. New lines end like the first line of the
// text.
bool PlanIniValue(std::string_view text, std::string_view section, std::string_view key,
                  std::string_view value, IniEdit* edit);
bool PlanIniKeyRemoval(std::string_view text, std::string_view section, std::string_view key,
                       IniEdit* edit);
bool PlanIniSectionRemoval(std::string_view text, std::string_view section, IniEdit* edit);

}  // namespace genutil
