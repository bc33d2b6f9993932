// Finds any value in the text of an ini file (ini_text.h) at once, for a text that is read often.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "genutil/allocate.h"

namespace genutil {

// A hash table of places in a text. What it finds is what a search through the text would find.
class IniIndex {
  public:
    // Goes through a text of less than 4 GB. False, with an index of no use, when memory runs out
    // or the text has too many lines, or too many of one name.
    bool Build(std::string_view text);

    // The text is the one that it was built from, at whatever address.
    bool Find(std::string_view text, std::string_view section, std::string_view key,
              std::string_view* value) const;

    void Clear();
    void Swap(IniIndex* other);

  private:
    // A key's line with the head of its section, or a head alone, with itself as the line. Lines
    // are never at the last possible offset.
    struct Entry {
        std::uint32_t hash, head, line;
    };
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;

    std::size_t PlaceOf(std::uint32_t hash) const { return hash & m_mask; }
    bool HasSection(std::string_view text, std::uint32_t hash, std::string_view name) const;
    bool Add(const Entry& entry);
    bool AddLines(std::string_view text, std::uint32_t head, std::uint32_t hash,
                  std::string_view lines);

    Entry* m_entries = nullptr;
    std::size_t m_mask = 0;
};

}  // namespace genutil
