// What the platform says of characters.
#include <gtest/gtest.h>

#include <cstdint>

#include "genutil/mbutil/character_table.h"

using namespace genutil;

TEST(Characters, ClassesAreTheSameOnEveryPlatform) {
    const struct {
        std::uint16_t character;
        unsigned classes;
    } rows[] = {
        {'A', platform::kAlpha | platform::kUpper | platform::kHexDigit | platform::kPrint},
        {0x3042, platform::kAlpha | platform::kPrint},
        {0x01C5, platform::kAlpha | platform::kUpper | platform::kLower | platform::kPrint},
        {0x0660, platform::kDigit | platform::kPrint},
        {0x2192, platform::kPrint},
        {0x00B1, platform::kPunct | platform::kPrint},
        {0x2028, platform::kSpace | platform::kPrint},
        {0xE000, platform::kPrint},
        {0xDC80, 0},
        {0x0085, platform::kSpace},
    };
    for (const auto& row : rows)
        EXPECT_EQ(PageOfCharacter(row.character).classes[row.character & 0xFF], row.classes)
            << row.character;
    std::uint32_t all = 0;
    for (std::uint32_t c = 0; c <= 0xFFFF; ++c)
        all = all * 31 + PageOfCharacter(c).classes[c & 0xFF];
    EXPECT_EQ(all, 349984050u);
}
