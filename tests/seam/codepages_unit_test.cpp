// What the platform says of Windows code pages, raw; what the engine makes of it has tests of its
// own.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "osutil/platform/codepages.h"

using namespace genutil;
using platform::kNoCharacter;

namespace {

struct Tables {
    std::vector<std::uint16_t> bytes = std::vector<std::uint16_t>(256, 0x1234);
    std::vector<std::uint16_t> pairs = std::vector<std::uint16_t>(0x10000, 0x1234);
};

long CountCharacters(const std::vector<std::uint16_t>& table) {
    return static_cast<long>(table.size()) - std::count(table.begin(), table.end(), kNoCharacter);
}

}  // namespace

TEST(CodePages, UnknownPageTouchesNothing) {
    Tables tables;
    EXPECT_FALSE(platform::ReadCodePage(12345, tables.bytes.data(), tables.pairs.data()));
    EXPECT_EQ(tables.bytes, Tables().bytes);
    EXPECT_EQ(tables.pairs, Tables().pairs);
}

TEST(CodePages, SingleBytePagesNeedNoPairs) {
    for (const unsigned codePage :
         {874u, 1250u, 1251u, 1252u, 1253u, 1254u, 1255u, 1256u, 1257u, 1258u}) {
        Tables tables;
        ASSERT_TRUE(platform::ReadCodePage(codePage, tables.bytes.data(), nullptr)) << codePage;
        EXPECT_EQ(CountCharacters(tables.bytes), 256)
            << codePage;  // open cells are private or controls
    }
}

TEST(CodePages, DoubleBytePages) {
    static constexpr struct {
        unsigned codePage;
        long bytes, pairs;     // codes that have a character
        unsigned first, last;  // lead bytes
    } kRows[] = {{932, 196, 9604, 0x81, 0xFC},
                 {936, 130, 23940, 0x81, 0xFE},
                 {949, 130, 17236, 0x81, 0xFE},
                 {950, 130, 19720, 0x81, 0xFE},
                 {1361, 143, 17252, 0x84, 0xF9}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.codePage);
        Tables tables;
        ASSERT_TRUE(platform::ReadCodePage(row.codePage, tables.bytes.data(), tables.pairs.data()));
        EXPECT_EQ(CountCharacters(tables.bytes), row.bytes);
        EXPECT_EQ(CountCharacters(tables.pairs), row.pairs);
        EXPECT_EQ(tables.bytes[row.first], kNoCharacter);
        EXPECT_EQ(tables.bytes[row.last], kNoCharacter);
        for (unsigned code = 0; code < 0x10000; ++code) {
            const bool isPair = tables.pairs[code] != kNoCharacter;
            ASSERT_FALSE(isPair && tables.bytes[code >> 8] != kNoCharacter) << code;
        }
    }
}
