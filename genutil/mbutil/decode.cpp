#include "genutil/mbutil/ascii_units.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/pivot.h"

namespace genutil {

namespace {

// The number of bytes that may be converted before either end must be looked at again, when each
// gives one unit at most; less a block, which the fast path reads and writes ahead.
const unsigned char* SafeEnd(const unsigned char* p, const unsigned char* end,
                             const unsigned char* out, const unsigned char* outEnd) {
    const std::ptrdiff_t left = end - p, room = (outEnd - out) / 2;
    const std::ptrdiff_t n = left < room ? left : room;
    return n < static_cast<std::ptrdiff_t>(kAsciiBlock) ? p : p + n - kAsciiBlock;
}

// The rest of a text, too short for the fast path.
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

Stop DecodeSingleByte(const CodePage& page, Source& src, unsigned char*& out,
                      unsigned char* outEnd) {
    const unsigned char* p = src.at;
    unsigned char* o = out;
    for (const unsigned char* safe = SafeEnd(p, src.end, o, outEnd); p < safe;) {
        if (*p < 0x80) {
            const unsigned n = WidenAscii(p, o);
            p += n;
            o += 2 * n;
            continue;
        }
        const unsigned character = page.bytes[*p];
        if (character == kNoCharacter) break;
        StoreUnit(o, character);
        ++p;
        o += 2;
    }
    src.at = p;
    out = o;
    return DecodeRest<ReadCode>(page, src, out, outEnd);
}

Stop DecodePairs(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd) {
    const std::uint16_t* const pairs = page.pairs.get();
    const unsigned char* p = src.at;
    unsigned char* o = out;
    for (const unsigned char* safe = SafeEnd(p, src.end, o, outEnd); p < safe;) {
        const unsigned lead = *p;
        if (lead < 0x80) {
            const unsigned n = WidenAscii(p, o);
            p += n;
            o += 2 * n;
            continue;
        }
        const unsigned character = pairs[CodePage::PairIndex(lead, p[1])];
        if (character != kNoCharacter) {
            StoreUnit(o, character);
            p += 2;
            o += 2;
            continue;
        }
        const CodeRead read = ReadCode(page, p, src.end);
        if (read.length == 0) break;
        StoreUnit(o, read.character);
        p += read.length;
        o += 2;
    }
    src.at = p;
    out = o;
    return DecodeRest<ReadCode>(page, src, out, outEnd);
}

CodeRead ReadUtf8Code(const CodePage&, const unsigned char* p, const unsigned char* end) {
    return ReadUtf8(p, end);
}

Stop DecodeUtf8(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd) {
    const unsigned char* p = src.at;
    unsigned char* o = out;
    for (const unsigned char* safe = SafeEnd(p, src.end, o, outEnd); p < safe;) {
        if (*p < 0x80) {
            const unsigned n = WidenAscii(p, o);
            p += n;
            o += 2 * n;
            continue;
        }
        const CodeRead read = ReadUtf8(p, src.end);
        if (read.length == 0 || read.length == 4) break;
        StoreUnit(o, read.character);
        p += read.length;
        o += 2;
    }
    src.at = p;
    out = o;
    return DecodeRest<ReadUtf8Code>(page, src, out, outEnd);
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

}  // namespace

Stop Decode(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd) {
    switch (page.form) {
        case CodeForm::kSingleByte:
            return DecodeSingleByte(page, src, out, outEnd);
        case CodeForm::kPairs:
            return DecodePairs(page, src, out, outEnd);
        case CodeForm::kUtf8:
            return DecodeUtf8(page, src, out, outEnd);
        case CodeForm::kUtf16:
            return DecodeRest<ReadUtf16<LoadUnit>>(page, src, out, outEnd);
        case CodeForm::kUtf16BigEndian:
            return DecodeRest<ReadUtf16<LoadSwapped>>(page, src, out, outEnd);
        default:
            return DecodeIso2022(page, src, out, outEnd);
    }
}

std::size_t BadLength(const CodePage& page, const Source& src) {
    const unsigned char* p = src.at;
    const std::size_t left = static_cast<std::size_t>(src.end - p);
    if (page.form == CodeForm::kUtf16 || page.form == CodeForm::kUtf16BigEndian)
        return left < 2 ? left : 2;
    if (page.form == CodeForm::kUtf8 || page.form == CodeForm::kSingleByte) return 1;
    if (page.form != CodeForm::kPairs) return BadLengthIso2022(page, src);
    if (left >= 2 && page.isLead[p[0]] && page.isTrail[p[1]]) return 2;
    const std::size_t n = page.prefixLength;
    const bool isPrefix = n > 0 && p[0] == page.prefix[0] && left >= n + 2 &&
                          (n == 1 || (p[1] >= 0xA1 && p[1] <= 0xB0));
    return isPrefix && page.isLead[p[n]] && page.isTrail[p[n + 1]] ? n + 2 : 1;
}

}  // namespace genutil
