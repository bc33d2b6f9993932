// CGNString's two buffers: their sizes and their agreement. fuzz/string_unit_fuzz.cpp tries any
// operations in any order, also with allocations that fail.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "genutil/string/storage.h"
#include "ostext.h"
#include "tests/support/allocation_gate.h"
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

// A large buffer grows where it is, unless the new text points into it.
TEST(StringStorage, LargeTextsGrowByWhatIsAppended) {
    std::string expected(1 << 17, 'x');
    Probe s(expected.c_str());
    for (int i = 0; i < 3; ++i) {
        s += "abc";
        expected += "abc";
        s.AppendNChars(static_cast<const char*>(s) + s.GetLength() - 2, 2);
        expected += "bc";
        EXPECT_EQ(s.m_capacity, expected.size());
    }
    s += s;
    expected += expected;
    EXPECT_EQ(s.View(), expected);
    {
        const ReportedFailures reported;
        const AllocationGate gate(0);
        s += "lost";
    }
    EXPECT_EQ(s.View(), expected);
    s.AllocateBuffer(4 * s.m_capacity, 1);
    s += expected.c_str();
    for (int i = 0; i < 3; ++i) s += expected.c_str();
    EXPECT_EQ(s.m_capacity, 8 * expected.size());  // doubled three times
    EXPECT_EQ(s.GetLength(), 5 * expected.size());
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
    Probe s(text);
    EXPECT_EQ(s.Bytes(), "?\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86");
    s.ExpandBufferToWzBuffer(const_cast<Wide*>(text));
    s.DuplicateDataFromWzBuffer();
    EXPECT_EQ(s.Bytes(), "?\xE3\x81\x82\xE3\x81\x84");
    static_cast<const Probe&>(s).DuplicateDataFromWzBuffer();
    EXPECT_EQ(s.Bytes(), "?\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86");
}

