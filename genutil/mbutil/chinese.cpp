#include "genutil/mbutil/chinese.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/transcode.h"

namespace genutil {

namespace {

constexpr unsigned kCells = 94;        // in a row of CNS, and rows in a plane
constexpr unsigned kTrailSpan = 0xBF;  // from 0x40 to 0xFE
constexpr unsigned kPlane = kCells * kCells;
constexpr unsigned char kSubstitute = '?';

struct Run {
    std::uint16_t big5;
    std::uint8_t plane;
    std::uint16_t rowCell;
    std::uint16_t count;
    bool oneWay;
};
constexpr Run kRuns[] = {
#include "genutil/mbutil/big5_cns.inc"
};

constexpr bool IsLead(unsigned byte) {
    return byte - 0xA1 < kCells;
}
constexpr bool IsTrail(unsigned byte) {
    return byte - 0x40 < 0x3F || IsLead(byte);
}

constexpr unsigned NextBig5(unsigned code) {
    const unsigned trail = code & 0xFF;
    if (trail == 0x7E) return code + 0xA1 - 0x7E;
    return trail == 0xFE ? code + 0x100 + 0x40 - 0xFE : code + 1;
}

constexpr unsigned NextRowCell(unsigned rowCell) {
    return (rowCell & 0xFF) == 0x7E ? rowCell + 0x100 + 0x21 - 0x7E : rowCell + 1;
}

constexpr unsigned Big5Index(unsigned lead, unsigned trail) {
    return (lead - 0xA1) * kTrailSpan + trail - 0x40;
}

// Of a row and cell whose bytes begin at `first`: 0x21 in CNS, 0xA1 in EUC.
constexpr unsigned CnsIndex(unsigned row, unsigned cell, unsigned first) {
    return (row - first) * kCells + cell - first;
}

// Row and cell in the bytes of EUC with the plane in their top bits, so that plane 1 is ready to be
// written: 11 plane 1, 10 plane 2, 01 plane 3.
constexpr unsigned kPlaneBits[] = {0, 0x8080, 0x8000, 0x0080};

constexpr unsigned PlaneOf(unsigned packed) {
    return (packed & 0x8080) == 0x8080 ? 1 : (packed & 0x8000) != 0 ? 2 : 3;
}

// Filled by the compiler: nothing to build, and nothing to lock, when a program runs.
struct Tables {
    std::array<std::uint16_t, kCells * kTrailSpan> toCns{};
    std::array<std::uint16_t, 2 * kPlane> toBig5{};  // planes 1 and 2
};

constexpr Tables MakeTables() {
    Tables tables;
    for (const Run& run : kRuns) {
        unsigned big5 = run.big5, rowCell = run.rowCell;
        for (unsigned i = 0; i < run.count; ++i) {
            tables.toCns[Big5Index(big5 >> 8, big5 & 0xFF)] =
                static_cast<std::uint16_t>(rowCell | kPlaneBits[run.plane]);
            if (!run.oneWay && run.plane < 3)
                tables.toBig5[(run.plane - 1) * kPlane +
                              CnsIndex(rowCell >> 8, rowCell & 0xFF, 0x21)] =
                    static_cast<std::uint16_t>(big5);
            big5 = NextBig5(big5);
            rowCell = NextRowCell(rowCell);
        }
    }
    return tables;
}

constexpr Tables kTables = MakeTables();

// The few hanzi of plane 3 that Big5 has stand alone, each in a run of one.
unsigned Big5FromPlane3(unsigned rowCell) {
    for (const Run& run : kRuns)
        if (run.plane == 3 && run.rowCell == rowCell) return run.big5;
    return 0;
}

bool IsPair(const unsigned char* p) {
    return IsLead(p[0]) && IsLead(p[1]);
}

// Length of the character at t.src, as stepping has it; 0 for an invalid byte.
unsigned EucTwLength(const Transfer& t) {
    const unsigned char* p = t.src;
    const std::ptrdiff_t left = t.srcEnd - p;
    if (left >= 2 && IsPair(p)) return 2;
    if (left >= 4 && p[0] == 0x8E && p[1] >= 0xA1 && p[1] <= 0xB0 && IsPair(p + 2)) return 4;
    return 0;
}

bool Lose(Transfer& t, unsigned length) {
    if (t.dst == t.dstEnd) return false;
    t.losses.Add(t.src);
    *t.dst++ = kSubstitute;
    t.src += length;
    return true;
}

void SkipAscii(Transfer& t) {
    const auto n = static_cast<std::size_t>(std::min(t.srcEnd - t.src, t.dstEnd - t.dst));
    const std::size_t run = CopyAsciiRun(t.dst, t.src, n);
    t.src += run;
    t.dst += run;
}

// What follows a byte that is not ASCII, one character; false when dst is full.
bool Big5Character(Transfer& t) {
    if (t.srcEnd - t.src < 2 || !IsLead(t.src[0]) || !IsTrail(t.src[1])) return Lose(t, 1);
    const unsigned packed = kTables.toCns[Big5Index(t.src[0], t.src[1])];
    if (packed == 0) return Lose(t, 2);
    const unsigned plane = PlaneOf(packed);
    if (t.dstEnd - t.dst < (plane == 1 ? 2 : 4)) return false;
    if (plane != 1) {
        *t.dst++ = 0x8E;
        *t.dst++ = static_cast<unsigned char>(0xA0 + plane);
    }
    *t.dst++ = static_cast<unsigned char>(packed >> 8 | 0x80);
    *t.dst++ = static_cast<unsigned char>(packed | 0x80);
    t.src += 2;
    return true;
}

bool EucTwCharacter(Transfer& t) {
    const unsigned length = EucTwLength(t);
    if (length == 0) return Lose(t, 1);
    const unsigned plane = length == 2 ? 1 : t.src[1] - 0xA0u;
    const unsigned row = t.src[length - 2], cell = t.src[length - 1];
    const unsigned big5 = plane < 3
                              ? kTables.toBig5[(plane - 1) * kPlane + CnsIndex(row, cell, 0xA1)]
                              : Big5FromCns(plane << 16 | ((row << 8 | cell) & 0x7F7F));
    if (big5 == 0) return Lose(t, length);
    if (t.dstEnd - t.dst < 2) return false;
    *t.dst++ = static_cast<unsigned char>(big5 >> 8);
    *t.dst++ = static_cast<unsigned char>(big5);
    t.src += length;
    return true;
}

}  // namespace

unsigned CnsFromBig5(unsigned big5) {
    const unsigned lead = big5 >> 8, trail = big5 & 0xFF;
    if (!IsLead(lead) || !IsTrail(trail)) return 0;
    const unsigned packed = kTables.toCns[Big5Index(lead, trail)];
    return packed == 0 ? 0 : PlaneOf(packed) << 16 | (packed & 0x7F7F);
}

unsigned Big5FromCns(unsigned cns) {
    const unsigned plane = cns >> 16, row = cns >> 8 & 0xFF, cell = cns & 0xFF;
    if (row - 0x21 >= kCells || cell - 0x21 >= kCells || plane < 1 || plane > 3) return 0;
    if (plane == 3) return Big5FromPlane3(cns & 0xFFFF);
    return kTables.toBig5[(plane - 1) * kPlane + CnsIndex(row, cell, 0x21)];
}

bool Big5ToEucTw(Transfer& t) {
    for (;;) {
        SkipAscii(t);
        if (t.src == t.srcEnd) return true;
        if (*t.src < 0x80) return false;
        do {
            if (!Big5Character(t)) return false;
        } while (t.src != t.srcEnd && *t.src >= 0x80);
    }
}

bool EucTwToBig5(Transfer& t) {
    for (;;) {
        SkipAscii(t);
        if (t.src == t.srcEnd) return true;
        if (*t.src < 0x80) return false;
        do {
            if (!EucTwCharacter(t)) return false;
        } while (t.src != t.srcEnd && *t.src >= 0x80);
    }
}

}  // namespace genutil
