// Detection of Japanese encodings. fuzz/detect_fuzz.cpp compares memory with streams.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "genlist.h"
#include "mbutil.h"
#include "tests/support/temporary_file.h"

namespace {

using Guess = std::pair<int, std::size_t>;  // the result, and the bytes consumed

Guess OfMemory(const std::string& text) {
    Guess guess{};
    const std::string exact(text);
    guess.first = mbDetectJapanese(exact.data(), exact.size(), &guess.second);
    return guess;
}

// Both sides of every limit that decides something.
constexpr char kLimitBytes[] =
    "\x1B\n$@BK?a~\x7F\x80\x81\x8D\x8E\x8F\x9F\xA0\xA1\xDF\xE0\xEF\xF0\xFC\xFD\xFE\xFF";
const std::string kLimits(kLimitBytes, sizeof kLimitBytes);  // NUL with them

}  // namespace

TEST(DetectJapanese, StopsAtTheDecidingByte) {
    using std::string_literals::operator""s;
    const struct {
        int line;
        std::string text;
        int result;
        std::size_t consumed;
    } kRows[] = {
        {__LINE__, "", 0, 0},
        {__LINE__, "plain\0text, longer than sixteen bytes"s, 0, 37},
        {__LINE__, "\x1B$B\x82\xA0", 3, 3},
        {__LINE__, "\x1B\x1B$B", 0, 4},  // the second escape is taken with the first
        {__LINE__, "\xA4\xA2\x82\xA0", 5, 3},
        {__LINE__, "\xA4\xA2\xB1", 5, 3},         // a lone byte at the end is katakana
        {__LINE__, "\xA4\xE2\xA4\x81xyz", 5, 5},  // with the byte after the one that decides
        {__LINE__, "\xA4\xE2\xA4\x1B$B", 6, 6},   // the byte that ends the word is not examined
        {__LINE__, "\xF0\xA1", 4, 1},
        {__LINE__, "\xA4\xA2\xE0", 6, 3},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(OfMemory(row.text), Guess(row.result, row.consumed)) << row.line;
    EXPECT_EQ(mbDetectJapanese(nullptr, 0, nullptr), 0);
}

// All texts of up to four of the limits, alone and after some ASCII: a checksum for each first
// byte, taken when every result agreed with a second implementation.
TEST(DetectJapanese, ResultsOfAllLimitsHaveTheirChecksums) {
    static constexpr unsigned kSums[] = {
        0x30675a30, 0xc408c3a0, 0xc408c3a0, 0xa6c97f03, 0xc408c3a0, 0xc408c3a0, 0xa6c97f03,
        0xc408c3a0, 0xc408c3a0, 0xa6c97f03, 0xc408c3a0, 0xce15a48b, 0xa23f9817, 0x691d1248,
        0xce15a48b, 0xa23f9817, 0xc408c3a0, 0x32fe15a1, 0x03c1d8a0, 0x59f6d6ef, 0x59f6d6ef,
        0x06453b73, 0x6a6f07ef, 0x6a6f07ef, 0x06453b73, 0xc408c3a0, 0xc408c3a0};
    std::vector<unsigned char> results[std::size(kLimitBytes)];
    std::string text;
    for (std::size_t length = 1, count = 1; length <= 4; ++length) {
        count *= kLimits.size();
        for (std::size_t n = 0; n < count; ++n) {
            text.assign(n % 3 == 0 ? 17 : 0, ' ');
            for (std::size_t i = 0, rest = n; i < length; ++i, rest /= kLimits.size())
                text += kLimits[rest % kLimits.size()];
            const Guess guess = OfMemory(text);
            results[n % kLimits.size()].push_back(static_cast<unsigned char>(guess.first));
            results[n % kLimits.size()].push_back(static_cast<unsigned char>(guess.second));
        }
    }
    for (std::size_t i = 0; i < kLimits.size(); ++i)
        EXPECT_EQ(gencrc32(0, results[i].data(), static_cast<unsigned>(results[i].size())),
                  kSums[i])
            << i;
}

TEST(DetectJapanese, ReadsAStreamFromItsPosition) {
    const TemporaryFile file("\x82\xA0\x1B$Brest");
    const OpenFile stream(file.Path(), "rb");
    std::fseek(stream, 2, SEEK_SET);
    EXPECT_EQ(DetectJPCodeType(stream), mbJis);
    EXPECT_EQ(std::fgetc(stream), 'r');
}
