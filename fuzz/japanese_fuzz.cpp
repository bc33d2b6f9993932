// Conversion between encodings of Japanese and of Traditional Chinese. The first byte chooses the
// pair, the rest is the text.
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "mbutil.h"

namespace {

struct Direction {
    int from, to;
};
constexpr Direction kDirections[] = {
    {mbJis, mbShiftJis},   {mbJis, mbEucJp},    {mbEucJp, mbShiftJis}, {mbEucJp, mbJis},
    {mbShiftJis, mbEucJp}, {mbShiftJis, mbJis}, {mbBig5, mbEucTw},     {mbEucTw, mbBig5}};

std::string Convert(const std::string& text, int from, int to, mbConversion* done) {
    std::vector<char> out(mbConvertBound(text.size(), from, to));
    *done = {};
    Check(mbConvert(text.data(), text.size(), from, out.data(), out.size(), to, done) &&
              done->consumed == text.size(),
          "the bound is always enough");
    return {out.data(), done->produced};
}

// A buffer of three times the length is sufficient, and causes no more losses than a large one.
void CheckTightRoom(const std::string& text, const Direction& direction) {
    const std::vector<char> src(text.c_str(), text.c_str() + std::strlen(text.c_str()) + 1);
    std::vector<char> dst(3 * (src.size() - 1) + 1);
    const std::string tight = convertStrExt(src.data(), direction.from, dst.data(), direction.to);
    mbConversion there, back, again;
    const std::string ample = Convert(src.data(), direction.from, direction.to, &there);
    Check(there.lost != 0 || Convert(tight, direction.to, direction.from, &back) ==
                                 Convert(ample, direction.to, direction.from, &again),
          "three times the room is enough");
}

// A lossless conversion is reversible.
void CheckRoundTrip(const std::string& text, const Direction& direction) {
    mbConversion done;
    const std::string there = Convert(text, direction.from, direction.to, &done);
    const std::string back = Convert(there, direction.to, direction.from, &done);
    Check(done.lost != 0 || Convert(back, direction.from, direction.to, &done) == there,
          "what survives comes back");
}

// With room for one character at a time, no fast loop runs. The result is the same.
void CheckFastLoops(const std::string& text, const Direction& direction) {
    if (direction.from == mbJis || direction.to == mbJis)
        return;  // characters depend on escape
                 // sequences
    mbConversion whole;
    const std::string expected = Convert(text, direction.from, direction.to, &whole);
    std::string slow;
    std::size_t done = 0, lost = 0;
    while (done < text.size()) {
        char out[6];
        mbConversion piece{};
        for (std::size_t room = 2; room <= sizeof out && piece.consumed == 0; ++room)
            mbConvert(text.data() + done, text.size() - done, direction.from, out, room,
                      direction.to, &piece);
        Check(piece.consumed != 0, "room for one character");
        slow.append(out, piece.produced);
        done += piece.consumed;
        lost += piece.lost;
    }
    Check(slow == expected && lost == whole.lost, "fast loops and single characters agree");
}

// A destination of any size receives whole characters. JIS may omit its last escape sequence only
// at the end.
void CheckSmallRoom(const std::string& text, const Direction& direction, std::size_t room) {
    std::vector<char> dst(room);
    mbConversion part{}, same;
    const bool all = mbConvert(text.data(), text.size(), direction.from, dst.data(), dst.size(),
                               direction.to, &part) != 0;
    Check(part.consumed <= text.size() && part.produced < dst.size(), "no more than there is");
    Check(dst[part.produced] == '\0', "a terminator");
    const std::string begun(dst.data(), part.produced), taken = text.substr(0, part.consumed);
    const std::string expected = Convert(taken, direction.from, direction.to, &same);
    if (direction.to != mbJis) {
        Check(begun == expected && same.lost == part.lost, "the beginning of the text");
        return;
    }
    if (text.find('\x1B') != text.npos)
        return;  // the bytes after an escape byte determine its
                 // meaning
    for (const char* more : {"", "a"}) {
        if (*more && all) continue;
        mbConversion ignored;
        Check(Convert(begun + more, mbJis, direction.from, &ignored) ==
                  Convert(expected + more, mbJis, direction.from, &ignored),
              "JIS ends in ASCII");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const Direction& direction = kDirections[data[0] % std::size(kDirections)];
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    CheckTightRoom(text, direction);
    CheckRoundTrip(text, direction);
    CheckFastLoops(text, direction);
    for (const std::size_t part : {data[0] >> 3, data[size - 1] & 31})
        CheckSmallRoom(text, direction, 1 + size * part / 16);
    return 0;
}
