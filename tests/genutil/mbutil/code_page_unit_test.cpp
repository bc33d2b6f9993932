// The tables of the code sets: whole, by checksum, and the cells that converters disagree about.
#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "genutil/mbutil/code_page.h"
#include "mbutil.h"

using namespace genutil;

namespace {

// FNV-1a over 16-bit values, low byte first.
class Checksum {
  public:
    void Add(unsigned value) {
        for (const unsigned byte : {value & 0xFF, value >> 8}) m_sum = (m_sum ^ byte) * 16777619u;
    }
    void AddTable(const std::uint16_t* table) {
        for (std::size_t i = 0; table && i < kPairTableSize; ++i) Add(table[i]);
    }
    std::uint32_t Sum() const { return m_sum; }

  private:
    std::uint32_t m_sum = 2166136261u;
};

std::uint32_t ForwardSum(const CodePage& page) {
    Checksum sum;
    for (const std::uint16_t character : page.bytes) sum.Add(character);
    sum.AddTable(page.pairs.get());
    sum.AddTable(page.prefixed.get());
    return sum.Sum();
}

std::uint32_t BackSum(const CodePage& page) {
    Checksum sum;
    for (unsigned character = 0; character < 0x10000; ++character) sum.Add(page.Back(character));
    return sum.Sum();
}

constexpr unsigned kNone = kNoCharacter;

struct CellRow {
    int line;
    int codeSet;
    unsigned code;  // one or two bytes; three or four with their prefix's lead as they are read
    unsigned character;  // kNone: the code has none
    unsigned back;       // the code that the character gets; 0: none
};

unsigned Forward(const CodePage& page, unsigned code) {
    if (code < 0x100) return page.bytes[code];
    return page.pairs[CodePage::PairIndex(code >> 8, code & 0xFF)];
}

}  // namespace

// The sums were taken when each table was equal, cell by cell, to the published chart.
TEST(CodePage, WholeTablesAreThePublishedOnes) {
    static constexpr struct {
        int codeSet;
        std::uint32_t forward, back;
    } kSums[] = {
        {0, 0x27509e00, 0xcbaf06f5},  {1, 0x3320c1c5, 0x004e59c5},  {2, 0xed813380, 0xbb93d725},
        {4, 0x377ba03b, 0x95c1de1f},  {5, 0x68b64d61, 0x08eff87f},  {6, 0x27509e00, 0xcbaf06f5},
        {7, 0x2a0128c4, 0x9f3714c6},  {8, 0x5daeea24, 0xa2f46ce1},  {9, 0xe69f20fa, 0xb947fe57},
        {10, 0x8830e7c7, 0xd382e933}, {11, 0x2e2e0ca9, 0xaeb1ec97}, {12, 0x63a30298, 0x38b5adfa},
        {13, 0x799bbf44, 0x4fd502b7}, {14, 0x2a1501f2, 0x3489ad5d}, {15, 0xe0ec2a91, 0xa3c0d600},
        {16, 0xedbb5b8c, 0xa82414b5}, {17, 0xf1fe7d6a, 0x7e3d3115}, {18, 0xc7bbfdba, 0x56271694},
        {19, 0x74399d06, 0xf3030026}, {20, 0x7fb8e909, 0x06eebd0c}, {21, 0x840dec2c, 0x56fadd0d},
        {22, 0xb889462b, 0x6256de7d}, {23, 0x9ee33060, 0xc7db0b15}, {24, 0xe61d8b9f, 0xa316181d},
        {25, 0x3213bb75, 0xed66c12d}, {26, 0x4ec1689e, 0x581a10fd}, {27, 0x5d28d5a8, 0x941b2b25},
        {28, 0xebeb1568, 0xdfda17cd}, {29, 0x76f193bc, 0x54495e0d}, {30, 0xeee99d3a, 0xc9db4c6d},
        {40, 0x2e0fdf85, 0xa2e62ded},
    };
    for (const auto& row : kSums) {
        const CodePage* page = FindCodePage(row.codeSet);
        ASSERT_NE(page, nullptr) << row.codeSet;
        EXPECT_EQ(ForwardSum(*page), row.forward) << "code set " << row.codeSet;
        EXPECT_EQ(BackSum(*page), row.back) << "code set " << row.codeSet << ", way back";
    }
}

