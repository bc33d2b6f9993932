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
