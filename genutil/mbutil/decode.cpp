#include "genutil/mbutil/ascii_units.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/pivot.h"

namespace genutil {

namespace {

// There are two kinds of loops: by blocks, which read and write a block ahead, and code by code,
// for a short text or the rest of a text.

// Converts ASCII at p to units at o and advances both. Stops at safe, except for the block ahead.
template <bool kBlocks>
inline void DecodeAscii(const unsigned char*& p, unsigned char*& o, const unsigned char* safe) {
    unsigned n = 1;
    if (kBlocks)
        n = WidenAscii(p, o);
    else if (safe - p >= 8)
        n = WidenAscii8(p, o);
    else
        StoreUnit(o, *p);
    p += n;
    o += n + n;
}

// Converts the last codes, and those at which the loops stop.
template <CodeRead (*Read)(const CodePage&, const unsigned char*, const unsigned char*)>
Stop DecodeRest(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd) {
    while (src.at < src.end) {
        const CodeRead read = Read(page, src.at, src.end);
        if (read.length == 0) return Stop::kBad;
        const std::ptrdiff_t size = read.character < 0x10000 ? 2 : 4;
        if (outEnd - out < size) return Stop::kFull;
        if (size == 2) {
            StoreUnit(out, read.character);
        } else {
            StoreUnit(out, 0xD7C0 + (read.character >> 10));
            StoreUnit(out + 2, 0xDC00 | (read.character & 0x3FF));
        }
        out += size;
        src.at += read.length;
    }
    return Stop::kDone;
}

// Converts as far as neither end needs to be checked, if every byte gives at most one unit. ASCII
// is converted here, and every other code by next(p, o), which stores its unit at o and returns its
// length, or 0 where the loop must stop.
template <bool kBlocks, class Next>
inline void DecodeCodes(Source& src, unsigned char*& out, unsigned char* outEnd,
                        std::ptrdiff_t ahead, Next next) {
    const unsigned char* p = src.at;
    unsigned char* o = out;
    const unsigned char* const safe =
        p + SafeCount(src.end - p, (outEnd - o) / 2, kBlocks ? kBlockAhead : ahead);
    while (p < safe) {
        if (*p < 0x80) {
            DecodeAscii<kBlocks>(p, o, safe);
            continue;
        }
        const unsigned length = next(p, o);
        if (length == 0) break;
        p += length;
        o += 2;
    }
    src.at = p;
    out = o;
}

template <bool kBlocks>
void DecodeSingleByte(const CodePage& page, Source& src, unsigned char*& out,
                      unsigned char* outEnd) {
    DecodeCodes<kBlocks>(src, out, outEnd, 0, [&](const unsigned char* p, unsigned char* o) {
        const unsigned character = page.bytes[*p];
        StoreUnit(o, character);
        return character == kNoCharacter ? 0u : 1u;
    });
}

template <bool kBlocks>
void DecodePairs(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd) {
    const std::uint16_t* const pairs = page.pairs.get();
    const unsigned char* const end = src.end;
    DecodeCodes<kBlocks>(src, out, outEnd, 1, [&](const unsigned char* p, unsigned char* o) {
        const unsigned character = pairs[CodePage::PairIndex(*p, p[1])];
        StoreUnit(o, character);
        if (character != kNoCharacter) return 2u;
        const CodeRead read = ReadCode(page, p, end);
        StoreUnit(o, read.character);
        return read.length;
    });
}

CodeRead ReadUtf8Code(const CodePage&, const unsigned char* p, const unsigned char* end) {
    return ReadUtf8(p, end);
}

template <bool kBlocks>
void DecodeUtf8(Source& src, unsigned char*& out, unsigned char* outEnd) {
    const unsigned char* const end = src.end;
    DecodeCodes<kBlocks>(src, out, outEnd, 0, [&](const unsigned char* p, unsigned char* o) {
        const CodeRead read = ReadUtf8(p, end);
        if (read.length == 4) return 0u;
        StoreUnit(o, read.character);
        return read.length;
    });
}

unsigned LoadSwapped(const unsigned char* p) {
    return static_cast<unsigned>(p[0]) << 8 | p[1];
}

template <unsigned (*Load)(const unsigned char*)>
CodeRead ReadUtf16(const CodePage&, const unsigned char* p, const unsigned char* end) {
    if (end - p < 2) return {0, 0};
    const unsigned unit = Load(p);
    if (IsLowSurrogate(unit)) return {0, 0};
    if (!IsHighSurrogate(unit)) return {unit, 2};
    const unsigned second = end - p >= 4 ? Load(p + 2) : 0;
    if (!IsLowSurrogate(second)) return {0, 0};
    return {0x10000 + ((unit & 0x3FF) << 10 | (second & 0x3FF)), 4};
}

template <bool kBigEndian>
CodeRead ReadUtf32(const CodePage&, const unsigned char* p, const unsigned char* end) {
    if (end - p < 4) return {0, 0};
    const unsigned low = kBigEndian ? LoadSwapped(p + 2) : LoadUnit(p);
    const unsigned high = kBigEndian ? LoadSwapped(p) : LoadUnit(p + 2);
    const unsigned character = high << 16 | low;
    const bool valid = high <= 0x10 && !(high == 0 && low >= 0xD800 && low <= 0xDFFF);
    return {character, valid ? 4u : 0u};
}

// GB18030 is converted as pairs up to a code of four bytes, and goes on as pairs after it.
Stop DecodeGb18030(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd) {
    for (;;) {
        DecodePairs<true>(page, src, out, outEnd);
        if (src.at == src.end) return Stop::kDone;
        const CodeRead read = ReadGb18030(page, src.at, src.end);
        if (read.length == 0) return Stop::kBad;
        Source one{src.at, src.at + read.length};
        const Stop stop = DecodeRest<ReadGb18030>(page, one, out, outEnd);
        src.at = one.at;
        if (stop != Stop::kDone) return stop;
    }
}

}  // namespace

Stop Decode(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd) {
    switch (page.form) {
        case CodeForm::kSingleByte:
            DecodeSingleByte<true>(page, src, out, outEnd);
            DecodeSingleByte<false>(page, src, out, outEnd);
            return DecodeRest<ReadCode>(page, src, out, outEnd);
        case CodeForm::kPairs:
            DecodePairs<true>(page, src, out, outEnd);
            DecodePairs<false>(page, src, out, outEnd);
            return DecodeRest<ReadCode>(page, src, out, outEnd);
        case CodeForm::kUtf8:
            DecodeUtf8<true>(src, out, outEnd);
            DecodeUtf8<false>(src, out, outEnd);
            return DecodeRest<ReadUtf8Code>(page, src, out, outEnd);
        case CodeForm::kUtf16:
            return DecodeRest<ReadUtf16<LoadUnit>>(page, src, out, outEnd);
        case CodeForm::kUtf16BigEndian:
            return DecodeRest<ReadUtf16<LoadSwapped>>(page, src, out, outEnd);
        case CodeForm::kUtf32:
            return DecodeRest<ReadUtf32<false>>(page, src, out, outEnd);
        case CodeForm::kUtf32BigEndian:
            return DecodeRest<ReadUtf32<true>>(page, src, out, outEnd);
        case CodeForm::kGb18030:
            return DecodeGb18030(page, src, out, outEnd);
        default:
            return DecodeIso2022(page, src, out, outEnd);
    }
}

namespace {

// Returns the number of bytes after p, before end, that belong to the longest beginning of a
// character with p[0]. `missing` receives the number of bytes that such a character has in
// addition.
unsigned Utf8Beginning(const unsigned char* p, const unsigned char* end, unsigned* missing) {
    const unsigned b = p[0];
    *missing = 0;
    if (b < 0xC2 || b > 0xF4) return 0;
    const unsigned length = b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
    const unsigned low = b == 0xE0 ? 0xA0 : b == 0xF0 ? 0x90 : 0x80;
    const unsigned high = b == 0xED ? 0x9F : b == 0xF4 ? 0x8F : 0xBF;
    unsigned n = 1;
    while (n < length && p + n < end &&
           (n == 1 ? p[1] >= low && p[1] <= high : IsContinuation(p[n])))
        ++n;
    *missing = length - n;
    return n - 1;
}

// Returns the number of bytes at p, of at most `left`, that may begin a code after a prefix.
unsigned PrefixedBeginning(const CodePage& page, const unsigned char* p, std::size_t left) {
    const std::size_t n = page.prefixLength;
    if (n == 0 || p[0] != page.prefix[0]) return 0;
    std::size_t i = 1;
    for (; i < left && i < n + 2; ++i) {
        const bool fits = i < n    ? p[i] >= 0xA1 && p[i] <= 0xB0
                          : i == n ? page.isLead[p[i]]
                                   : page.isTrail[p[i]];
        if (!fits) return 0;
    }
    return static_cast<unsigned>(i);
}

// Returns the number of bytes at p, of at most `left`, that may begin a code of four bytes.
std::size_t Gb18030Beginning(const unsigned char* p, std::size_t left) {
    std::size_t n = 0;
    const auto isDigit = [](unsigned byte) { return byte >= 0x30 && byte <= 0x39; };
    const auto isLead = [](unsigned byte) { return byte >= 0x81 && byte <= 0xFE; };
    while (n < 4 && n < left && (n % 2 ? isDigit(p[n]) : isLead(p[n]))) ++n;
    return n;
}

}  // namespace

std::size_t BadLength(const CodePage& page, const Source& src) {
    const unsigned char* p = src.at;
    const std::size_t left = static_cast<std::size_t>(src.end - p);
    unsigned missing;
    switch (page.form) {
        case CodeForm::kUtf16:
        case CodeForm::kUtf16BigEndian:
            return left < 2 ? left : 2;
        case CodeForm::kUtf32:
        case CodeForm::kUtf32BigEndian:
            return left < 4 ? left : 4;
        case CodeForm::kGb18030:
            if (Gb18030Beginning(p, left) == 4) return 4;
            return left >= 2 && page.isLead[p[0]] && page.isTrail[p[1]] ? 2 : 1;
        case CodeForm::kUtf8:
            return 1 + Utf8Beginning(p, src.end, &missing);
        case CodeForm::kSingleByte:
            return 1;
        case CodeForm::kPairs:
            if (left >= 2 && page.isLead[p[0]] && page.isTrail[p[1]]) return 2;
            return PrefixedBeginning(page, p, left) == page.prefixLength + 2u
                       ? page.prefixLength + 2u
                       : 1;
        default:
            return BadLengthIso2022(page, src);
    }
}

bool IsCut(const CodePage& page, const Source& src) {
    const unsigned char* p = src.at;
    const std::size_t left = static_cast<std::size_t>(src.end - p);
    unsigned missing;
    switch (page.form) {
        case CodeForm::kUtf16:
            return left < 2 || (left < 4 && IsHighSurrogate(LoadUnit(p)));
        case CodeForm::kUtf16BigEndian:
            return left < 2 || (left < 4 && IsHighSurrogate(LoadSwapped(p)));
        case CodeForm::kUtf32:
        case CodeForm::kUtf32BigEndian:
            return left < 4;
        case CodeForm::kGb18030:
            return left < 4 && Gb18030Beginning(p, left) == left;
        case CodeForm::kUtf8:
            return 1 + Utf8Beginning(p, src.end, &missing) == left && missing > 0;
        case CodeForm::kSingleByte:
            return false;
        case CodeForm::kPairs:
            if (left == 1 && *p >= 0x80 && page.bytes[*p] == kNoCharacter &&
                (page.isLead[*p] || page.pairs[CodePage::PairIndex(*p, 0xA1)] != kNoCharacter))
                return true;
            return left < page.prefixLength + 2u && PrefixedBeginning(page, p, left) == left;
        default:
            return IsCutIso2022(page, src);
    }
}

}  // namespace genutil