TEST(CodePage, DisputedCells) {
    static constexpr CellRow kRows[] = {
        // Shift-JIS: ASCII stays ASCII, the wide dash and tilde are Windows', open bytes are
        // private.
        {__LINE__, mbShiftJis, 0x5C, 0x005C, 0x5C},
        {__LINE__, mbShiftJis, 0x7E, 0x007E, 0x7E},
        {__LINE__, mbShiftJis, 0x7F, 0x007F, 0x7F},
        {__LINE__, mbShiftJis, 0x80, 0x0080, 0x80},
        {__LINE__, mbShiftJis, 0xA0, 0xF8F0, 0xA0},
        {__LINE__, mbShiftJis, 0xFF, 0xF8F3, 0xFF},
        {__LINE__, mbShiftJis, 0x8160, 0xFF5E, 0x8160},
        {__LINE__, mbShiftJis, 0x817C, 0xFF0D, 0x817C},
        {__LINE__, mbShiftJis, 0xF040, 0xE000, 0xF040},
        {__LINE__, mbShiftJis, 0xF9FC, 0xE757, 0xF9FC},
        {__LINE__, mbShiftJis, 0x81AD, kNone, 0},
        // Of doubles: row 2 before row 13, row 13 before the extension, that before the selected.
        {__LINE__, mbShiftJis, 0x81CA, 0xFFE2, 0x81CA},
        {__LINE__, mbShiftJis, 0xFA54, 0xFFE2, 0x81CA},
        {__LINE__, mbShiftJis, 0xEEF9, 0xFFE2, 0x81CA},
        {__LINE__, mbShiftJis, 0x879A, 0x2235, 0x81E6},
        {__LINE__, mbShiftJis, 0x879C, 0x222A, 0x81BE},
        {__LINE__, mbShiftJis, 0xFA4A, 0x2160, 0x8754},
        {__LINE__, mbShiftJis, 0xFA58, 0x3231, 0x878A},
        {__LINE__, mbShiftJis, 0xED40, 0x7E8A, 0xFA5C},
        {__LINE__, mbShiftJis, 0xEEEF, 0x2170, 0xFA40},
        // The other Windows pages.
        {__LINE__, mbGb2312, 0x80, 0x20AC, 0x80},
        {__LINE__, mbGb2312, 0xA1A4, 0x00B7, 0xA1A4},
        {__LINE__, mbGb2312, 0xA1AA, 0x2014, 0xA1AA},
        {__LINE__, mbGb2312, 0xAAA1, 0xE000, 0xAAA1},
        {__LINE__, mbEucCn, 0x80, kNone, 0},
        {__LINE__, mbEucCn, 0x8140, kNone, 0},
        {__LINE__, mbEucCn, 0xB0A1, 0x554A, 0xB0A1},
        {__LINE__, mbBig5, 0xA145, 0x2027, 0xA145},
        {__LINE__, mbBig5, 0xA2CC, 0x5341, 0xA451},
        {__LINE__, mbBig5, 0xA2A4, 0x2550, 0xF9F9},
        {__LINE__, mbBig5, 0xF9FA, 0x256D, 0xA27E},
        {__LINE__, mbKorean, 0xB0A1, 0xAC00, 0xB0A1},
        {__LINE__, mbKorean, 0x8141, 0xAC02, 0x8141},
        {__LINE__, mbEucKr, 0x8141, kNone, 0},
        {__LINE__, mbJohab, 0x8861, 0xAC00, 0x8861},
        {__LINE__, mbJohab, 0xD3BD, 0xD7A3, 0xD3BD},
        {__LINE__, mbJohab, 0x8841, 0x1100, 0x8841},
        {__LINE__, mbJohab, 0xD931, 0x3000, 0xD931},
        {__LINE__, mbJohab, 0xE031, 0x4F3D, 0xE031},
        {__LINE__, mbWestern, 0x81, 0x0081, 0x81},
        {__LINE__, mbWestern, 0x80, 0x20AC, 0x80},
        {__LINE__, mbWindows1253, 0xAA, 0xF8F9, 0xAA},
        {__LINE__, mbWindows1255, 0xCA, 0x05BA, 0xCA},
        {__LINE__, mbWindows874, 0xDB, 0xF8C1, 0xDB},
        // ISO charts: open cells stay open.
        {__LINE__, mb8859_7, 0xA4, 0x20AC, 0xA4},
        {__LINE__, mb8859_7, 0xAE, kNone, 0},
        {__LINE__, mb8859_8, 0xFE, 0x200F, 0xFE},
        {__LINE__, mb8859_10, 0xFF, 0x0138, 0xFF},
        // EUC forms of other charts.
        {__LINE__, mbEucJp, 0xA1C1, 0xFF5E, 0xA1C1},
        {__LINE__, mbEucJp, 0xADA1, 0x2460, 0xADA1},
        {__LINE__, mbEucJp, 0x8EB1, 0xFF71, 0x8EB1},
        {__LINE__, mbEucJp, 0x8EE0, kNone, 0},
        {__LINE__, mbEucTw, 0xC4A1, 0x4E00, 0xC4A1},
        {__LINE__, mbEucTw, 0xA6A1, 0x2460, 0xA6A1},
    };
    for (const CellRow& row : kRows) {
        const CodePage& page = *FindCodePage(row.codeSet);
        EXPECT_EQ(Forward(page, row.code), row.character) << "row of line " << row.line;
        if (row.character == kNone) continue;
        EXPECT_EQ(page.Back(row.character), row.back) << "row of line " << row.line;
    }
}

