// Text that remains in its code set, with a substitute for each invalid sequence. Valid characters
// keep their bytes, also those that have several codes.
#include <algorithm>
#include <cstring>

#include "genutil/mbutil/ascii_units.h"
#include "genutil/mbutil/pivot.h"
#include "genutil/mbutil/transcode.h"

namespace genutil {

namespace {

// Advances src over valid text. Never returns kFull.
Stop SkipValid(const CodePage& page, Source& src) {
    unsigned char units[2048];
    for (;;) {
        unsigned char* out = units;
        const Stop stop = Decode(page, src, out, units + sizeof units);
        if (stop != Stop::kFull) return stop;
    }
}

// Copies valid text as far as there is room. After kBad, t.src is at the lost character.
Stop CopyRun(Transfer& t, const CodePage& page) {
    const std::ptrdiff_t left = t.srcEnd - t.src;
    const std::ptrdiff_t n = std::min(left, t.dstEnd - t.dst);
    Source src{t.src, t.src + n};
    Stop stop = SkipValid(page, src);
    std::memmove(t.dst, t.src, static_cast<std::size_t>(src.at - t.src));
    t.dst += src.at - t.src;
    t.src = src.at;
    if (stop == Stop::kDone) return n == left ? Stop::kDone : Stop::kFull;
    if (!IsCut(page, src)) return stop;
    if (n < left) return Stop::kFull;
    return t.ending == Ending::kOpen ? Stop::kCut : stop;
}

bool PutSubstitute(Transfer& t, const CodePage& page) {
    unsigned char unit[2];
    StoreUnit(unit, t.substitute ? t.substitute : SubstituteOf(page));
    const unsigned char* units = unit;
    Sink dst{t.dst, t.dstEnd};
    if (Encode(page, units, unit + 2, dst) != Stop::kDone) return false;
    t.dst = dst.at;
    return true;
}

}  // namespace

bool CopyValid(Transfer& t, const CodePage& page) {
    while ((t.stop = CopyRun(t, page)) == Stop::kBad) {
        t.lossLength = static_cast<unsigned>(BadLength(page, Source{t.src, t.srcEnd}));
        if (t.stopsAtLoss) return false;
        const unsigned char* const lost = t.src;
        if (!PutSubstitute(t, page)) {
            t.stop = Stop::kFull;
            return false;
        }
        t.losses.Add(lost);
        t.src += t.lossLength;
    }
    return t.stop == Stop::kDone;
}

}  // namespace genutil
