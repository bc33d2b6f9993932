// What the platform says of Windows code pages, raw; what the engine makes of it has tests of its
// own.
#include <gtest/gtest.h>

#include <vector>

#include "osutil/platform/codepages.h"

using namespace genutil;

namespace {

struct Tables {
    std::vector<std::uint16_t> bytes = std::vector<std::uint16_t>(256, 0x1234);
    std::vector<std::uint16_t> pairs = std::vector<std::uint16_t>(0x10000, 0x1234);
};

}  // namespace

TEST(CodePages, UnknownPageTouchesNothing) {
    Tables tables;
    EXPECT_FALSE(platform::ReadCodePage(12345, tables.bytes.data(), tables.pairs.data()));
    EXPECT_EQ(tables.bytes, Tables().bytes);
    EXPECT_EQ(tables.pairs, Tables().pairs);
}
