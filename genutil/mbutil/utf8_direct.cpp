#include "genutil/mbutil/utf8_direct.h"

#include "genutil/mbutil/ascii_units.h"
#include "genutil/mbutil/code_read.h"

namespace genutil {

namespace {

template <bool kBlocks>
inline void PassAscii(const unsigned char*& p, unsigned char*& o, const unsigned char* safe) {
    unsigned n = 1;
    if (kBlocks)
        n = CopyAscii(p, o);
    else if (safe - p >= 8)
        n = CopyAscii8(p, o);
    else
        *o = *p;
    p += n;
    o += n;
}

Stop Put(const unsigned char* bytes, unsigned length, unsigned srcLength, Source& src, Sink& dst) {
    if (static_cast<std::size_t>(dst.end - dst.at) < length) return Stop::kFull;
    for (unsigned i = 0; i < length; ++i) *dst.at++ = bytes[i];
    src.at += srcLength;
    return Stop::kDone;
}

void PassAsciiRest(Source& src, Sink& dst) {
    while (src.at < src.end && dst.at < dst.end && *src.at < 0x80) *dst.at++ = *src.at++;
}

Stop RestToUtf8(const CodePage& page, Source& src, Sink& dst) {
    while (PassAsciiRest(src, dst), src.at < src.end) {
        const CodeRead read = ReadCode(page, src.at, src.end);
        if (read.length == 0) return Stop::kBad;
        unsigned char bytes[4];
        const unsigned length = WriteUtf8(read.character, bytes);
        if (Put(bytes, length, read.length, src, dst) == Stop::kFull) return Stop::kFull;
    }
    return Stop::kDone;
}

Stop RestFromUtf8(const CodePage& page, Source& src, Sink& dst) {
    while (PassAsciiRest(src, dst), src.at < src.end) {
        const CodeRead read = ReadUtf8(src.at, src.end);
        if (read.length == 0 || read.length == 4) return Stop::kBad;
        const unsigned cell = page.Back(read.character);
        if (cell == 0 && read.character != 0) return Stop::kBad;
        unsigned char bytes[4];
        const unsigned length = WriteCode(page, cell, bytes);
        if (Put(bytes, length, read.length, src, dst) == Stop::kFull) return Stop::kFull;
    }
    return Stop::kDone;
}

// May write a fourth byte.
inline unsigned WriteThree(unsigned c, unsigned char* out) {
    const std::uint32_t bytes = 0x8080E0u | c >> 12 | (c << 2 & 0x3F00u) | (c << 16 & 0x3F0000u);
    std::memcpy(out, &bytes, sizeof bytes);
    return 3;
}

inline bool TakesThree(unsigned character) {  // and is a character
    static_assert(kNoCharacter == 0xFFFF);
    return character - 0x800u < kNoCharacter - 0x800u;
}

template <bool kBlocks, bool kPairs>
void FastToUtf8(const CodePage& page, Source& src, Sink& dst) {
    const std::uint16_t* const pairs = page.pairs.get();
    const unsigned char* p = src.at;
    unsigned char* o = dst.at;
    const unsigned char* const safe =
        p + SafeCount(src.end - p, (dst.end - o) / 3, kBlocks ? kBlockAhead : 1);
    while (p < safe) {
        const unsigned lead = *p;
        if (lead < 0x80) {
            PassAscii<kBlocks>(p, o, safe);
            continue;
        }
        if (kPairs) {
            const unsigned character = pairs[CodePage::PairIndex(lead, p[1])];
            if (TakesThree(character)) {
                o += WriteThree(character, o);
                p += 2;
                continue;
            }
        }
        const CodeRead read = ReadCode(page, p, src.end);
        if (read.length == 0) break;
        o += WriteUtf8(read.character, o);
        p += read.length;
    }
    src.at = p;
    dst.at = o;
}

// Returns the cell of a three-byte sequence, the most frequent kind in text that is not ASCII.
// Returns 0 for any other sequence, also for an invalid or unknown one. May read a fourth byte.
inline unsigned CellOfThree(const BackTables& back, const unsigned char* p) {
    std::uint32_t bytes;
    std::memcpy(&bytes, p, sizeof bytes);
    const unsigned row = (bytes & 0x0F) << 6 | (bytes >> 8 & 0x3F);
    const bool wellFormed = (bytes & 0xC0C0F0) == 0x8080E0 && row >= 0x800 >> 6;
    return wellFormed ? back.Cell(row, bytes >> 16 & 0x3F) : 0;
}

template <bool kBlocks>
void FastFromUtf8(const CodePage& page, Source& src, Sink& dst) {
    const BackTables back(page);
    const unsigned char* p = src.at;
    unsigned char* o = dst.at;
    // Two bytes can become two bytes, or more if the code set has a prefix.
    const unsigned char* const safe =
        p + SafeCount(src.end - p, (dst.end - o) >> (page.longest > 2), kBlocks ? kBlockAhead : 3);
    while (p < safe) {
        if (*p < 0x80) {
            PassAscii<kBlocks>(p, o, safe);
            continue;
        }
        const unsigned cell = CellOfThree(back, p);
        if (cell >= kLowestPairCell) {
            StoreUnit(o, (cell >> 8 | cell << 8) & 0xFFFF);
            p += 3;
            o += 2;
            continue;
        }
        const CodeRead read = ReadUtf8(p, src.end);
        const unsigned any = read.length == 0 || read.length == 4 ? 0 : page.Back(read.character);
        if (any == 0) break;
        o += WriteCode(page, any, o);
        p += read.length;
    }
    src.at = p;
    dst.at = o;
}

}  // namespace

Stop TablesToUtf8(const CodePage& page, Source& src, Sink& dst) {
    if (page.form == CodeForm::kPairs) {
        FastToUtf8<true, true>(page, src, dst);
        FastToUtf8<false, true>(page, src, dst);
    } else {
        FastToUtf8<true, false>(page, src, dst);
        FastToUtf8<false, false>(page, src, dst);
    }
    return RestToUtf8(page, src, dst);
}

Stop Utf8ToTables(const CodePage& page, Source& src, Sink& dst) {
    FastFromUtf8<true>(page, src, dst);
    FastFromUtf8<false>(page, src, dst);
    return RestFromUtf8(page, src, dst);
}

}  // namespace genutil
