// What the library asks of an operating system about what a character is.
#pragma once

#include <cstdint>

namespace genutil::platform {

enum CharacterClass : std::uint8_t {
    kAlpha = 0x01,  // letters of any script, letter numbers among them
    kDigit = 0x02,  // decimal digits of any script
    kLower = 0x04,
    kUpper = 0x08,
    kPunct = 0x10,  // punctuation; of other symbols those of the first 256 characters only
    kSpace = 0x20,  // white space, control characters that space among it
    kHexDigit = 0x40,
    kPrint = 0x80,  // assigned, and no control or format character
};

// Writes the classes of the 256 characters from page * 256 on. Slow: the caller keeps them.
void ReadCharacterClasses(unsigned page, std::uint8_t* classes);

}  // namespace genutil::platform
