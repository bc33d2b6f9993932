// Which Japanese encoding a text is in: what is decided, and where reading stops.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <utility>

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

Guess OfStream(const std::string& text) {
    const TemporaryFile file(text);
    const OpenFile stream(file.Path(), "rb");
    Guess guess{};
    guess.first = DetectJPCodeType(stream);
    guess.second = static_cast<std::size_t>(std::ftell(stream));
    return guess;
}

// The same decisions, byte by byte over a text in memory: slow and obvious.
Guess Slow(const std::string& text) {
    std::size_t at = 0;
    const auto next = [&] {
        return at < text.size() ? static_cast<unsigned char>(text[at++]) : -1;
    };
    const auto in = [](int c, int low, int high) { return low <= c && c <= high; };
    const auto shiftJis = [&](int c) { return in(c, 129, 141) || in(c, 143, 159); };
    int result = 0;
    while (result != 3 && result != 4 && result != 5) {
        const int c = next();
        if (c < 0) break;
        if (c == 27) {
            int d = next();
            if (d == 75) result = 3;
            if (d == 36) {
                d = next();
                if (d == 66 || d == 64) result = 3;
            }
        } else if (shiftJis(c)) {
            result = 5;
        } else if (c == 142) {
            const int d = next();
            if (in(d, 64, 126) || in(d, 128, 160) || in(d, 224, 252))
                result = 5;
            else if (in(d, 161, 223))
                result = 6;
        } else if (in(c, 161, 223)) {
            int d = next();
            if (in(d, 240, 254)) {
                result = 4;
            } else if (in(d, 161, 223)) {
                result = 6;
            } else if (in(d, 224, 239)) {
                result = 6;
                while (d >= 64 && result == 6) {
                    if (shiftJis(d)) result = 5;
                    if (d == 253 || d == 254) result = 4;
                    d = next();
                }
            } else if (d <= 159) {
                result = 5;
            }
        } else if (in(c, 240, 254)) {
            result = 4;
        } else if (in(c, 224, 239)) {
            const int d = next();
            if (in(d, 64, 126) || in(d, 128, 160))
                result = 5;
            else if (d == 253 || d == 254)
                result = 4;
            else if (in(d, 161, 252))
                result = 6;
        }
    }
    return {result, at};
}

// Both sides of every limit that decides something.
constexpr char kLimitBytes[] =
    "\x1B\n$@BK?a~\x7F\x80\x81\x8D\x8E\x8F\x9F\xA0\xA1\xDF\xE0\xEF\xF0\xFC\xFD\xFE\xFF";
const std::string kLimits(kLimitBytes, sizeof kLimitBytes);  // NUL with them

}  // namespace

TEST(DetectJapanese, DecidesAndStops) {
    using std::string_literals::operator""s;
    const struct {
        int line;
        std::string text;
        Guess expected;
    } kRows[] = {
        {__LINE__, "", {0, 0}},
        {__LINE__, "plain\0text, longer than sixteen bytes"s, {0, 37}},
        {__LINE__, "\x1B$B\x82\xA0", {3, 3}},
        {__LINE__, "\x1B\x1B$B", {0, 4}},  // the second escape is taken with the first
        {__LINE__, "\xA4\xA2\x82\xA0", {5, 3}},
        {__LINE__, "\xA4\xA2\xB1", {5, 3}},         // a lone byte at the end is katakana
        {__LINE__, "\xA4\xE2\xA4\x81xyz", {5, 5}},  // and the byte behind the one that decides
        {__LINE__, "\xA4\xE2\xA4\x1B$B", {6, 6}},   // the byte that ends the word is not looked at
        {__LINE__, "\xF0\xA1", {4, 1}},
        {__LINE__, "\xA4\xA2\xE0", {6, 3}},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        EXPECT_EQ(OfMemory(row.text), row.expected);
        EXPECT_EQ(OfStream(row.text), row.expected);
    }
    EXPECT_EQ(mbDetectJapanese(nullptr, 0, nullptr), 0);
}

TEST(DetectJapanese, BothFormsFollowTheSlowOne) {
    // All texts of up to four of the limits, on their own and behind some ASCII.
    std::string text;
    for (std::size_t length = 1; length <= 4; ++length) {
        std::size_t count = 1;
        for (std::size_t i = 0; i < length; ++i) count *= kLimits.size();
        for (std::size_t n = 0; n < count; ++n) {
            text.assign(n % 3 == 0 ? 17 : 0, ' ');
            for (std::size_t i = 0, rest = n; i < length; ++i, rest /= kLimits.size())
                text += kLimits[rest % kLimits.size()];
            ASSERT_EQ(OfMemory(text), Slow(text)) << ::testing::PrintToString(text);
        }
    }
    // Reading from a file is slower: a sample.
    for (unsigned n = 0; n < 1000; ++n) {
        text.clear();
        for (unsigned i = 0, rest = n * 2654435761u; i < 6; ++i, rest = rest / 27 + rest * 31)
            text += kLimits[rest % kLimits.size()];
        ASSERT_EQ(OfStream(text), Slow(text)) << ::testing::PrintToString(text);
    }
}

TEST(DetectJapanese, StreamIsReadFromWhereItStands) {
    const TemporaryFile file("\x82\xA0\x1B$Brest");
    const OpenFile stream(file.Path(), "rb");
    std::fseek(stream, 2, SEEK_SET);
    EXPECT_EQ(DetectJPCodeType(stream), mbJis);
    EXPECT_EQ(std::fgetc(stream), 'r');
}
