// Sizes near the largest number do not wrap around.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

#include "genutil/allocate.h"
#include "genutil/mbutil/scratch.h"
#include "mbutil.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/temporary_file.h"

namespace {

constexpr std::size_t kMost = static_cast<std::size_t>(-1);

// Allocations of the correct size fail, those of a size that wrapped around would not.
struct MemoryOf2Gb {
    MemoryOf2Gb() {
        genutil::g_allocationGate = [](std::size_t bytes) { return bytes < INT_MAX; };
    }
    ~MemoryOf2Gb() { genutil::g_allocationGate = nullptr; }
};

TEST(SizeLimits, ConversionBoundsDoNotWrapAround) {
    const struct {
        int line, from, to;
        std::size_t factor, extra;
    } kRows[] = {
        {__LINE__, mbShiftJis, mbShiftJis, 1, 1}, {__LINE__, mbUtf16, mbUtf16, 1, 2},
        {__LINE__, mbShiftJis, mbUtf8, 4, 16},    {__LINE__, mbShiftJis, mbUtf16, 4, 16},
        {__LINE__, mbUtf8, mbJis, 10, 16},
    };
    const MemoryOf2Gb memory;
    for (const auto& row : kRows) {
        const std::size_t last = (kMost - row.extra) / row.factor;
        EXPECT_EQ(mbConvertBound(last, row.from, row.to), last * row.factor + row.extra)
            << row.line;
        char* out = nullptr;
        for (const std::size_t length : {last + 1, kMost / 2 + 1, kMost - 1, kMost}) {
            if (length <= last) continue;
            EXPECT_EQ(mbConvertBound(length, row.from, row.to), kMost) << row.line;
            EXPECT_EQ(mbConvertAlloc("", length, row.from, &out, row.to, nullptr), 0) << row.line;
        }
        EXPECT_EQ(out, nullptr);
    }
}

// The size of a line that goes on in a shift is that of the escape and of twice the buffer's, which
// is more than 32 bits count.
TEST(SizeLimits, LongestLineBufferDoesNotWrapAround) {
    const CodeSetGuard japanese(mbShiftJis);
    const TemporaryFile file("\x1B$B$\"$$$&$(\x1B(B\n");
    const OpenFile stream(file.Path(), "rb");
    char part[8], untouched[16] = "untouched";
    ASSERT_NE(mbfgets(part, sizeof part, stream, mbJis), nullptr);
    {
        const MemoryOf2Gb memory;
        EXPECT_EQ(mbfgets(untouched, INT_MAX, stream, mbJis), nullptr);
    }
    EXPECT_STREQ(untouched, "untouched");
    for (const std::uint64_t length : {std::uint64_t{0x55555555}, std::uint64_t{0xFFFFFFFF}})
        EXPECT_EQ(genutil::ConvertedSize(length) / 3, length);
}

}  // namespace
