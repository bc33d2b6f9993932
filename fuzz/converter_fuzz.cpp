// Conversion in pieces: however a text is cut and however small the room, the result is that of one
// call. The first two bytes choose the code sets, the third the flags and the fourth the sizes; the
// rest is the text.
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "mbutil.h"

namespace {

struct Outcome {
    std::string text;
    std::vector<std::size_t> lostAt;
    std::size_t consumed = 0, lost = 0;
    bool operator==(const Outcome&) const = default;
};

// Pieces are of 1 to `most` bytes, or the whole text if that is 0.
struct Cutter {
    unsigned most, state;
    std::size_t Next(std::size_t left) {
        if (most == 0) return left;
        state = state * 1103515245 + 12345;
        return std::min<std::size_t>(left, 1 + (state >> 16) % most);
    }
};

Outcome Convert(mbConverter* converter, const std::string& text, Cutter cutter, std::size_t room) {
    Outcome outcome;
    std::vector<std::size_t> lostAt(8);
    mbConversion report = {lostAt.data(), lostAt.size(), 0, 0, 0};
    const char* src = text.data();
    for (std::size_t left = text.size(), last = 0; !last;) {
        std::size_t piece = cutter.Next(left);
        // An exact block, so that a sanitizer sees one byte too many.
        const std::vector<char> block(src, src + piece);
        src += piece;
        left -= piece;
        last = left == 0;
        const char* at = block.data();
        for (int result = mbNextFull, rounds = 0; result == mbNextFull; ++rounds) {
            std::vector<char> out(room);
            char* dst = out.data();
            std::size_t free = room;
            const char* const before = at;
            result = mbConvertNext(converter, &at, &piece, &dst, &free, last != 0, &report);
            outcome.text.append(out.data(), dst);
            Check(free == room - static_cast<std::size_t>(dst - out.data()), "room that is left");
            Check(result != mbNextFull || dst != out.data() || at != before, "progress");
            Check(result != mbNextFailed, "tables");
            if (result == mbNextLost) last = 1;
        }
    }
    outcome.lost = report.lost;
    outcome.consumed = report.consumed;
    lostAt.resize(std::min(report.lost, lostAt.size()));
    outcome.lostAt = lostAt;
    return outcome;
}

constexpr int kCodeSets[] = {0,  3,  4,  5,  7,  8,  9,  10,  11,  12,  13,  14,  17, 22,
                             23, 24, 40, 41, 42, 64, 65, 100, 103, 105, 111, 112, 113};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4) return 0;
    const int from = kCodeSets[data[0] % std::size(kCodeSets)];
    const int to = kCodeSets[data[1] % std::size(kCodeSets)];
    const unsigned flags = data[2] & 63u;
    const std::string text(reinterpret_cast<const char*>(data) + 4, size - 4);
    mbConverter* const converter = mbOpenConverter(from, to, flags);
    Check(converter != nullptr, "every pair of code sets");
    const std::size_t bound = 16 * text.size() + 64;
    const Outcome whole = Convert(converter, text, {0, 0}, bound);
    if ((flags & mbConvertStop) == 0) {
        for (const unsigned most : {1u, 2u, 3u, 1 + data[3] % 64u})
            for (const std::size_t room : {std::size_t{32}, std::size_t{32} + data[3] % 61, bound})
                Check(Convert(converter, text, {most, data[3]}, room) == whole, "pieces");
        Check(whole.consumed == text.size(), "all is consumed");
    }
    if (flags == 0) {
        std::vector<char> out(mbConvertBound(text.size(), from, to));
        std::vector<std::size_t> lostAt(8);
        mbConversion report = {lostAt.data(), lostAt.size(), 0, 0, 0};
        Check(mbConvert(text.data(), text.size(), from, out.data(), out.size(), to, &report) == 1,
              "one call");
        lostAt.resize(std::min(report.lost, lostAt.size()));
        Check(Outcome{std::string(out.data(), report.produced), lostAt, report.consumed,
                      report.lost} == whole,
              "one call converts alike");
    }
    mbCloseConverter(converter);
    return 0;
}
