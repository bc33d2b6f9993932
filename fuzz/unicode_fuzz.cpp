// Conversion between any two code sets, chosen by the first bytes: bounds, reports and round trips.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "mbutil.h"

namespace {

constexpr int kCodeSets[] = {0,  1,  2,  3,  4,  5,  7,  8,  9,  10, 11, 12, 13,
                             14, 17, 19, 22, 23, 24, 27, 30, 40, 41, 42, 64, 65};

int Choose(std::uint8_t byte) {
    return kCodeSets[byte % std::size(kCodeSets)];
}

void Check(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

struct Outcome {
    std::string text;
    std::size_t consumed, lost;
};

Outcome Convert(const char* text, std::size_t length, int from, int to, std::size_t size) {
    std::vector<char> dst(size);
    std::vector<std::size_t> lostAt(length);
    mbConversion done = {lostAt.data(), lostAt.size(), 0, 0, 0};
    const int all = mbConvert(text, length, from, dst.data(), dst.size(), to, &done);
    Check(done.consumed <= length, "no more is consumed than there is");
    Check(!all || done.consumed == length, "success consumes all");
    Check(done.produced < size, "a terminator fits");
    Check(done.lost <= done.consumed, "no more is lost than there is");
    for (std::size_t i = 0; i < done.lost; ++i) {
        Check(lostAt[i] < done.consumed, "what is lost lies in what was consumed");
        Check(i == 0 || lostAt[i - 1] < lostAt[i], "losses are in order");
    }
    return {std::string(dst.data(), done.produced), done.consumed, done.lost};
}

Outcome Convert(const std::string& text, int from, int to) {
    const Outcome outcome =
        Convert(text.data(), text.size(), from, to, mbConvertBound(text.size(), from, to));
    Check(outcome.consumed == text.size(), "the bound is always enough");
    return outcome;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const int from = Choose(data[0]), to = Choose(data[1]);
    const std::vector<char> text(data + 3, data + size);
    const std::string whole(text.begin(), text.end());
    if (from == to) return 0;

    const Outcome there = Convert(whole, from, to);
    Convert(text.data(), text.size(), from, to, 2 + data[2] % 64u);

    // Text that came out of a conversion is valid, so Unicode carries it there and back.
    for (const int unicode : {64, 65}) {
        if (to == unicode) continue;
        const Outcome across = Convert(there.text, to, unicode);
        if (to == 64 || to == 65) continue;
        Check(across.lost == 0, "what was written is valid");
        const Outcome back = Convert(across.text, unicode, to);
        Check(back.lost == 0 && back.text == there.text, "what was written survives Unicode");
    }
    return 0;
}
