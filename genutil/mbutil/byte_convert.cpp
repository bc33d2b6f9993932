// Conversion byte by byte between the ISO 8859 and Windows forms of a text.
#include <bit>
#include <cstdint>

#include "genutil/mbutil/code_page.h"
#include "genutil/mbutil/transcode.h"
#include "genutil/simd.h"
#include "mbutil.h"

namespace genutil {

namespace {

// The counterpart of each byte, 0 if there is none, and the longest run of bytes at the same
// distance from their counterparts, which arithmetic can convert. In Cyrillic the letters are 0x10
// apart; half of the Latin letters are at the same place.
struct ByteMapping {
    std::uint8_t counterpart[256] = {};
    std::uint8_t first = 0xFF, last = 0xFF, distance = 0;
};

ByteMapping MakeMapping(int from, int to) {
    ByteMapping mapping;
    const CodePage* source = FindCodePage(from);
    const CodePage* target = FindCodePage(to);
    unsigned run = 0, longest = 0;
    std::uint8_t distance = 0;
    for (unsigned byte = 0; byte < 256; ++byte) {
        const unsigned character = byte < 0x80 || !source ? byte : source->bytes[byte];
        const unsigned other = byte < 0x80                            ? byte
                               : character == kNoCharacter || !target ? 0
                                                                      : target->Back(character);
        mapping.counterpart[byte] = static_cast<std::uint8_t>(other);
        const auto apart = static_cast<std::uint8_t>(other - byte);
        run = byte < 0x80 || other == 0 ? 0 : run > 0 && apart == distance ? run + 1 : 1;
        distance = apart;
        if (run <= longest) continue;
        longest = run;
        mapping.first = static_cast<std::uint8_t>(byte + 1 - run);
        mapping.last = static_cast<std::uint8_t>(byte);
        mapping.distance = distance;
    }
    return mapping;
}

void MapByte(Transfer& t, const ByteMapping& mapping, std::ptrdiff_t at) {
    const std::uint8_t other = mapping.counterpart[t.src[at]];
    if (other == 0 && t.src[at] != 0) t.losses.Add(t.src + at);
    t.dst[at] = other != 0 || t.src[at] == 0 ? other : '?';
}

// Converts 16 bytes: ASCII and the run by arithmetic, then the others one by one.
void MapBlock(Transfer& t, const ByteMapping& mapping) {
    using namespace simd;
    const Vector block = Load(t.src);
    const Vector clamped = Max8(Min8(block, Splat8(mapping.last)), Splat8(mapping.first));
    const Vector inRun = Equal8(clamped, block);
    Store(t.dst, Add8(block, inRun & Splat8(mapping.distance)));
    unsigned others = TopBits(AndNot(block, inRun));
    for (; others != 0; others &= others - 1) MapByte(t, mapping, std::countr_zero(others));
}

bool MapBytes(Transfer& t, const ByteMapping& mapping) {
    const std::ptrdiff_t left = t.srcEnd - t.src, room = t.dstEnd - t.dst;
    const unsigned char* const end = t.src + (left < room ? left : room);
    for (; end - t.src >= 16; t.src += 16, t.dst += 16) MapBlock(t, mapping);
    for (; t.src < end; ++t.src, ++t.dst) MapByte(t, mapping, 0);
    return t.src == t.srcEnd;
}

}  // namespace

bool Latin2ToWindows1250(Transfer& t) {
    static const ByteMapping mapping = MakeMapping(mb8859_2, mbWindows1250);
    return MapBytes(t, mapping);
}

bool Windows1250ToLatin2(Transfer& t) {
    static const ByteMapping mapping = MakeMapping(mbWindows1250, mb8859_2);
    return MapBytes(t, mapping);
}

bool Cyrillic8859ToWindows1251(Transfer& t) {
    static const ByteMapping mapping = MakeMapping(mb8859_5, mbWindows1251);
    return MapBytes(t, mapping);
}

bool Windows1251ToCyrillic8859(Transfer& t) {
    static const ByteMapping mapping = MakeMapping(mbWindows1251, mb8859_5);
    return MapBytes(t, mapping);
}

}  // namespace genutil
