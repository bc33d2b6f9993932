// CGNString's two buffers: their sizes and their agreement. fuzz/string_unit_fuzz.cpp tries any
// operations in any order, also with allocations that fail.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "genutil/string/storage.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/reported_failures.h"
#include "tests/support/string_probe.h"

namespace {

using Wide = unsigned short;

using Probe = StringProbe;

void ExpectSound(const Probe& s) {
    EXPECT_STREQ(s.BrokenRule(), "");
}

TEST(StringStorage, ConstructorsReserveTheCapacity) {
    const struct {
        int line;
        Probe s;
        unsigned length, capacity;
    } rows[] = {
        {__LINE__, Probe(), 0, 0},          {__LINE__, Probe(nullptr, 100), 0, 0},
        {__LINE__, Probe("abc", 1), 3, 3},  {__LINE__, Probe("abc", 10), 3, 10},
        {__LINE__, Probe("abc", -1), 3, 3}, {__LINE__, Probe("", 10), 0, 10},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        EXPECT_EQ(row.s.m_length, row.length);
        EXPECT_EQ(row.s.m_capacity, row.capacity);
        EXPECT_EQ(row.s.m_flags, 0u);
        EXPECT_EQ(row.s.m_wide, nullptr);
        ExpectSound(row.s);
    }
    const Probe wide(std::vector<Wide>{'a', 'b', 0}.data(), 50);
    EXPECT_EQ(wide.m_wideCapacity, 2u);
    EXPECT_EQ(wide.m_capacity, 2u);
    EXPECT_EQ(Probe().m_data, Probe(nullptr, 100).m_data);
}

TEST(StringStorage, CopyHasTheSameCapacityGrowthAndCharacters) {
    Probe s("abc", 10);
    s.AllocateBuffer(12, 1);
    s.GetAt(0);
    const Probe copy(s);
    EXPECT_EQ(copy.m_capacity, s.m_capacity);
    EXPECT_EQ(copy.m_flags, 1u);
    EXPECT_EQ(copy.m_wideLength, 3u);
    EXPECT_EQ(copy.m_wideCapacity, 3u);
    ExpectSound(copy);
    s.Clear();
    EXPECT_EQ(s.m_wideCapacity, 0u);
    const Probe ofEmpty(s);
    EXPECT_EQ(ofEmpty.m_capacity, 0u);
    EXPECT_EQ(ofEmpty.m_flags, 0u);
    EXPECT_EQ(ofEmpty.m_wide, nullptr);
}

TEST(StringStorage, GrowsToTheSizeOrByDoubling) {
    const struct {
        int line;
        unsigned first;
        bool doubling;
        unsigned second, capacity;
    } rows[] = {
        {__LINE__, 4, false, 9, 9}, {__LINE__, 4, true, 9, 16}, {__LINE__, 4, true, 8, 8},
        {__LINE__, 4, true, 4, 4},  {__LINE__, 4, true, 3, 4},  {__LINE__, 9, false, 4, 9},
        {__LINE__, 0, true, 5, 5},  {__LINE__, 1, true, 5, 8},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        Probe s;
        EXPECT_EQ(s.ReallocateToNumBytes(row.first), row.first);
        s.AllocateBuffer(row.first, row.doubling);
        EXPECT_EQ(s.ReallocateToNumBytes(row.second), row.capacity);
        Probe w;
        w.AllocateBuffer(1, row.doubling);
        EXPECT_EQ(w.ReallocateToNumChars(row.first), row.first);
        EXPECT_EQ(w.ReallocateToNumChars(row.second), row.capacity);
        EXPECT_EQ(w.m_wide[0], 0);
    }
    EXPECT_EQ(genutil::GrownCapacity(3000000000u, 4000000000u, true), 4000000000u);

    Probe s("abcd");
    const Probe keep(s);
    const char* const before = s.m_data;
    s.ReallocateToNumBytes(4);  // a size equal to the capacity is given a new buffer
    EXPECT_NE(s.m_data, before);
    EXPECT_TRUE(s == keep);
    s.AllocateBuffer(50);
    EXPECT_FALSE(s.SetCodePageCharAt(9, "x"));  // out of range, and rebuilt all the same
    EXPECT_EQ(s.m_capacity, 4u);
    s.Empty();
    s.AllocateBuffer(4, 1).Empty();
    EXPECT_EQ(s.m_flags, 0u);
}

TEST(StringStorage, WideBufferGrowsAfterClear) {
    Probe s("abcdef");
    s.AllocateBuffer(6, 1);
    s.GetAt(0);
    s.Clear();
    Wide text[] = {'1', '2', '3', '4', '5', '6', '7', '8', 0};
    s.ExpandBufferToWzBuffer(text);
    EXPECT_EQ(s.m_wideCapacity, 8u);
    s.DuplicateDataFromWzBuffer();
    EXPECT_STREQ(s, "12345678");
    ExpectSound(s);
    s.ExpandBufferToWzBuffer(s.m_wide + 5);
    char bytes[] = "678";
    s.ExpandBufferToDataBuffer(bytes);
    EXPECT_EQ(s.m_capacity, 8u);
    ExpectSound(s);
}

// With a character that does not convert, the two forms differ in the limit of the bytes.
TEST(StringStorage, LossyBytesEndAtAWholeCharacter) {
    CodeSetGuard codeSet(mbUtf8);
    const Wide text[] = {0xD800, 0x3042, 0x3044, 0x3046, 0};
    EXPECT_EQ(Probe(text).Bytes(), "?\xE3\x81\x82\xE3\x81\x84");
    const Probe roomy(text);
    roomy.DuplicateDataFromWzBuffer();
    EXPECT_EQ(roomy.Bytes(), "?\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86");
}

TEST(StringStorage, ImpossibleSizesAreFailedAllocations) {
    Probe s("abc");
    const ReportedFailures reported;
    s.AllocateBuffer(0xFFFFFFFFu);
    s.CopyNBytes("x", 0xFFFFFFFFu);
    s.CopyNChars("x", 0xFFFFFFFFu);
    s.CopyNChars("x", 0x60000000u);
    s.AppendNChars("x", 0xFFFFFFFFu);
    s.ReallocateToNumChars(0xFFFFFFFFu);
    EXPECT_EQ(reported.Count(), 6);
    EXPECT_STREQ(s, "abc");
    ExpectSound(s);
}

}  // namespace
