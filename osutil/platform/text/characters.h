// Platform layer: the classes of characters.
#pragma once

#include <cstdint>

namespace genutil::platform {

enum CharacterClass : std::uint8_t {
    kAlpha = 0x01,  // letters of any script, including letter numbers
    kDigit = 0x02,  // decimal digits of any script
    kLower = 0x04,
    kUpper = 0x08,
    kPunct = 0x10,  // punctuation; other symbols only among the first 256 characters
    kSpace = 0x20,  // white space, including control characters for spacing
    kHexDigit = 0x40,
    kPrint = 0x80,  // assigned characters except control and format characters
};

// Writes the classes of the 256 characters from page * 256 on. Slow; the caller stores the result.
void ReadCharacterClasses(unsigned page, std::uint8_t* classes);

}  // namespace genutil::platform
