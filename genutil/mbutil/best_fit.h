// What comes near a character that a code set lacks.
#pragma once

#include <cstdint>

namespace genutil {

struct NearLetter {
    std::uint16_t character;
    std::uint16_t first, second;  // the two that make it up, or one close to it; 0: none
    std::uint16_t plain;          // without what stands on or under it; 0: none
};

// Null when nothing comes near.
const NearLetter* FindNearLetter(std::uint16_t character);

// The letter of ASCII that is left without all that stands on or under a character; 0 for none.
char PlainLetter(std::uint16_t character);

}  // namespace genutil
