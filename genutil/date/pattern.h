// The walk over a date or time pattern, which writing and reading share.
//
//     pattern = { run | quoted | other }
//     run     = one of the pattern's letters, once or more: "yyyy", "M"
//     quoted  = "'" any "'"     without the second apostrophe it goes on to the end
//     other   = any character, blanks included
//
// A pattern is taken apart once and kept: what walks it afterwards looks at elements.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genstr.h"
#include "genutil/locale/locale_edits.h"

namespace genutil {

struct PatternElement {
    enum Kind : std::uint8_t { kRun, kQuoted, kUnclosed, kOther };
    Kind kind;
    char letter;           // of a run
    std::uint32_t at;      // first byte; of quoted text the one behind the apostrophe
    std::uint32_t length;  // bytes: how often the letter stands, or of the text
};

enum class PatternLetters : std::uint8_t { kDate, kTime };

// Writing walks by characters, as programs lay out what they write; reading walks by bytes, as the
// texts that it reads have always been matched: there a letter may be half of a character.
enum class PatternWalk : std::uint8_t { kCharacters, kBytes };

// The elements of a pattern, valid as long as the object. Never fails: without memory, which is
// reported, there are none.
class Pattern {
  public:
    Pattern(const CGNString& text, PatternLetters letters, PatternWalk walk);

    // The pattern that one place in the program last walked, if `mark` says that nothing changed on
    // which it depends; else `read` is called for it. So it is found again without a look at it.
    struct Elements;
    template <class Read>
    Pattern(Kept<const Elements>& where, std::uint64_t mark, PatternLetters letters,
            PatternWalk walk, Read read)
        : m_elements(where.For(mark)), m_owned(false) {
        if (!m_elements || !IsOfCodeSet()) {
            Find(read(), letters, walk);
            if (!m_owned) where.Keep(mark, m_elements);
        }
        Take(m_elements);
    }
    ~Pattern();
    Pattern(const Pattern&) = delete;
    Pattern& operator=(const Pattern&) = delete;

    const PatternElement* begin() const { return m_begin; }
    const PatternElement* end() const { return m_end; }
    const char* Text(const PatternElement& element) const { return m_text + element.at; }
    bool EndsWith(const CGNString& text) const;

  private:
    void Find(const CGNString& text, PatternLetters letters, PatternWalk walk);
    static Elements* TakeApart(const CGNString& text, PatternLetters letters, PatternWalk walk);

    void Take(const Elements* elements);
    bool IsOfCodeSet() const;

    const Elements* m_elements;
    const PatternElement* m_begin = nullptr;
    const PatternElement* m_end = nullptr;
    const char* m_text = nullptr;
    std::uint32_t m_length = 0;
    bool m_owned;
};

}  // namespace genutil
