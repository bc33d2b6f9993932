// The platform's Unicode normal forms of texts and their order in the user's language. Lengths are
// in 16-bit characters.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// Returns the simple case folding of one character, within 16 bits.
std::uint16_t FoldCase(std::uint16_t character);

enum class NormalForm { kC, kD, kKC, kKD };

// Writes a text in a normal form. Returns its length. If that is more than `room`, the contents of
// `out` are undefined and the length may be an estimate, with which to try again. Returns -1 if the
// text is not valid UTF-16 or allocation fails.
std::int64_t Normalize(NormalForm form, const std::uint16_t* text, std::size_t length,
                       std::uint16_t* out, std::size_t room);

// Options of a comparison, one bit each: differences to ignore, and digits compared as numbers.
enum Collation : unsigned {
    kIgnoreCase = 1,
    kIgnoreWidth = 2,
    kIgnoreKana = 4,
    kDigitsAsNumbers = 8,
    kAllCollation = 15,
};

// Compares in the collation order of the user's locale. Returns a negative number, 0 or a positive
// number. If allocation fails, it may compare without the options.
int CompareTexts(const std::uint16_t* a, std::size_t aLength, const std::uint16_t* b,
                 std::size_t bLength, unsigned options);

// Writes bytes without a 0 that compare as the texts do with the same options. Returns their
// number, even if it is more than `room`, or -1 if allocation fails.
std::int64_t SortKey(const std::uint16_t* text, std::size_t length, unsigned options, char* out,
                     std::size_t room);

}  // namespace genutil::platform
