// The walk over a date or time picture, which writing and reading share.
//
//     picture = { run | quoted | other }
//     run     = one of the picture's letters, once or more: "yyyy", "M"
//     quoted  = "'" any "'"     without the second apostrophe it goes on to the end
//     other   = any character, blanks included
//
// A picture is taken apart once and kept: what walks it afterwards looks at elements.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genstr.h"

namespace genutil {

struct PictureElement {
    enum Kind : std::uint8_t { kRun, kQuoted, kUnclosed, kOther };
    Kind kind;
    char letter;           // of a run
    std::uint32_t at;      // first byte; of quoted text the one behind the apostrophe
    std::uint32_t length;  // bytes: how often the letter stands, or of the text
};

enum class PictureLetters : std::uint8_t { kDate, kTime };

// Writing walks by characters, as programs lay out what they write; reading walks by bytes, as the
// texts that it reads have always been matched: there a letter may be half of a character.
enum class PictureWalk : std::uint8_t { kCharacters, kBytes };

// The elements of a picture, valid as long as the object. Never fails: without memory, which is
// reported, there are none.
class Picture {
  public:
    Picture(const CGNString& text, PictureLetters letters, PictureWalk walk);
    ~Picture();
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    const PictureElement* begin() const;
    const PictureElement* end() const;
    const char* Text(const PictureElement& element) const;

  private:
    struct Elements;
    static Elements* TakeApart(const CGNString& text, PictureLetters letters, PictureWalk walk);

    const Elements* m_elements;
    bool m_owned;
};

}  // namespace genutil
