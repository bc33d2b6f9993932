// Conversion between any two code sets, chosen by the first bytes: bounds, reports and round trips.
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "mbutil.h"

namespace {

constexpr int kCodeSets[] = {0,  1,  2,  3,  4,  5,  7,  8,  9,  10, 11, 12, 13,
                             14, 17, 19, 22, 23, 24, 27, 30, 40, 41, 42, 64, 65};

int Choose(std::uint8_t byte) {
    return kCodeSets[byte % std::size(kCodeSets)];
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

bool AreRelated(int a, int b) {
    const auto isJapanese = [](int codeSet) { return codeSet >= mbJis && codeSet <= mbShiftJis; };
    const auto isBig = [](int codeSet) { return codeSet == mbBig5 || codeSet == mbEucTw; };
    return (isJapanese(a) && isJapanese(b)) || (isBig(a) && isBig(b));
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

    // What is written is valid, but where codes are moved by row and cell, known or not; and
    // Unicode carries it there and back, if to another code of the same character.
    for (const int unicode : {64, 65}) {
        if (to == 64 || to == 65) continue;
        const Outcome across = Convert(there.text, to, unicode);
        Check(across.lost == 0 || AreRelated(from, to), "what was written is valid");
        if (across.lost != 0) continue;
        const Outcome back = Convert(across.text, unicode, to);
        Check(back.lost == 0, "what came from a code set goes back to it");
        Check(Convert(back.text, to, unicode).text == across.text, "what was written survives");
    }
    return 0;
}
