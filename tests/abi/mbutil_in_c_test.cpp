#include <gtest/gtest.h>

#include "tests/support/code_set_guard.h"

extern "C" int CountInC(const char* text);

TEST(Abi, TheTextHeaderServesC) {
    const CodeSetGuard guard(5);
    EXPECT_EQ(CountInC("a\x82\xA0"
                       "b"),
              3);
}
