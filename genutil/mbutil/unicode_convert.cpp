// Conversion between any two code sets by way of Unicode: the choice of path, and the lost
// characters.
#include "genutil/mbutil/ascii_units.h"
#include "genutil/mbutil/byte_order_mark.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/pivot.h"
#include "genutil/mbutil/transcode.h"
#include "genutil/mbutil/utf8_direct.h"
#include "mbutil.h"

namespace genutil {

namespace {

bool HasTables(const CodePage& page) {
    return page.form == CodeForm::kSingleByte || page.form == CodeForm::kPairs;
}

class Conversion {
  public:
    Conversion(Transfer& transfer, const CodePage& from, const CodePage& to)
        : m_transfer(transfer),
          m_from(from),
          m_to(to),
          m_substitute(transfer.substitute ? transfer.substitute : SubstituteOf(to)),
          m_src{transfer.src, transfer.srcEnd, transfer.reading, transfer.ending == Ending::kOpen},
          m_dst{transfer.dst, transfer.dstEnd, transfer.writing} {}

    bool Run() {
        Stop stop = Advance();
        while (stop == Stop::kBad && !m_transfer.stopsAtLoss) {
            if (!PutSubstitute()) {
                stop = Stop::kFull;
                break;
            }
            m_transfer.losses.Add(m_src.at);
            m_src = m_behind;
            stop = Advance();
        }
        if (stop == Stop::kBad) {
            m_transfer.lossLength = static_cast<unsigned>(m_behind.at - m_src.at);
            m_transfer.afterLoss = m_behind.state;
        }
        const bool ends = m_transfer.ending == Ending::kWhole ||
                          (m_transfer.ending == Ending::kLast && stop == Stop::kDone);
        if (ends && !CloseText(m_to, m_dst)) stop = Stop::kFull;
        m_transfer.src = m_src.at;
        m_transfer.dst = m_dst.at;
        m_transfer.reading = m_src.state;
        m_transfer.writing = m_dst.state;
        m_transfer.stop = stop;
        return stop == Stop::kDone;
    }

  private:
    // Converts as far as possible. At kBad, m_src is at the lost character and m_behind after it.
    Stop Advance() {
        if (m_to.form == CodeForm::kUtf16) return ToUtf16();
        if (m_from.form == CodeForm::kUtf16) return FromUtf16();
        if (m_to.form == CodeForm::kUtf8 && HasTables(m_from))
            return SkippingInvalid(TablesToUtf8(m_from, m_src, m_dst));
        if (m_from.form == CodeForm::kUtf8 && HasTables(m_to)) return FromUtf8();
        return ByChunks();
    }

    void SkipBad(std::size_t length) {
        m_behind = m_src;
        m_behind.at += length;
    }

    // Decides what an invalid sequence is: the beginning of a character whose end has yet to come,
    // or a lost one.
    Stop SkippingInvalid(Stop stop) {
        if (stop != Stop::kBad) return stop;
        if (m_src.open && IsCut(m_from, m_src)) return Stop::kCut;
        SkipBad(BadLength(m_from, m_src));
        return stop;
    }

    Stop ToUtf16() { return SkippingInvalid(Decode(m_from, m_src, m_dst.at, m_dst.end)); }

    Stop FromUtf16() {
        const std::size_t odd = static_cast<std::size_t>(m_src.end - m_src.at) % 2;
        Stop stop = Encode(m_to, m_src.at, m_src.end - odd, m_dst);
        if (stop == Stop::kDone && odd) stop = Stop::kBad;  // half a unit remains
        if (stop != Stop::kBad) return stop;
        if (m_src.open && IsCut(m_from, m_src)) return Stop::kCut;
        SkipBad(LengthOfUtf16());
        return stop;
    }

    std::size_t LengthOfUtf16() const {
        const std::size_t left = static_cast<std::size_t>(m_src.end - m_src.at);
        if (left < 2) return left;
        const bool pair = left >= 4 && IsHighSurrogate(LoadUnit(m_src.at)) &&
                          IsLowSurrogate(LoadUnit(m_src.at + 2));
        return pair ? 4 : 2;
    }

    Stop FromUtf8() {
        const Stop stop = Utf8ToTables(m_to, m_src, m_dst);
        if (stop != Stop::kBad) return stop;
        const CodeRead read = ReadUtf8(m_src.at, m_src.end);
        if (read.length == 0) return SkippingInvalid(stop);
        SkipBad(read.length);
        return stop;
    }

    // Converts by way of a small buffer of units. If the target stops within a chunk, the
    // corresponding source position is found by decoding the preceding units again. Chunks are
    // short after such a stop and then grow, so that consecutive lost characters do not each cost a
    // whole chunk.
    Stop ByChunks() {
        for (;; m_chunk = m_chunk < kLongest ? m_chunk * 2 : kLongest) {
            unsigned char units[kLongest];
            unsigned char* decoded = units;
            Source ahead = m_src;
            const Stop decoding = Decode(m_from, ahead, decoded, units + m_chunk);
            const unsigned char* encoded = units;
            const Stop encoding = Encode(m_to, encoded, decoded, m_dst);
            if (encoding != Stop::kDone) {
                const bool pair = IsHighSurrogate(LoadUnit(encoded));
                decoded = units;
                Decode(m_from, m_src, decoded, units + (encoded - units));
                m_behind = m_src;
                decoded = units;
                if (encoding == Stop::kBad)
                    Decode(m_from, m_behind, decoded, units + (pair ? 4 : 2));
                m_chunk = kShortest;
                return encoding;
            }
            m_src = ahead;
            if (decoding != Stop::kFull) return SkippingInvalid(decoding);
        }
    }

    bool PutSubstitute() {
        unsigned char unit[2];
        StoreUnit(unit, m_substitute);
        const unsigned char* units = unit;
        return Encode(m_to, units, unit + 2, m_dst) == Stop::kDone;
    }

    static constexpr std::size_t kShortest = 16, kLongest = 512;  // in bytes

    Transfer& m_transfer;
    const CodePage& m_from;
    const CodePage& m_to;
    const unsigned short m_substitute;
    Source m_src;
    Source m_behind{};
    Sink m_dst;
    std::size_t m_chunk = kLongest;
};

// Skips a byte-order mark, which no other code set has, and uses its byte order.
const CodePage* SkipByteOrderMark(Transfer& t, const CodePage* from) {
    for (const ByteOrderMark& mark : kByteOrderMarks) {
        if (mark.form != from->form || !mark.IsAt(t.src, t.srcEnd)) continue;
        t.src += mark.length;
        return mark.selects == mark.form ? from : PageOfForm(mark.selects);
    }
    return from;
}

}  // namespace

unsigned short SubstituteOf(const CodePage& page) {
    switch (page.substitute) {
        case Substitute::kGeta:
            return 0x3013;
        case Substitute::kReplacement:
            return 0xFFFD;
        default:
            return '?';
    }
}

bool ConvertPages(Transfer& t, const CodePage& from, const CodePage& to) {
    return Conversion(t, from, to).Run();
}

bool ConvertThroughUnicode(Transfer& t, int fromCodeSet, int toCodeSet) {
    const CodePage* from = FindListedCodePage(fromCodeSet);
    const CodePage* to = FindListedCodePage(toCodeSet);
    t.stop = Stop::kUnknown;
    if (!from || !to) return false;
    if (from != to) from = SkipByteOrderMark(t, from);
    return ConvertPages(t, *from, *to);
}

}  // namespace genutil
