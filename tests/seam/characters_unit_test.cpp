// What the platform says of characters.
#include <gtest/gtest.h>

#include <cstdint>

#include "genutil/mbutil/character_table.h"

using namespace genutil;

// Of all 16-bit characters at once: letters, digits, signs, blanks and what cannot be printed.
TEST(Characters, ClassesAreTheSameOnEveryPlatform) {
    std::uint32_t all = 0;
    for (std::uint32_t c = 0; c <= 0xFFFF; ++c)
        all = all * 31 + PageOfCharacter(c).classes[c & 0xFF];
    EXPECT_EQ(all, 349984050u);
}
