// An index of the text of an ini file (ini_text.h), for a text that is read often.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "genutil/allocate.h"

namespace genutil {

// A hash table of positions in a text. Lookups give the same results as a search through the text.
class IniIndex {
  public:
    // Indexes a text of less than 4 GB. Returns false, with an unusable index, if allocation fails
    // or if the text has too many lines or too many lines of one name.
    bool Build(std::string_view text);

    // Finds a value.
    // @param text the text from which the index was built, at any address.
    bool Find(std::string_view text, std::string_view section, std::string_view key,
              std::string_view* value) const;

    void Clear();
    void Swap(IniIndex* other);

  private:
    // The line of a key with the head of its section, or a head alone, with itself as the line. No
    // line is at the largest possible offset.
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
