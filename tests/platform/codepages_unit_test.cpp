// Windows code pages of the platform layer.
#include <gtest/gtest.h>

#include <vector>

#include "osutil/platform/text/codepages.h"

using namespace genutil;

TEST(CodePages, UnknownPageChangesNothing) {
    std::vector<std::uint16_t> bytes(256, 0x1234), pairs(0x10000, 0x1234);
    const auto oldBytes = bytes, oldPairs = pairs;
    EXPECT_FALSE(platform::ReadCodePage(12345, bytes.data(), pairs.data()));
    EXPECT_EQ(bytes, oldBytes);
    EXPECT_EQ(pairs, oldPairs);
}
