#include "genutil/mbutil/chinese.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/transcode.h"

namespace genutil {

namespace {

constexpr unsigned kCells = 94;  // in a row of CNS; also the number of rows in a plane
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

// Maps two bytes to two bytes, for every pair whose first byte has its top bit set. That bit is
// dropped from the index. The result is 0 for pairs that are not a character. There is no other
// test of a second byte: half of those of Big5 are ASCII and half are not, which no processor
// predicts.
using PairTable = std::array<std::uint16_t, 0x8000>;

// In the mapping to CNS, the top bits of the two bytes identify the plane: both are set for plane
// 1, so that the bytes can be written as they are, the row's for plane 2, and the cell's for plane
// 3.
constexpr unsigned kPlaneBits[] = {0, 0x8080, 0x8000, 0x0080};

constexpr unsigned PlaneOf(unsigned packed) {
    return (packed & 0x8080) == 0x8080 ? 1 : (packed & 0x8000) != 0 ? 2 : 3;
}

template <class Visit>
constexpr void ForEachPair(Visit visit) {
    for (const Run& run : kRuns) {
        unsigned big5 = run.big5, rowCell = run.rowCell;
        for (unsigned i = 0; i < run.count; ++i) {
            visit(run, big5, rowCell);
            big5 = NextBig5(big5);
            rowCell = NextRowCell(rowCell);
        }
    }
}

// Filled by the compiler, so that a program needs no initialisation and no lock.
constexpr PairTable kBig5ToCns = [] {
    PairTable table{};
    ForEachPair([&](const Run& run, unsigned big5, unsigned rowCell) {
        table[big5 & 0x7FFF] = static_cast<std::uint16_t>(rowCell | kPlaneBits[run.plane]);
    });
    return table;
}();

constexpr PairTable MakeCnsToBig5(unsigned plane) {
    PairTable table{};
    ForEachPair([&](const Run& run, unsigned big5, unsigned rowCell) {
        if (run.plane == plane && !run.oneWay)
            table[rowCell | 0x80] = static_cast<std::uint16_t>(big5);
    });
    return table;
}
constexpr PairTable kPlane1ToBig5 = MakeCnsToBig5(1), kPlane2ToBig5 = MakeCnsToBig5(2);

// Each of the few hanzi of plane 3 in Big5 is a run of one.
unsigned Big5FromPlane3(unsigned rowCell) {
    for (const Run& run : kRuns)
        if (run.plane == 3 && run.rowCell == rowCell) return run.big5;
    return 0;
}

bool IsPair(const unsigned char* p) {
    return IsLead(p[0]) && IsLead(p[1]);
}

// Returns the length of the character at t.src according to the stepping rules, or 0 for an invalid
// byte.
unsigned EucTwLength(const Transfer& t) {
    const unsigned char* p = t.src;
    const std::ptrdiff_t left = t.srcEnd - p;
    if (left >= 2 && IsPair(p)) return 2;
    if (left >= 4 && p[0] == 0x8E && p[1] >= 0xA1 && p[1] <= 0xB0 && IsPair(p + 2)) return 4;
    return 0;
}

Stop Lose(Transfer& t, unsigned length) {
    t.lossLength = length;
    if (t.stopsAtLoss) return Stop::kBad;
    if (t.dst == t.dstEnd) return Stop::kFull;
    t.losses.Add(t.src);
    *t.dst++ = kSubstitute;
    t.src += length;
    return Stop::kDone;
}

unsigned char* Put(unsigned char* dst, unsigned pair) {
    dst[0] = static_cast<unsigned char>(pair >> 8);
    dst[1] = static_cast<unsigned char>(pair);
    return dst + 2;
}

// Returns true if more text follows and the last bytes may begin a longer character.
bool IsBig5Cut(const Transfer& t) {
    return t.ending == Ending::kOpen && t.srcEnd - t.src == 1 && IsLead(*t.src);
}

bool IsEucTwCut(const Transfer& t) {
    const unsigned char* const p = t.src;
    const std::ptrdiff_t left = t.srcEnd - p;
    if (t.ending != Ending::kOpen || left >= 4) return false;
    if (p[0] != 0x8E) return left == 1 && IsLead(p[0]);
    return left == 1 || (p[1] >= 0xA1 && p[1] <= 0xB0 && (left == 2 || IsLead(p[2])));
}

// These convert one character that is not ASCII.
Stop Big5Character(Transfer& t) {
    if (IsBig5Cut(t)) return Stop::kCut;
    if (t.srcEnd - t.src < 2 || !IsLead(t.src[0]) || !IsTrail(t.src[1])) return Lose(t, 1);
    const unsigned cns = CnsFromBig5(static_cast<unsigned>(t.src[0] << 8 | t.src[1]));
    if (cns == 0) return Lose(t, 2);
    const unsigned plane = cns >> 16;
    if (t.dstEnd - t.dst < (plane == 1 ? 2 : 4)) return Stop::kFull;
    if (plane != 1) t.dst = Put(t.dst, 0x8EA0 + plane);
    t.dst = Put(t.dst, cns | 0x8080);
    t.src += 2;
    return Stop::kDone;
}

Stop EucTwCharacter(Transfer& t) {
    if (IsEucTwCut(t)) return Stop::kCut;
    const unsigned length = EucTwLength(t);
    if (length == 0) return Lose(t, 1);
    const unsigned plane = length == 2 ? 1 : t.src[1] - 0xA0u;
    const unsigned rowCell = static_cast<unsigned>(t.src[length - 2] << 8 | t.src[length - 1]);
    const unsigned big5 = Big5FromCns(plane << 16 | (rowCell & 0x7F7F));
    if (big5 == 0) return Lose(t, length);
    if (t.dstEnd - t.dst < 2) return Stop::kFull;
    t.dst = Put(t.dst, big5);
    t.src += length;
    return Stop::kDone;
}

// The hot path: converts characters of two bytes in both code sets, up to the first other one.
// kBytes contains the top bits that must be set in the result: both for plane 1, the first byte's
// for Big5.
template <const PairTable& kTable, unsigned kBytes>
std::size_t CopyPairs(unsigned char* dst, const unsigned char* src, std::size_t n) {
    std::size_t i = 0;
    for (; i + 2 <= n; i += 2) {
        const unsigned lead = src[i], second = src[i + 1];
        if (lead < 0x80) break;
        const unsigned found = kTable[(lead & 0x7F) << 8 | second];
        if ((found & kBytes) != kBytes) break;
        Put(dst + i, found);
    }
    return i;
}

using Copier = std::size_t (*)(unsigned char* dst, const unsigned char* src, std::size_t n);

template <Copier kPairs, Stop (*kCharacter)(Transfer&)>
bool Convert(Transfer& t) {
    t.stop = Stop::kDone;
    while (t.src != t.srcEnd) {
        const auto n = static_cast<std::size_t>(std::min(t.srcEnd - t.src, t.dstEnd - t.dst));
        std::size_t i = 0, before;
        do {
            before = i;
            i += CopyAsciiRun(t.dst + i, t.src + i, n - i);
            i += kPairs(t.dst + i, t.src + i, n - i);
        } while (i != before);
        t.src += i;
        t.dst += i;
        if (t.src == t.srcEnd) break;
        t.stop = *t.src >= 0x80 ? kCharacter(t) : t.dst == t.dstEnd ? Stop::kFull : Stop::kDone;
        if (t.stop != Stop::kDone) return false;
    }
    return true;
}

}  // namespace

unsigned CnsFromBig5(unsigned big5) {
    if (!IsLead(big5 >> 8)) return 0;
    const unsigned packed = kBig5ToCns[big5 & 0x7FFF];
    return packed == 0 ? 0 : PlaneOf(packed) << 16 | (packed & 0x7F7F);
}

unsigned Big5FromCns(unsigned cns) {
    const unsigned plane = cns >> 16, rowCell = cns & 0xFFFF;
    if ((rowCell & 0x8080) != 0 || plane < 1 || plane > 3) return 0;
    if (plane == 3) return Big5FromPlane3(rowCell);
    return (plane == 1 ? kPlane1ToBig5 : kPlane2ToBig5)[rowCell | 0x80];
}

bool Big5ToEucTw(Transfer& t) {
    return Convert<CopyPairs<kBig5ToCns, 0x8080>, Big5Character>(t);
}

bool EucTwToBig5(Transfer& t) {
    return Convert<CopyPairs<kPlane1ToBig5, 0x8000>, EucTwCharacter>(t);
}

}  // namespace genutil
