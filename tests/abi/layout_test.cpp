// The size of each exported class, which programs hold by value, embed and derive from.
#include <gtest/gtest.h>

#include "genutil.h"

namespace {

// Every platform has one of three models: pointers and long of 32 bits, of 64 bits, or (64-bit
// Windows) only pointers of 64 bits.
constexpr int kModel = sizeof(void*) == 4 ? 0 : sizeof(long) == 4 ? 1 : 2;

TEST(Layout, SizesOfExportedClassesAreThoseRecorded) {
#define ROW(type, ...)         \
    {                          \
#type, sizeof(type), { \
            __VA_ARGS__        \
        }                      \
    }
    static const struct {
        const char* name;
        std::size_t size;
        std::size_t recorded[3];  // 32-bit Windows, 64-bit Windows, 64-bit Linux
    } kRows[] = {
#include "tests/abi/layout.inc"
    };
#undef ROW
    for (const auto& row : kRows) {
        // Linux with 32 bits has a longer record of a broken-down time.
        if (kModel == 0 && sizeof(struct tm) != 36) continue;
        EXPECT_EQ(row.size, row.recorded[kModel]) << row.name;
    }
}

}  // namespace
