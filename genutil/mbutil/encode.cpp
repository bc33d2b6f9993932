#include "genutil/mbutil/ascii_units.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/pivot.h"

namespace genutil {

namespace {

// Returns the position up to which a loop need not check either end, if a unit takes at most
// `longest` bytes.
const unsigned char* SafeEnd(const unsigned char* units, const unsigned char* unitsEnd,
                             const Sink& dst, unsigned longest, std::ptrdiff_t ahead) {
    // A power of 2 is sufficient and avoids a division for a short text.
    const unsigned shift = longest > 2 ? 2 : longest - 1;
    return units + 2 * SafeCount((unitsEnd - units) / 2, (dst.end - dst.at) >> shift, ahead);
}

template <bool kBlocks>
inline void EncodeAscii(const unsigned char*& u, unsigned char*& o, const unsigned char* safe) {
    unsigned n = 1;
    if (kBlocks)
        n = NarrowAscii(u, o);
    else if (safe - u >= 16)
        n = NarrowAscii8(u, o);
    else
        *o = *u;
    u += n + n;
    o += n;
}

unsigned WriteUtf32(CodeForm form, unsigned character, unsigned char* out) {
    for (unsigned i = 0; i < 4; ++i) {
        const unsigned at = form == CodeForm::kUtf32 ? i : 3 - i;
        out[at] = static_cast<unsigned char>(character >> 8 * i);
    }
    return 4;
}

// Writes the bytes of the character at units. Returns 0 if it has none.
unsigned WriteOne(const CodePage& page, const unsigned char* units, const unsigned char* unitsEnd,
                  unsigned char* out, unsigned* unitBytes) {
    const unsigned unit = LoadUnit(units);
    *unitBytes = 2;
    const bool surrogate = IsHighSurrogate(unit) || IsLowSurrogate(unit);
    if (page.form == CodeForm::kSingleByte || page.form == CodeForm::kPairs) {
        const unsigned cell = page.Back(unit);
        if (cell == 0 && unit != 0) return 0;  // only NUL has the cell 0 and a code
        return WriteCode(page, cell, out);
    }
    if (page.form == CodeForm::kGb18030 && !surrogate) {
        const unsigned cell = page.Back(unit);
        if (cell != 0 || unit == 0) return WriteCode(page, cell, out);
        return page.longBack[unit] < kLongCodes ? WriteGb18030(page.longBack[unit], out) : 0;
    }
    if (!surrogate && UnitSize(page.form) == 4) return WriteUtf32(page.form, unit, out);
    const auto store = [&page](unsigned char* at, unsigned u) {
        StoreUnit(at, page.form == CodeForm::kUtf16 ? u : (u >> 8 | u << 8) & 0xFFFF);
    };
    if (!surrogate) {
        if (page.form == CodeForm::kUtf8) return WriteUtf8(unit, out);
        store(out, unit);
        return 2;
    }
    const unsigned second = unitsEnd - units >= 4 ? LoadUnit(units + 2) : 0;
    if (!IsHighSurrogate(unit) || !IsLowSurrogate(second)) return 0;
    *unitBytes = 4;
    if (UnitSize(page.form) == 2) {
        store(out, unit);
        store(out + 2, second);
        return 4;
    }
    const unsigned c = 0x10000 + ((unit & 0x3FF) << 10 | (second & 0x3FF));
    if (page.form == CodeForm::kGb18030) return WriteGb18030(189000 + (c - 0x10000), out);
    if (UnitSize(page.form) == 4) return WriteUtf32(page.form, c, out);
    out[0] = static_cast<unsigned char>(0xF0 | c >> 18);
    out[1] = static_cast<unsigned char>(0x80 | (c >> 12 & 0x3F));
    out[2] = static_cast<unsigned char>(0x80 | (c >> 6 & 0x3F));
    out[3] = static_cast<unsigned char>(0x80 | (c & 0x3F));
    return 4;
}

Stop EncodeRest(const CodePage& page, const unsigned char*& units, const unsigned char* unitsEnd,
                Sink& dst) {
    while (units < unitsEnd) {
        unsigned char bytes[4];
        unsigned unitBytes;
        const unsigned n = WriteOne(page, units, unitsEnd, bytes, &unitBytes);
        if (n == 0) return Stop::kBad;
        if (static_cast<std::size_t>(dst.end - dst.at) < n) return Stop::kFull;
        for (unsigned i = 0; i < n; ++i) *dst.at++ = bytes[i];
        units += unitBytes;
    }
    return Stop::kDone;
}

template <bool kBlocks, bool kSingleByte>
void EncodeTable(const CodePage& page, const unsigned char*& units, const unsigned char* unitsEnd,
                 Sink& dst) {
    const BackTables back(page);
    const unsigned char* u = units;
    unsigned char* o = dst.at;
    const unsigned char* const safe =
        SafeEnd(u, unitsEnd, dst, page.longest, kBlocks ? kBlockAhead : 0);
    while (u < safe) {
        const unsigned unit = LoadUnit(u);
        if (unit < 0x80) {
            EncodeAscii<kBlocks>(u, o, safe);
            continue;
        }
        const unsigned cell = back.Cell(unit >> 6, unit & 0x3F);
        if (cell == 0) break;
        if (kSingleByte) {
            *o++ = static_cast<unsigned char>(cell);
        } else if (cell >= kLowestPairCell) {
            StoreUnit(o, (cell >> 8 | cell << 8) & 0xFFFF);
            o += 2;
        } else {
            o += WriteCode(page, cell, o);
        }
        u += 2;
    }
    units = u;
    dst.at = o;
}

template <bool kBlocks>
void EncodeUtf8(const CodePage& page, const unsigned char*& units, const unsigned char* unitsEnd,
                Sink& dst) {
    const unsigned char* u = units;
    unsigned char* o = dst.at;
    const unsigned char* const safe = SafeEnd(u, unitsEnd, dst, 3, kBlocks ? kBlockAhead : 1);
    while (u < safe) {
        const unsigned unit = LoadUnit(u);
        if (unit < 0x80) {
            EncodeAscii<kBlocks>(u, o, safe);
            continue;
        }
        if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
            unsigned unitBytes;
            const unsigned n = WriteOne(page, u, unitsEnd, o, &unitBytes);
            if (n == 0) break;
            o += n;
            u += unitBytes;
            continue;
        }
        o += WriteUtf8(unit, o);
        u += 2;
    }
    units = u;
    dst.at = o;
}

// Encodes pairs up to a character with four bytes, and goes on with pairs after it.
Stop EncodeGb18030(const CodePage& page, const unsigned char*& units, const unsigned char* unitsEnd,
                   Sink& dst) {
    for (;;) {
        EncodeTable<true, false>(page, units, unitsEnd, dst);
        if (units >= unitsEnd) return Stop::kDone;
        const std::ptrdiff_t one = IsHighSurrogate(LoadUnit(units)) ? 4 : 2;
        const Stop stop =
            EncodeRest(page, units, unitsEnd - units > one ? units + one : unitsEnd, dst);
        if (stop != Stop::kDone) return stop;
    }
}

}  // namespace

Stop Encode(const CodePage& page, const unsigned char*& units, const unsigned char* unitsEnd,
            Sink& dst) {
    switch (page.form) {
        case CodeForm::kSingleByte:
            EncodeTable<true, true>(page, units, unitsEnd, dst);
            EncodeTable<false, true>(page, units, unitsEnd, dst);
            break;
        case CodeForm::kPairs:
            EncodeTable<true, false>(page, units, unitsEnd, dst);
            EncodeTable<false, false>(page, units, unitsEnd, dst);
            break;
        case CodeForm::kUtf8:
            EncodeUtf8<true>(page, units, unitsEnd, dst);
            EncodeUtf8<false>(page, units, unitsEnd, dst);
            break;
        case CodeForm::kGb18030:
            return EncodeGb18030(page, units, unitsEnd, dst);
        case CodeForm::kUtf16:
        case CodeForm::kUtf16BigEndian:
        case CodeForm::kUtf32:
        case CodeForm::kUtf32BigEndian:
            break;
        default:
            return EncodeIso2022(page, units, unitsEnd, dst);
    }
    return EncodeRest(page, units, unitsEnd, dst);
}

}  // namespace genutil
