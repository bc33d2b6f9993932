// Conversion byte by byte between the ISO 8859 and Windows forms of a text.
#include <atomic>
#include <bit>
#include <cstdint>
#include <mutex>

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

// Returns false if a code set has no tables for lack of memory.
bool MakeMapping(int from, int to, ByteMapping& mapping) {
    const CodePage* source = FindCodePage(from);
    const CodePage* target = FindCodePage(to);
    if (!source || !target) return false;
    mapping = {};
    unsigned run = 0, longest = 0;
    std::uint8_t distance = 0;
    for (unsigned byte = 0; byte < 256; ++byte) {
        const unsigned character = source->bytes[byte];
        const unsigned other = byte < 0x80                 ? byte
                               : character == kNoCharacter ? 0
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
    return true;
}

// A mapping that is filled at the first use. If that fails, the next use tries again.
class LateMapping {
  public:
    constexpr LateMapping(int from, int to) : m_from(from), m_to(to) {}
    const ByteMapping* Get() {
        if (m_filled.load(std::memory_order_acquire)) return &m_mapping;
        const std::lock_guard<std::mutex> guard(m_filling);
        if (!m_filled.load(std::memory_order_relaxed)) {
            if (!MakeMapping(m_from, m_to, m_mapping)) return nullptr;
            m_filled.store(true, std::memory_order_release);
        }
        return &m_mapping;
    }

  private:
    const int m_from, m_to;
    ByteMapping m_mapping;
    std::mutex m_filling;
    std::atomic<bool> m_filled{false};
};

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

// Converts byte by byte up to the first one without a counterpart.
Stop MapUntilLoss(Transfer& t, const ByteMapping& mapping, const unsigned char* end) {
    for (; t.src < end; ++t.src, ++t.dst) {
        const std::uint8_t other = mapping.counterpart[*t.src];
        if (other == 0 && *t.src != 0) {
            t.lossLength = 1;
            return Stop::kBad;
        }
        *t.dst = other;
    }
    return Stop::kDone;
}

bool MapBytes(Transfer& t, LateMapping& late) {
    const ByteMapping* mapping = late.Get();
    t.stop = Stop::kUnknown;
    if (!mapping) return false;
    const std::ptrdiff_t left = t.srcEnd - t.src, room = t.dstEnd - t.dst;
    const unsigned char* const end = t.src + (left < room ? left : room);
    t.stop = Stop::kDone;
    if (t.stopsAtLoss) {
        t.stop = MapUntilLoss(t, *mapping, end);
    } else {
        for (; end - t.src >= 16; t.src += 16, t.dst += 16) MapBlock(t, *mapping);
        for (; t.src < end; ++t.src, ++t.dst) MapByte(t, *mapping, 0);
    }
    if (t.stop == Stop::kDone && t.src != t.srcEnd) t.stop = Stop::kFull;
    return t.stop == Stop::kDone;
}

}  // namespace

bool Latin2ToWindows1250(Transfer& t) {
    static LateMapping mapping(mb8859_2, mbWindows1250);
    return MapBytes(t, mapping);
}

bool Windows1250ToLatin2(Transfer& t) {
    static LateMapping mapping(mbWindows1250, mb8859_2);
    return MapBytes(t, mapping);
}

bool Cyrillic8859ToWindows1251(Transfer& t) {
    static LateMapping mapping(mb8859_5, mbWindows1251);
    return MapBytes(t, mapping);
}

bool Windows1251ToCyrillic8859(Transfer& t) {
    static LateMapping mapping(mbWindows1251, mb8859_5);
    return MapBytes(t, mapping);
}

}  // namespace genutil
