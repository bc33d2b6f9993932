// Runs a converter over a text in memory of exactly the right size, so that a sanitizer sees one
// byte too many.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "genutil/mbutil/transcode.h"

struct Converted {
    std::string text;
    std::vector<std::size_t> lostAt;
    bool all;
    std::size_t consumed;
};

inline Converted RunConverter(genutil::Converter converter, const std::string& text,
                              std::size_t room) {
    const std::vector<unsigned char> src(text.begin(), text.end());
    std::vector<unsigned char> dst(room);
    std::vector<std::size_t> positions(text.size());
    genutil::Transfer t{src.data(), src.data() + src.size(), dst.data(), dst.data() + room,
                        genutil::Losses(src.data(), positions.data(), positions.size())};
    const bool all = converter(t);
    EXPECT_EQ(all, t.src == t.srcEnd);
    EXPECT_LE(t.losses.Count(), positions.size());
    positions.resize(t.losses.Count());
    return {std::string(dst.data(), t.dst), positions, all,
            static_cast<std::size_t>(t.src - src.data())};
}

// With room to spare.
inline Converted RunConverter(genutil::Converter converter, const std::string& text) {
    return RunConverter(converter, text, text.size() * 6 + 16);
}