// What each operation leaves of a buffer: as much as there was, or grown by the string's policy,
// for a text that is assigned; the length, for bytes that are built from the 16-bit copy; nothing.
TEST(StringStorage, CapacityFollowsOneRule) {
    CodeSetGuard codeSet(0);
    enum Leaves { kStored, kRebuilt, kNothing };
    static const CGNString kPath("dir\\file.txt"), kOther("  other text  "), kNone;
    static const Wide kWide[] = {'w', 'x', 0};
    static CGNString ignored;
    const struct {
        int line;
        void (*operation)(Probe&);
        const char* text;  // of "abc abc"
        Leaves leaves;
        bool hasWide;
    } rows[] = {
        {__LINE__, [](Probe& s) { s = "xyz"; }, "xyz", kStored, false},
        {__LINE__, [](Probe& s) { s = kOther; }, kOther, kStored, false},
        {__LINE__, [](Probe& s) { s = ""; }, "", kStored, false},
        {__LINE__, [](Probe& s) { s = kNone; }, "", kNothing, false},
        {__LINE__, [](Probe& s) { s += kOther; }, "abc abc  other text  ", kStored, false},
        {__LINE__, [](Probe& s) { s += kWide; }, "abc abcwx", kStored, false},
        {__LINE__, [](Probe& s) { s.CopyNBytes("xyz", 2); }, "xy", kRebuilt, false},
        {__LINE__, [](Probe& s) { s.CopyNChars("xyz", 2); }, "xy", kRebuilt, true},
        {__LINE__, [](Probe& s) { s.CopyNChars(kWide, 1); }, "w", kRebuilt, true},
        {__LINE__, [](Probe& s) { s.CopyUntil("xyz", 'z'); }, "xy", kRebuilt, false},
        {__LINE__, [](Probe& s) { s.SetAt(0, 'x'); }, "xbc abc", kRebuilt, true},
        {__LINE__, [](Probe& s) { s.SetAt(9, 'x'); }, "abc abc", kRebuilt, true},
        {__LINE__, [](Probe& s) { s.ToUpper(); }, "ABC ABC", kRebuilt, true},
        {__LINE__, [](Probe& s) { s.ToLower(3); }, "abc abc", kRebuilt, true},
        {__LINE__, [](Probe& s) { s.Truncate(2); }, "ab", kRebuilt, true},
        {__LINE__, [](Probe& s) { s.Truncate(9); }, "abc abc", kStored, true},
        {__LINE__, [](Probe& s) { s.TruncateAt('b'); }, "a", kRebuilt, true},
        {__LINE__, [](Probe& s) { s.InsertAt(1, kPath); }, "adir\\file.txtbc abc", kRebuilt, true},
        {__LINE__, [](Probe& s) { s.RemoveAt(1, 2); }, "a abc", kRebuilt, true},
        {__LINE__, [](Probe& s) { s.Replace('a', 'x'); }, "xbc xbc", kRebuilt, true},
        {__LINE__, [](Probe& s) { s.Replace('x', 'y'); }, "abc abc", kRebuilt, true},
        {__LINE__, [](Probe& s) { s.Replace("ab", "12345678"); }, "12345678c 12345678c", kStored,
         false},
        {__LINE__, [](Probe& s) { s.Replace("bc", ""); }, "a a", kStored, false},
        {__LINE__, [](Probe& s) { s.Replace("abc abc", ""); }, "", kNothing, false},
        {__LINE__, [](Probe& s) { s.ExpandQuotes('a'); }, "aabc aabc", kStored, false},
        {__LINE__, [](Probe& s) { s.SubStr(4); }, "abc", kStored, false},
        {__LINE__, [](Probe& s) { s.SubStr(7); }, "", kNothing, false},
        {__LINE__, [](Probe& s) { kPath.SubStr(s, 1, 2); }, "ir", kNothing, false},
        {__LINE__, [](Probe& s) { kPath.LeftString(s, 2); }, "di", kRebuilt, false},
        {__LINE__, [](Probe& s) { kPath.LeftString(s, 99); }, kPath, kStored, false},
        {__LINE__, [](Probe& s) { kPath.RightString(s, 2); }, "xt", kNothing, false},
        {__LINE__, [](Probe& s) { kPath.LeftStringInBytes(s, 3); }, "dir", kStored, false},
        {__LINE__, [](Probe& s) { kPath.RightStringInBytes(s, 3); }, "txt", kStored, false},
        {__LINE__, [](Probe& s) { kOther.LeftRightTrim(s); }, "other text", kStored, false},
        {__LINE__, [](Probe& s) { kNone.RightTrim(s); }, "", kStored, false},
        {__LINE__, [](Probe& s) { kPath.SplitFilePath(s, ignored); }, "dir", kStored, false},
        {__LINE__, [](Probe& s) { kOther.SplitFilePath(s, ignored); }, "", kNothing, false},
        {__LINE__, [](Probe& s) { s.MakeFilePath("d", "f"); }, "d\\f", kStored, false},
        {__LINE__, [](Probe& s) { s.EncodeXMLString(); }, "abc abc", kStored, false},
        {__LINE__, [](Probe& s) { s.EncodeReplace("a", "&"); }, "&bc &bc", kStored, false},
        {__LINE__, [](Probe& s) { s.UrlDecode(); }, "abc abc", kStored, false},
        {__LINE__, [](Probe& s) { s.ClientFormat(); }, "abc abc", kStored, false},
        {__LINE__, [](Probe& s) { s.sprintf("%d", 7); }, "7", kStored, false},
    };
    for (const auto& row : rows)
        for (const unsigned room : {12u, 30u})
            for (const bool doubling : {false, true}) {
                SCOPED_TRACE(testing::Message() << row.line << ' ' << room << ' ' << doubling);
                Probe s("abc abc");
                s.AllocateBuffer(room, doubling);
                const unsigned before = s.m_capacity;
                row.operation(s);
                EXPECT_EQ(s.Bytes(), row.text);
                unsigned capacity = before;
                while (capacity <= s.m_length && s.m_length != before && doubling) capacity *= 2;
                if (!doubling && s.m_length > before) capacity = s.m_length;
                EXPECT_EQ(s.m_capacity, row.leaves == kStored ? capacity : s.m_length);
                EXPECT_EQ(s.m_flags, doubling && row.leaves != kNothing ? 1u : 0u);
                EXPECT_EQ(s.m_wide != nullptr, row.hasWide);
                ExpectSound(s);
            }
}

