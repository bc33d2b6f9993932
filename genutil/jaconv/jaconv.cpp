// Conversion between Shift-JIS, EUC-JP and JIS: one loop over a reader and a writer.
#include <algorithm>
#include <bit>

#include "genutil/jaconv/reader.h"
#include "genutil/jaconv/writer.h"
#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/transcode.h"

namespace genutil {

namespace {

using namespace jis;

// Copies a run of ASCII and returns its length. In JIS, the bytes that shift between sets do not
// belong to it.
template <bool kShifts>
std::size_t CopyPlainRun(unsigned char* dst, const unsigned char* src, std::size_t n) {
    if constexpr (!kShifts) {
        return CopyAsciiRun(dst, src, n);
    } else {
        std::size_t i = 0;
        for (; i + 16 <= n; i += 16) {
            const simd::Vector block = simd::Load(src + i);
            simd::Store(dst + i, block);
            const simd::Vector shift =
                simd::Equal8(block, simd::Splat8(kEscape)) |
                simd::Equal8(block | simd::Splat8(1), simd::Splat8(kShiftIn));
            if (const unsigned stop = simd::TopBits(block | shift))
                return i + static_cast<unsigned>(std::countr_zero(stop));
        }
        for (; i < n && JisReader::IsPlain(src[i]); ++i) dst[i] = src[i];
        return i;
    }
}

template <class Out>
bool WriteAscii(Out& out, unsigned byte) {
    if (!out.EnterAscii() || out.Room() < 1) return false;
    out.PutByte(byte);
    return true;
}

Stop Full(bool written) {
    return written ? Stop::kDone : Stop::kFull;
}

template <class In, class Out>
Stop Write(const In& in, Out& out, const Unit& unit, Transfer& t) {
    const std::size_t left = in.Left() - unit.length;
    switch (unit.kind) {
        case Kind::kAscii:
            // JIS cannot represent a byte that would be read as a shift.
            if (Out::kShifts && !JisReader::IsPlain(unit.code) &&
                (unit.code != kEscape || FindEscape(in.p, in.Left()) != nullptr))
                break;
            return Full(WriteAscii(out, unit.code));
        case Kind::kPair:
            return Full(out.Pair(unit.code, left));
        case Kind::kSupplement:
            if constexpr (Out::kHasSupplement) return Full(out.Supplement(unit.code, left));
            break;
        case Kind::kKana:
            return Full(out.Kana(unit.code, left));
        case Kind::kNothing:
            return Stop::kDone;
        case Kind::kLost:
            break;
    }
    t.lossLength = unit.length;
    t.afterLoss = in.State();
    if (t.stopsAtLoss) return Stop::kBad;
    if (!out.Lost(left)) return Stop::kFull;
    t.losses.Add(in.p);
    return Stop::kDone;
}

template <class In, class Out>
void CopyAscii(In& in, Out& out) {
    if (!out.EnterAscii()) return;
    const std::size_t n = std::min(in.Left(), out.Room());
    constexpr bool kShifts = In::kShifts || Out::kShifts;
    const std::size_t run = CopyPlainRun<kShifts>(out.p, in.p, n);
    in.p += run;
    out.p += run;
}

template <class In, class Out>
void CopyBlocks(In& in, Out& out) {
    while (in.Left() >= kBlock && out.HasBlock()) {
        const Block block = in.PairBlock();
        out.PutBlock(block);
        in.p += 2 * block.count;
        if (block.count < kBlock / 2) return;
    }
}

// Returns true if the meaning of the next byte depends on text that has yet to come.
template <class In, class Out>
bool IsCutShort(const In& in, const Transfer& t) {
    if (t.ending != Ending::kOpen) return false;
    return in.IsCut() || (Out::kShifts && *in.p == kEscape && EscapeGoesOn(in.p, in.Left()));
}

// Text consists of runs of ASCII and of kanji, most of them too short to predict their ends. Both
// are read 16 bytes at a time, of which the run may fill only a part.
template <class In, class Out>
Stop Run(In& in, Out& out, Transfer& t) {
    while (in.p != in.end) {
        const unsigned char* const before = in.p;
        if (in.PlainNext() && (!Out::kShifts || JisReader::IsPlain(*in.p))) CopyAscii(in, out);
        while (const unsigned pair = in.Pair()) {
            if (!out.Pair(pair, in.Left() - 2)) return Stop::kFull;
            in.p += 2;
            CopyBlocks(in, out);
        }
        if (in.p != before) continue;
        if (IsCutShort<In, Out>(in, t)) return Stop::kCut;
        const Unit unit = in.Other();
        const Stop stop = Write(in, out, unit, t);
        if (stop != Stop::kDone) return stop;
        in.p += unit.length;
    }
    return Stop::kDone;
}

template <class In, class Out>
bool Convert(Transfer& t) {
    In in;
    in.p = t.src;
    in.end = t.srcEnd;
    in.Begin(t.reading);
    Out out(t);
    t.stop = Run(in, out, t);
    if (t.ending == Ending::kWhole)
        out.Close();
    else if (t.ending == Ending::kLast && t.stop == Stop::kDone)
        t.stop = Full(out.Close());
    t.src = in.p;
    t.dst = out.p;
    t.reading = in.State();
    t.writing = out.State();
    return t.stop == Stop::kDone;
}

}  // namespace

bool JisToShiftJis(Transfer& t) {
    return Convert<JisReader, ShiftJisWriter>(t);
}
bool JisToEucJp(Transfer& t) {
    return Convert<JisReader, EucJpWriter>(t);
}
bool EucJpToShiftJis(Transfer& t) {
    return Convert<EucJpReader, ShiftJisWriter>(t);
}
bool EucJpToJis(Transfer& t) {
    return Convert<EucJpReader, JisWriter>(t);
}
bool ShiftJisToEucJp(Transfer& t) {
    return Convert<ShiftJisReader, EucJpWriter>(t);
}
bool ShiftJisToJis(Transfer& t) {
    return Convert<ShiftJisReader, JisWriter>(t);
}

}  // namespace genutil
