// Conversion between any two code sets, chosen by the first bytes: bounds, reports and round trips.
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "mbutil.h"

namespace {

constexpr int kCodeSets[] = {0,  1,  2,  3,  4,  5,  7,  8,  9,  10, 11, 12,  13,  14, 17,
                             19, 22, 23, 24, 27, 30, 40, 41, 42, 64, 65, 100, 101, 110};

int Choose(std::uint8_t byte) {
    return kCodeSets[byte % std::size(kCodeSets)];
}

struct Outcome {
    std::string text;
    std::size_t consumed;
    std::vector<std::size_t> lostAt;
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
    lostAt.resize(done.lost);
    return {std::string(dst.data(), done.produced), done.consumed, lostAt};
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

bool HasEscapes(int codeSet) {
    return codeSet == mbJis || codeSet == mbIso2022Cn || codeSet == mbIso2022Kr;
}

// A byte-order mark at the start of a piece would be dropped, or would change the byte order.
bool HasMark(const std::string& text, int codeSet) {
    for (const char* mark : {"\xFF\xFE", "\xFE\xFF"})
        if (codeSet == mbUtf16 && text.find(mark) != text.npos) return true;
    return codeSet == mbUtf8 && text.find("\xEF\xBB\xBF") != text.npos;
}

// With room for one character at a time, no fast loop runs. The result is the same.
void CheckFastLoops(const std::string& text, int from, int to) {
    if (HasEscapes(from) || HasEscapes(to) || HasMark(text, from)) return;
    const std::string begun = text.substr(0, 160);
    const Outcome whole = Convert(begun, from, to);
    std::string slow;
    std::size_t done = 0;
    std::vector<std::size_t> lostAt;
    while (done < begun.size()) {
        char out[8];
        mbConversion piece{};
        for (std::size_t room = 2; room <= sizeof out && piece.consumed == 0; ++room)
            mbConvert(begun.data() + done, begun.size() - done, from, out, room, to, &piece);
        Check(piece.consumed != 0, "room for one character");
        slow.append(out, piece.produced);
        if (piece.lost != 0) lostAt.push_back(done);
        done += piece.consumed;
    }
    Check(slow == whole.text && lostAt == whole.lostAt, "fast loops and single characters agree");
}

// The result in any room is the beginning of the text in whole characters.
void CheckSmallRoom(const std::vector<char>& text, int from, int to, std::size_t room) {
    const Outcome part = Convert(text.data(), text.size(), from, to, room);
    if (HasEscapes(from) || HasEscapes(to)) return;
    const Outcome same = Convert(std::string(text.data(), part.consumed), from, to);
    Check(part.text == same.text && part.lostAt == same.lostAt, "the beginning of the text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const int from = Choose(data[0]), to = Choose(data[1]);
    const std::vector<char> text(data + 3, data + size);
    const std::string whole(text.begin(), text.end());
    if (from == to) return 0;

    const Outcome there = Convert(whole, from, to);
    CheckSmallRoom(text, from, to, 2 + data[2] % 64u);
    CheckFastLoops(whole, from, to);

    // The result is valid, except where unknown codes are converted by row and cell. A round trip
    // through Unicode preserves it, except that a character may get another one of its codes.
    for (const int unicode : {64, 65}) {
        if (to == 64 || to == 65) continue;
        const Outcome across = Convert(there.text, to, unicode);
        Check(across.lostAt.empty() || AreRelated(from, to), "what was written is valid");
        if (!across.lostAt.empty()) continue;
        const Outcome back = Convert(across.text, unicode, to);
        Check(back.lostAt.empty(), "what came from a code set goes back to it");
        Check(Convert(back.text, to, unicode).text == across.text, "what was written survives");
    }
    return 0;
}
