#include <gtest/gtest.h>

#include "tests/support/code_set_guard.h"

extern "C" int CountInC(const char* text);
extern "C" unsigned ChecksumInC(const char* text);

TEST(Abi, MbutilWorksInC) {
    const CodeSetGuard guard(5);
    EXPECT_EQ(CountInC("a\x82\xA0"
                       "b"),
              3);
}

TEST(Abi, ChecksumWorksInC) {
    EXPECT_EQ(ChecksumInC("\x01"), 0x77073096u);
}
