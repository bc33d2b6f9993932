// Conversion in pieces: characters that a piece cuts, byte-order marks, and what replaces a lost
// character.
#include "genutil/mbutil/converter.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "genutil/allocate.h"
#include "genutil/mbutil/ascii_units.h"
#include "genutil/mbutil/best_fit.h"
#include "genutil/mbutil/byte_order_mark.h"
#include "genutil/mbutil/code_page.h"
#include "genutil/mbutil/code_read.h"

using namespace genutil;

namespace {

constexpr unsigned kMark = 0xFEFF;
constexpr unsigned kReplaces = mbConvertBestFit | mbConvertUnicodeEscapes | mbConvertHtmlEscapes;

// Returns the number of 16-bit units of a character, and stores them.
std::size_t StoreCharacter(unsigned character, unsigned char* units) {
    if (character < 0x10000) {
        StoreUnit(units, character);
        return 1;
    }
    StoreUnit(units, 0xD7C0 + (character >> 10));
    StoreUnit(units + 2, 0xDC00 | (character & 0x3FF));
    return 2;
}

// Returns the number of characters of a text that ASCII represents.
std::size_t EscapeCharacter(unsigned character, bool html, char (&text)[16]) {
    int n;
    if (html)
        n = std::snprintf(text, sizeof text, "&#%u;", character);
    else if (character < 0x10000)
        n = std::snprintf(text, sizeof text, "\\u%04X", character);
    else
        n = std::snprintf(text, sizeof text, "\\u%04X\\u%04X", 0xD7C0 + (character >> 10),
                          0xDC00 | (character & 0x3FF));
    return static_cast<std::size_t>(n);
}

}  // namespace

bool PieceConverter::FindTables(int from, int to) {
    m_from = FindListedCodePage(from);
    m_to = FindListedCodePage(to);
    return m_from && m_to;
}

bool PieceConverter::Open(int from, int to, unsigned flags) {
    m_flags = flags;
    m_fromCodeSet = from;
    m_toCodeSet = to;
    m_copies = from == to;
    m_direct = FindDirectConverter(from, to);
    Restart();
    // The pairs that are converted directly need tables only to tell what a lost character is.
    return (m_direct && !(flags & kReplaces)) || FindTables(from, to);
}

void PieceConverter::OpenRelated(int from, int to) {
    m_direct = RelatedConverter(from, to);
    Restart();
}

void PieceConverter::Restart() {
    if (m_from) FindTables(m_fromCodeSet, m_toCodeSet);  // in their first byte order
    m_markRead = m_markWritten = false;
    m_reading = m_writing = {};
    m_consumed = m_heldCount = 0;
}

// Holds the first bytes of the text until it is known whether they are a mark. Returns false if
// that needs more bytes.
bool PieceConverter::ReadMark(Transfer& piece, bool last) {
    const bool drops = !m_copies || (m_flags & (mbConvertMark | mbConvertNoMark)) != 0;
    for (const ByteOrderMark& mark : kByteOrderMarks) {
        if (!m_from || m_from->form != mark.form) continue;
        while (m_heldCount < mark.length && piece.src < piece.srcEnd &&
               std::memcmp(m_held, mark.bytes, m_heldCount) == 0)
            m_held[m_heldCount++] = *piece.src++;
        if (std::memcmp(m_held, mark.bytes, m_heldCount) != 0) continue;
        if (m_heldCount < mark.length) {
            if (last) continue;
            return false;
        }
        if (mark.selects != mark.form) {
            m_from = PageOfForm(mark.selects);
            if (m_copies && !(m_flags & mbConvertMark)) m_to = m_from;
        }
        if (drops) m_heldCount = 0;
        break;
    }
    m_markRead = true;
    return true;
}

bool PieceConverter::WriteMark(Transfer& piece) {
    if ((m_flags & mbConvertMark) && m_to && IsUnicode(m_to->form)) {
        unsigned char unit[2];
        StoreUnit(unit, kMark);
        const unsigned char* units = unit;
        Sink dst{piece.dst, piece.dstEnd};
        if (Encode(*m_to, units, unit + 2, dst) != Stop::kDone) return false;
        piece.dst = dst.at;
    }
    m_markWritten = true;
    return true;
}

