// Platform layer: Windows code pages.
#pragma once

#include <cstdint>

namespace genutil::platform {

constexpr std::uint16_t kNoCharacter = 0xFFFF;  // the mapping of a code without a character

// Fills bytes[256] with the characters of the one-byte codes of a code page and, for a double-byte
// one, pairs[lead * 256 + trail] with those of its two-byte codes. Codes without a character, and
// the lead bytes in `bytes`, become kNoCharacter. `pairs` may be null for a single-byte code page.
// Returns false, with both unchanged, if the system does not know the code page.
//
// The mappings are the published ones of Windows, including user-defined areas but without best-fit
// characters. Called once per code page. Slow.
bool ReadCodePage(unsigned codePage, std::uint16_t* bytes, std::uint16_t* pairs);

}  // namespace genutil::platform
