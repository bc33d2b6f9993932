// Classes and case of characters of the platform layer.
#include <gtest/gtest.h>

#include <cstdint>

#include "genutil/mbutil/character_table.h"

using namespace genutil;

// A checksum over all 16-bit characters: letters and their case, digits, signs, blanks, controls.
TEST(Characters, HaveTheSameChecksumOnEveryPlatform) {
    std::uint32_t all = 0;
    for (std::uint32_t c = 0; c <= 0xFFFF; ++c) {
        const CharacterPage& page = PageOfCharacter(c);
        const std::uint32_t at = c & 0xFF;
        all = ((all * 31 + page.classes[at]) * 31 + page.upper[at]) * 31 + page.lower[at];
    }
    EXPECT_EQ(all, 1858298442u);
}
