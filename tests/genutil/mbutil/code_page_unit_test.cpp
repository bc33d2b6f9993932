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