// Stores what replaces the lost character of a transfer, apart from its substitute. Returns the
// number of units, or 0 if the bytes are no character or nothing replaces it.
std::size_t PieceConverter::ReplacementOf(const Transfer& part, unsigned char* units,
                                          std::size_t size, bool* bestFit) const {
    Source src{part.src, part.src + part.lossLength, part.reading};
    unsigned char decoded[4], *end = decoded;
    if (Decode(*m_from, src, end, decoded + sizeof decoded) != Stop::kDone || end == decoded)
        return 0;
    unsigned character = LoadUnit(decoded);
    if (end == decoded + 4)
        character = 0x10000 + ((character & 0x3FF) << 10 | (LoadUnit(decoded + 2) & 0x3FF));
    if ((m_flags & mbConvertBestFit) && !*bestFit) {
        *bestFit = true;
        const char plain =
            character < 0x10000 ? PlainLetter(static_cast<std::uint16_t>(character)) : '\0';
        if (plain) return StoreCharacter(static_cast<unsigned char>(plain), units);
    }
    if (!(m_flags & (mbConvertUnicodeEscapes | mbConvertHtmlEscapes))) return 0;
    char text[16];
    const std::size_t n = EscapeCharacter(character, (m_flags & mbConvertHtmlEscapes) != 0, text);
    for (std::size_t i = 0; i < n && 2 * i < size; ++i)
        StoreUnit(units + 2 * i, static_cast<unsigned char>(text[i]));
    return n;
}

// Writes what replaces a lost character and steps over it. Returns false if there is no room.
bool PieceConverter::Replace(Transfer& part) const {
    unsigned char units[32];
    bool bestFit = false;
    std::size_t n = ReplacementOf(part, units, sizeof units, &bestFit);
    if (n == 0) n = StoreCharacter(SubstituteOf(*m_to), units);
    const unsigned char* at = units;
    Sink dst{part.dst, part.dstEnd, part.writing};
    Stop stop = Encode(*m_to, at, units + 2 * n, dst);
    if (stop == Stop::kBad) {  // a shift, which has no plainer form
        n = StoreCharacter(SubstituteOf(*m_to), units);
        at = units;
        dst = {part.dst, part.dstEnd, part.writing};
        stop = Encode(*m_to, at, units + 2 * n, dst);
    }
    if (stop != Stop::kDone) return false;
    part.dst = dst.at;
    part.writing = dst.state;
    part.losses.Add(part.src);
    part.src += part.lossLength;
    part.reading = part.afterLoss;
    return true;
}

// Converts as far as possible, in the shift states in which the previous call ended.
Stop PieceConverter::Run(Transfer& part, Ending ending) {
    part.ending = ending;
    part.stopsAtLoss = (m_flags & (kReplaces | mbConvertStop)) != 0;
    part.reading = m_reading;
    part.writing = m_writing;
    for (;;) {
        if (m_direct)
            m_direct(part);
        else if (m_from == m_to && !m_from->base)
            CopyValid(part, *m_from);
        else
            ConvertPages(part, *m_from, *m_to);
        if (part.stop != Stop::kBad || (m_flags & mbConvertStop)) break;
        if (Replace(part)) continue;
        part.stop = Stop::kFull;
        break;
    }
    m_reading = part.reading;
    m_writing = part.writing;
    return part.stop;
}

