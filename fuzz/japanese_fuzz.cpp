// Japanese and Traditional Chinese among their encodings. The first byte chooses the pair, the rest
// is the text.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

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
    if (!mbConvert(text.data(), text.size(), from, out.data(), out.size(), to, done)) std::abort();
    if (done->consumed != text.size()) std::abort();
    return {out.data(), done->produced};
}

// All in three times the room, and nothing lost that ample room keeps.
void CheckTightRoom(const std::string& text, const Direction& direction) {
    const std::vector<char> src(text.c_str(), text.c_str() + std::strlen(text.c_str()) + 1);
    std::vector<char> dst(3 * (src.size() - 1) + 1);
    const std::string tight = convertStrExt(src.data(), direction.from, dst.data(), direction.to);
    mbConversion there, back, again;
    const std::string ample = Convert(src.data(), direction.from, direction.to, &there);
    if (there.lost == 0 && Convert(tight, direction.to, direction.from, &back) !=
                               Convert(ample, direction.to, direction.from, &again))
        std::abort();
}

// What survives the way there comes back the same from then on.
void CheckRoundTrip(const std::string& text, const Direction& direction) {
    mbConversion done;
    const std::string there = Convert(text, direction.from, direction.to, &done);
    const std::string back = Convert(there, direction.to, direction.from, &done);
    if (done.lost == 0 && Convert(back, direction.from, direction.to, &done) != there) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const Direction& direction = kDirections[data[0] % std::size(kDirections)];
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    CheckTightRoom(text, direction);
    CheckRoundTrip(text, direction);

    // A destination of any size holds a terminator, and the beginning of the text in whole
    // characters; JIS may leave out its last escape.
    std::vector<char> dst(1 + size * (data[0] >> 3) / 16);
    mbConversion part{}, same;
    mbConvert(text.data(), text.size(), direction.from, dst.data(), dst.size(), direction.to,
              &part);
    if (part.consumed > text.size() || part.produced >= dst.size() || dst[part.produced] != '\0')
        std::abort();
    if (direction.to == mbJis) return 0;
    const std::string begun(dst.data(), part.produced), taken = text.substr(0, part.consumed);
    if (Convert(taken, direction.from, direction.to, &same) != begun || same.lost != part.lost)
        std::abort();
    return 0;
}