// -- Memory that runs out ------------------------------------------------------------------------

TEST(StringStorage, OutOfMemoryLeavesTheOldTextOrTheNew) {
    CodeSetGuard codeSet(mbShiftJis);
    static const Wide kWide[] = {'w', 0x3042, 0x0E01, 0};  // the last is not in the code set
    static const CGNString kOther("Other\x82\xA0");
    static const CGNString kCapital("O\\N\nD\x82\xA0"), kPadded("  a text with blanks  ");
    static const CGNString kPath("directory\\file.txt");
    static const CGNString kLong(std::string(100, 'o').c_str());
    using Operation = void (*)(Probe&);
    const Operation operations[] = {
        [](Probe& s) { s = kOther; },
        [](Probe& s) { s = "a longer text than before"; },
        [](Probe& s) { s += "more"; },
        [](Probe& s) { s += kWide; },
        [](Probe& s) { s += s; },
        [](Probe& s) { s.CopyNBytes("abcdefghijklmnop", 12); },
        [](Probe& s) { s.CopyNChars("a\x82\xA0\x82\xA0", 2); },
        [](Probe& s) { s.CopyNChars("a\x82", 2); },
        [](Probe& s) { s.CopyNChars(kWide, 3); },
        [](Probe& s) { s.AppendNChars("a\x82\xA0", 2); },
        [](Probe& s) { s.CopyUntil("key=value", "="); },
        [](Probe& s) { s.AppendUntil("key=value", '='); },
        [](Probe& s) { s.AllocateBuffer(200, 1); },
        [](Probe& s) { s.SetCodePageCharAt(0, "\x82\xA0"); },
        [](Probe& s) { s.IsEqualNoCase(kCapital); },
        [](Probe& s) { s.Collate(kCapital); },
        [](Probe& s) { s.SetAt(1, 'x'); },
        [](Probe& s) { s.TruncateAt('n'); },
        [](Probe& s) { s.ToLower(0); },
        [](Probe& s) { kPath.SubStr(s, 2, 5); },
        [](Probe& s) { kPath.LeftString(s, 3); },
        [](Probe& s) { kPath.LeftStringInBytes(s, 30); },
        [](Probe& s) { kPadded.RightTrimWithTab(s); },
        [](Probe& s) { s.Replace('d', 'e'); },
        [](Probe& s) { s.ExpandQuotes('d'); },
        [](Probe& s) { s.UnexpandQuotes('d'); },
        [](Probe& s) { s.ExpandSpecials(); },
        [](Probe& s) { s.EncodeHtmlString(); },
        [](Probe& s) { s.EncodeReplace("d", "\x95\x5C"); },
        [](Probe& s) { s.ConvertRomanjiToASCII(); },
        [](Probe& s) { s.ServerFormat(); },
        [](Probe& s) { s.CopyNChars("a\x82 \x82\xA0z", 4); },
        [](Probe& s) { s.InsertAt(1, "\x82"); },
        [](Probe& s) { s.Replace("d", "\x82"); },
        [](Probe& s) { s.InsertAt(1, kOther); },
        [](Probe& s) { s.InsertAt(1, s); },
        [](Probe& s) { s.RemoveAt(1, 2); },
        [](Probe& s) { s.ToUpper(-1); },
        [](Probe& s) { s.Truncate(2); },
        [](Probe& s) { s.SubStr(1, 2); },
        [](Probe& s) { s.RightString(s, 2); },
        [](Probe& s) { s.LeftStringInBytes(s, 4); },
        [](Probe& s) { s.RightStringInBytes(s, 4); },
        [](Probe& s) { kPadded.LeftRightTrim(s); },
        [](Probe& s) { s.Replace("d", "a longer text"); },
        [](Probe& s) { s.Replace(kLong, kLong), s.Find(kLong, 0), s.FindFirstOf(kLong, 0); },
        [](Probe& s) { s.UnexpandSpecials(); },
        [](Probe& s) { kPath.SplitFilePath(s, s); },
        [](Probe& s) {
            Probe file("f");
            s.SplitFileName(s, file);
        },
        [](Probe& s) { s.MakeFilePath(kPath, kOther); },
        [](Probe& s) { s.ForceTo8By3(); },
        [](Probe& s) { s.sprintf("%s %d", "formatted", 5); },
        [](Probe& s) { s.ReplaceEncodingStringInHTML("ja_JP"); },
        [](Probe& s) { OSClientFormatString(s); },
        [](Probe& s) { s.FoldCase(); },
        [](Probe& s) { s.Normalize(CGNString::kNormalFormKC); },
        [](Probe& s) { kOther.GetSortKey(s, CGNString::kIgnoreCase); },
        [](Probe& s) { s.Collate(kOther, CGNString::kIgnoreWidth); },
        [](Probe& s) { kOther.ToUtf8(s); },
        [](Probe& s) { s.FromUtf8("\xE3\x81\x82"); },
        [](Probe& s) { s.DecodeHtmlString(); },
        [](Probe& s) { s.UrlEncode(); },
        [](Probe& s) { s.EncodeJSONString(); },
        [](Probe& s) { s += std::string_view("more than there is room for"); },
        // What is made for these first may be empty.
        [](Probe& s) { s.ConvertSingleToDouble(); },
        [](Probe& s) { s = CGNString("text", 30); },
        [](Probe& s) { s = Probe(kWide); },
    };
    int neededByAll = 0;
    const Operation* const firstThatEmpties = std::end(operations) - 3;
    for (const Operation& operation : operations) {
        SCOPED_TRACE(&operation - operations);
        for (const char* text : {"o\\n\r\nd&lt;\x82\xA0", "o\\n\r\nd\x85\x40\x82\xA0\x82\x4F"}) {
            const Probe start(text);
            Probe done(start);
            int needed = 0;
            {
                const AllocationGate all(INT_MAX);
                operation(done);
                needed = all.Count();
            }
            neededByAll += needed;
            for (int failing = 0; failing < needed; ++failing) {
                SCOPED_TRACE(failing);
                Probe s(start);
                const ReportedFailures reported;
                {
                    const AllocationGate gate(failing, 1);
                    operation(s);
                }
                // A buffer that cannot be made smaller does no harm.
                EXPECT_TRUE(reported.Count() > 0 || s.Bytes() == done.Bytes());
                EXPECT_TRUE(s.Bytes() == start.Bytes() || s.Bytes() == done.Bytes() ||
                            (s.IsEmpty() && &operation >= firstThatEmpties))
                    << s.Bytes();
                ExpectSound(s);
                s = start;
                operation(s);
                EXPECT_EQ(s.Bytes(), done.Bytes());
                ExpectSound(s);
            }
        }
    }
    EXPECT_GT(neededByAll, 150);
}

TEST(StringStorage, ImpossibleSizesAreFailedAllocations) {
    Probe s("abc");
    const ReportedFailures reported;
    s.AllocateBuffer(0xFFFFFFFFu);
    s.CopyNBytes("x", 0xFFFFFFFFu);
    s.ReallocateToNumChars(0xFFFFFFFFu);
    EXPECT_EQ(reported.Count(), 3);
    EXPECT_STREQ(s, "abc");
    ExpectSound(s);
}

}  // namespace