// Converts the held bytes together with the first bytes of the piece. After kDone, the piece begins
// with a character.
Stop PieceConverter::NextHeld(Transfer& piece, bool last) {
    unsigned char joint[kJoint];
    const auto left = static_cast<std::size_t>(piece.srcEnd - piece.src);
    const std::size_t added = std::min(left, kJoint - m_heldCount);
    std::memcpy(joint, m_held, m_heldCount);
    std::memcpy(joint + m_heldCount, piece.src, added);
    Transfer part{joint, joint + m_heldCount + added, piece.dst, piece.dstEnd, piece.losses};
    part.losses.Continue(joint, m_consumed - m_heldCount);
    const Stop stop = Run(part, last && added == left ? Ending::kLast : Ending::kOpen);
    piece.dst = part.dst;
    piece.losses = part.losses;
    const auto done = static_cast<std::size_t>(part.src - joint);
    if (done >= m_heldCount) {
        piece.src += done - m_heldCount;
        m_consumed += done - m_heldCount;
        m_heldCount = 0;
        return stop == Stop::kCut ? Stop::kDone : stop;
    }
    m_heldCount -= done;
    std::memmove(m_held, m_held + done, m_heldCount);
    if (stop != Stop::kCut) return stop;
    // Even all of the piece does not complete the character.
    std::memcpy(m_held + m_heldCount, piece.src, added);
    m_heldCount += added;
    m_consumed += added;
    piece.src += added;
    return stop;
}

Stop PieceConverter::Next(Transfer& piece, bool last) {
    const unsigned char* const begin = piece.src;
    if (!m_markRead) {
        const bool known = ReadMark(piece, last);
        m_consumed += static_cast<std::size_t>(piece.src - begin);
        if (!known) return Stop::kCut;
    }
    if (!m_markWritten && !WriteMark(piece)) return Stop::kFull;
    if (m_heldCount > 0) {
        const Stop stop = NextHeld(piece, last);
        if (stop != Stop::kDone) return stop;
    }
    piece.losses.Continue(piece.src, m_consumed);
    const unsigned char* const direct = piece.src;
    const Stop stop = Run(piece, last ? Ending::kLast : Ending::kOpen);
    m_consumed += static_cast<std::size_t>(piece.src - direct);
    if (stop != Stop::kCut) return stop;
    m_heldCount = static_cast<std::size_t>(piece.srcEnd - piece.src);
    std::memcpy(m_held, piece.src, m_heldCount);
    m_consumed += m_heldCount;
    piece.src = piece.srcEnd;
    return stop;
}

mbConverter* mbOpenConverter(int fromCodeSet, int toCodeSet, unsigned flags) {
    mbConverter* const converter = New<mbConverter>();
    if (!converter || converter->pieces.Open(fromCodeSet, toCodeSet, flags)) return converter;
    delete converter;
    return nullptr;
}

int mbConvertNext(mbConverter* converter, const char** src, size_t* srcLength, char** dst,
                  size_t* dstRoom, int last, mbConversion* report) {
    const auto begin = reinterpret_cast<const unsigned char*>(*src ? *src : "");
    const auto out = reinterpret_cast<unsigned char*>(*dst);
    Transfer piece{begin, begin + *srcLength, out, out + *dstRoom,
                   Losses(begin, report ? report->lostAt : nullptr,
                          report && report->lostAt ? report->lostAtSize : 0)};
    piece.losses.AddEarlier(converter->lost);
    const Stop stop = converter->pieces.Next(piece, last != 0);
    converter->produced += static_cast<std::size_t>(piece.dst - out);
    converter->lost = piece.losses.Count();
    *srcLength = static_cast<std::size_t>(piece.srcEnd - piece.src);
    *src += piece.src - begin;
    *dst += piece.dst - out;
    *dstRoom = static_cast<std::size_t>(piece.dstEnd - piece.dst);
    if (report) {
        report->consumed = converter->pieces.Consumed();
        report->produced = converter->produced;
        report->lost = converter->lost;
    }
    if (stop == Stop::kFull) return mbNextFull;
    if (stop == Stop::kBad) return mbNextLost;
    if (stop == Stop::kUnknown) return mbNextFailed;
    if (last) {
        converter->pieces.Restart();
        converter->produced = converter->lost = 0;
    }
    return mbNextDone;
}

void mbCloseConverter(mbConverter* converter) {
    delete converter;
}
