// What the library asks of an operating system about Windows code pages.
#pragma once

#include <cstdint>

namespace genutil::platform {

constexpr std::uint16_t kNoCharacter = 0xFFFF;  // what a code without a character maps to

// Fills bytes[256] with the characters of the one-byte codes of a code page and, for a double-byte
// one, pairs[lead * 256 + trail] with those of its two-byte codes; codes without a character, and
// the lead bytes in `bytes`, become kNoCharacter. `pairs` may be null for a single-byte code page.
// Returns false, with both untouched, when the system does not know the code page.
//
// The answers are the published Windows mappings, user-defined areas included; best-fit look-alikes
// are not part of them. Called once per code page; slow.
bool ReadCodePage(unsigned codePage, std::uint16_t* bytes, std::uint16_t* pairs);

}  // namespace genutil::platform
