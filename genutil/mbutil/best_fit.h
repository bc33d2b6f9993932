// Best-fit characters: substitutes for a character that a code set lacks.
#pragma once

#include <cstdint>

namespace genutil {

struct NearLetter {
    std::uint16_t character;
    std::uint16_t first, second;  // a decomposition or a similar character; 0: none
    std::uint16_t plain;          // a plainer substitute; 0: the character may be omitted
};

// Returns the substitutes of a character, or null if there are none.
const NearLetter* FindNearLetter(std::uint16_t character);

// Returns the ASCII letter that results from repeated plainer substitution, or 0 if there is none.
char PlainLetter(std::uint16_t character);

}  // namespace genutil
