// Runs a converter over a text in a block of its exact size, so that a sanitizer sees one byte too
// many.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "genutil/mbutil/transcode.h"

struct Converted {
    std::string text;
    std::string lostAt;  // source indexes: "0 3 "
    bool all;
    std::size_t consumed;
    bool operator==(const Converted&) const = default;
};

inline void PrintTo(const Converted& converted, std::ostream* out) {
    *out << testing::PrintToString(converted.text) << ", consumed " << converted.consumed
         << ", lost at " << converted.lostAt;
}

using AnyConverter = std::function<bool(genutil::Transfer&)>;

inline Converted RunConverter(const AnyConverter& convert, const std::string& text,
                              std::size_t room) {
    const std::vector<unsigned char> src(text.begin(), text.end());
    std::vector<unsigned char> dst(room);
    std::vector<std::size_t> positions(text.size());
    genutil::Transfer t{src.data(), src.data() + src.size(), dst.data(), dst.data() + room,
                        genutil::Losses(src.data(), positions.data(), positions.size())};
    const bool all = convert(t);
    EXPECT_EQ(all, t.src == t.srcEnd);
    EXPECT_LE(t.losses.Count(), positions.size());
    std::string lostAt;
    for (std::size_t i = 0; i < t.losses.Count(); ++i) lostAt += std::to_string(positions[i]) + ' ';
    return {std::string(dst.data(), t.dst), lostAt, all,
            static_cast<std::size_t>(t.src - src.data())};
}

// With room to spare.
inline Converted RunConverter(const AnyConverter& convert, const std::string& text) {
    return RunConverter(convert, text, text.size() * 10 + 16);
}

inline AnyConverter ThroughUnicode(int from, int to) {
    return [from, to](genutil::Transfer& t) {
        const bool all = genutil::ConvertThroughUnicode(t, from, to);
        EXPECT_NE(t.stop, genutil::Stop::kUnknown);
        return all;
    };
}

// The bytes of a character of two.
inline std::string Pair(unsigned code) {
    return {static_cast<char>(code >> 8), static_cast<char>(code)};
}

// A text and its conversion.
struct ConversionRow {
    int line, from, to;
    std::string text, expected, lostAt = "";
};

template <class Choose>
void ExpectRows(Choose choose, const std::vector<ConversionRow>& rows) {
    for (const ConversionRow& row : rows)
        EXPECT_EQ(RunConverter(choose(row.from, row.to), row.text),
                  (Converted{row.expected, row.lostAt, true, row.text.size()}))
            << "row of line " << row.line;
}