// One character, two published codes in Unicode: text from either kind of system converts.
TEST(CodePage, JisVariantsConvertBack) {
    static constexpr struct {
        unsigned character, shiftJis, eucJp;
    } kRows[] = {{0x301C, 0x8160, 0xA1C1}, {0x2016, 0x8161, 0xA1C2}, {0x2212, 0x817C, 0xA1DD},
                 {0x2014, 0x815C, 0xA1BD}, {0x00A2, 0x8191, 0xA1F1}, {0x00A3, 0x8192, 0xA1F2},
                 {0x00AC, 0x81CA, 0xA2CC}};
    for (const auto& row : kRows) {
        EXPECT_EQ(FindCodePage(mbShiftJis)->Back(row.character), row.shiftJis);
        EXPECT_EQ(FindCodePage(mbEucJp)->Back(row.character), row.eucJp);
    }
    for (const unsigned lookAlike : {0x00A5u, 0x00A9u, 0x00C0u, 0x203Eu})
        EXPECT_EQ(FindCodePage(mbShiftJis)->Back(lookAlike), 0u) << lookAlike;
}

TEST(CodePage, EveryCharacterHasACodeThatReadsAsIt) {
    for (int codeSet = 0; codeSet <= mbWindows874; ++codeSet) {
        const CodePage& page = *FindCodePage(codeSet);
        if (page.base) continue;
        unsigned faults = 0;
        const auto check = [&](unsigned character) {
            if (character == kNoCharacter || character == 0) return;
            const unsigned cell = page.Back(character);
            const bool isPrefixed = cell >= 0x100 && cell < kLowestPairCell;
            const unsigned again =
                cell == 0    ? kNone
                : isPrefixed ? page.prefixed[CodePage::PairIndex(cell >> 8 | 0x80, cell & 0xFF)]
                             : Forward(page, cell);
            faults += again != character;
        };
        for (const std::uint16_t character : page.bytes) check(character);
        for (const auto* table : {page.pairs.get(), page.prefixed.get()})
            for (std::size_t i = 0; table && i < kPairTableSize; ++i) check(table[i]);
        EXPECT_EQ(faults, 0u) << "code set " << codeSet;
        for (unsigned byte = 0; byte < 0x80; ++byte) EXPECT_EQ(page.bytes[byte], byte) << codeSet;
    }
}

TEST(CodePage, UnlistedNumbersAreWestern) {
    for (const int codeSet : {-1, 31, 39, 43, 63, 66, 1 << 30}) {
        EXPECT_EQ(FindCodePage(codeSet), FindCodePage(mbWestern)) << codeSet;
        EXPECT_EQ(FindListedCodePage(codeSet), nullptr) << codeSet;
    }
}

// This test program fills most tables before it gets here; the escape-driven ones it may not have.
TEST(CodePage, ThreadsAgreeOnOneTable) {
    std::vector<const CodePage*> found(4);
    std::vector<std::thread> threads;
    for (const CodePage*& page : found)
        threads.emplace_back([&page] { page = FindCodePage(mbIso2022Kr); });
    for (std::thread& thread : threads) thread.join();
    for (const CodePage* page : found) EXPECT_EQ(page, FindCodePage(mbIso2022Kr));
}
