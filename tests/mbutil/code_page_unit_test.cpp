// The tables of the code sets: whole, by checksum, and the cells that converters disagree about.
#include <gtest/gtest.h>

#include <vector>

#include "genlist.h"
#include "genutil/mbutil/code_page.h"
#include "mbutil.h"
#include "tests/support/worker.h"

using namespace genutil;

namespace {

unsigned Sum(unsigned sum, const std::uint16_t* table, std::size_t count) {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(table);
    return table ? gencrc32(sum, bytes, static_cast<unsigned>(2 * count)) : sum;
}

unsigned ForwardSum(const CodePage& page) {
    return Sum(Sum(Sum(0, page.bytes, 256), page.pairs.get(), kPairTableSize), page.prefixed.get(),
               kPairTableSize);
}

unsigned BackSum(const CodePage& page) {
    std::vector<std::uint16_t> back;
    for (unsigned character = 0; character < 0x10000; ++character)
        back.push_back(static_cast<std::uint16_t>(page.Back(character)));
    return Sum(0, back.data(), back.size());
}

}  // namespace

// The sums were taken when each table was equal, cell by cell, to the published chart.
TEST(CodePage, TablesHaveThePublishedChecksums) {
    static constexpr struct {
        int codeSet;
        std::uint32_t forward, back;
    } kSums[] = {
        {0, 0x2caf49b0, 0x0b9619f7},  {1, 0xff028355, 0x9aec4f6a},  {2, 0xddee2ca2, 0x01d22811},
        {4, 0xd4661235, 0x360c74ca},  {5, 0xf0b7aa09, 0x908df030},  {6, 0x2caf49b0, 0x0b9619f7},
        {7, 0x5e406431, 0xbd651b12},  {8, 0x9f867b7c, 0xf052c4d9},  {9, 0x281723e0, 0x31b78291},
        {10, 0x10c79bed, 0x6e148f09}, {11, 0xe71ec36a, 0xc5237e88}, {12, 0x3cc151b6, 0xd2007f53},
        {13, 0xea66ab46, 0xad058d9a}, {14, 0x1b968dcc, 0xb1e67a3b}, {15, 0xc31431e7, 0x977b1f5e},
        {16, 0x1c047f21, 0xf64a836b}, {17, 0x069d3a82, 0x040b9d69}, {18, 0x9642a5a6, 0xbd7b3a58},
        {19, 0x7a122419, 0x89a38753}, {20, 0xea5f1f2e, 0xf25533e4}, {21, 0xee2d2c0a, 0x5e422f49},
        {22, 0xdfb92b5c, 0x2e5e5da7}, {23, 0x7fb42600, 0x687c5d53}, {24, 0x78fa817d, 0x0ce7be53},
        {25, 0xfbd840f0, 0x94080cab}, {26, 0x11bc4444, 0x7cbdf0bf}, {27, 0x7c34d17e, 0x7350d4c3},
        {28, 0x2bc54058, 0x678fb984}, {29, 0x7b305c74, 0xb9dbd927}, {30, 0xa8866618, 0x4e2a7403},
        {40, 0xb5b2ecb8, 0x776ff266},
    };
    for (const auto& row : kSums) {
        const CodePage* page = FindCodePage(row.codeSet);
        ASSERT_NE(page, nullptr) << row.codeSet;
        EXPECT_EQ(ForwardSum(*page), row.forward) << "code set " << row.codeSet;
        EXPECT_EQ(BackSum(*page), row.back) << "code set " << row.codeSet << ", way back";
    }
}

TEST(CodePage, UnknownCodeSetsAreWestern) {
    for (const int codeSet : {-1, 31, 39, 43, 63, 66, 1 << 30}) {
        EXPECT_EQ(FindCodePage(codeSet), FindCodePage(mbWestern)) << codeSet;
        EXPECT_EQ(FindListedCodePage(codeSet), nullptr) << codeSet;
    }
}

// This test program fills most tables before it gets here; the escape-driven ones it may not have.
TEST(CodePage, ThreadsShareOneTable) {
    const CodePage* found[4] = {};
    AtTheSameTime(4, [&](int i) { found[i] = FindCodePage(mbIso2022Kr); });
    for (const CodePage* page : found) EXPECT_EQ(page, FindCodePage(mbIso2022Kr));
}
