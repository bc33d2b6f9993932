// The decomposition of a date or time pattern into elements, shared by writing and reading.
//
//     pattern = { run | quoted | other }
//     run     = one of the pattern's letters, once or more: "yyyy", "M"
//     quoted  = "'" any "'"     without the second apostrophe it extends to the end
//     other   = any character, blanks included
//
// A pattern is decomposed once and kept. Later walks only examine its elements.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genstr.h"
#include "genutil/locale/locale_edits.h"

namespace genutil {

struct PatternElement {
    enum Kind : std::uint8_t { kRun, kQuoted, kUnclosed, kOther };
    Kind kind;
    char letter;           // letter of a run
    std::uint32_t at;      // first byte; of quoted text, the byte after the apostrophe
    std::uint32_t length;  // number of letters of a run, or of bytes of a text
};

enum class PatternLetters : std::uint8_t { kDate, kTime };

// Writing advances by characters, the unit in which programs lay out text. Reading advances by
// bytes, because texts have always been matched that way. A letter may then be half of a character.
enum class PatternWalk : std::uint8_t { kCharacters, kBytes };

// The elements of a pattern, valid as long as the object. Construction never fails. If allocation
// fails, which is reported, there are no elements.
class Pattern {
  public:
    Pattern(const CGNString& text, PatternLetters letters, PatternWalk walk);

    // The pattern last used at one place in the program, if `mark` shows that nothing on which it
    // depends has changed. Otherwise `read` is called to obtain it. A known pattern is therefore
    // found without examining its text.
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
