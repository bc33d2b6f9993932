// What the library asks of an operating system about texts that mean the same: their forms in
// Unicode, and their order in the user's language. Lengths are in 16-bit characters.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// Simple case folding of one character, within 16 bits.
std::uint16_t FoldCase(std::uint16_t character);

enum class NormalForm { kC, kD, kKC, kKD };

// Writes a text in a normal form. Returns its length, also where it is more than `room` and nothing
// is written that counts; -1 when the text is no UTF-16 or memory runs out.
std::int64_t Normalize(NormalForm form, const std::uint16_t* text, std::size_t length,
                       std::uint16_t* out, std::size_t room);

// What a comparison leaves out of account, one bit each; the last reads digits as numbers.
enum Collation : unsigned {
    kIgnoreCase = 1,
    kIgnoreWidth = 2,
    kIgnoreKana = 4,
    kDigitsAsNumbers = 8,
    kAllCollation = 15,
};

// Compares by the collation of the user's locale: negative, 0 or positive. If allocation fails, it
// may do so without the options.
int CompareTexts(const std::uint16_t* a, std::size_t aLength, const std::uint16_t* b,
                 std::size_t bLength, unsigned options);

// Writes bytes without a 0 that compare as the texts do with the same options. Returns their
// number, even if it is more than `room`, or -1 if allocation fails.
std::int64_t SortKey(const std::uint16_t* text, std::size_t length, unsigned options, char* out,
                     std::size_t room);

}  // namespace genutil::platform
