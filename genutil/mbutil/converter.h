// A conversion in pieces of any size. Between two pieces it holds no more than the bytes of one
// character whose end has yet to come, and the shift states of both texts.
#pragma once

#include <cstddef>

#include "genutil/mbutil/pivot.h"
#include "genutil/mbutil/transcode.h"
#include "mbutil.h"

namespace genutil {

class PieceConverter {
  public:
    // Begins a text, converted as by mbConvert. Returns false if a code set has no tables.
    // @param flags bits of mbConverterFlags.
    bool Open(int from, int to, unsigned flags);
    // Begins a text that is converted as by convertStrExt.
    void OpenRelated(int from, int to);
    // Begins another text with the same code sets and flags.
    void Restart();

    // Converts a piece. The piece's losses must continue those of the text; its other fields except
    // the two ranges are ignored. After kCut, the piece is consumed.
    // @param last the piece is the last of its text.
    Stop Next(Transfer& piece, bool last);

    std::size_t Consumed() const { return m_consumed; }
    // The code form of the source, with the byte order that a mark has selected; null if the
    // conversion does without tables.
    const CodePage* Form() const { return m_from; }
    bool HasBegun() const { return m_markRead; }

  private:
    bool FindTables(int from, int to);
    bool ReadMark(Transfer& piece, bool last);
    bool WriteMark(Transfer& piece);
    Stop NextHeld(Transfer& piece, bool last);
    Stop Run(Transfer& part, Ending ending);
    bool Replace(Transfer& part) const;
    std::size_t ReplacementOf(const Transfer& part, unsigned char* units, std::size_t size,
                              bool* bestFit) const;

    static constexpr std::size_t kMostHeld = 8, kJoint = 24;

    Converter m_direct = nullptr;      // converts without Unicode
    const CodePage* m_from = nullptr;  // null if the direct converter needs no tables
    const CodePage* m_to = nullptr;
    int m_fromCodeSet = 0, m_toCodeSet = 0;
    unsigned m_flags = 0;
    bool m_copies = false;  // the text remains in its code set
    bool m_markRead = false, m_markWritten = false;
    ShiftState m_reading{}, m_writing{};
    std::size_t m_consumed = 0;  // bytes of the text in all pieces
    unsigned char m_held[kMostHeld];
    std::size_t m_heldCount = 0;
};

}  // namespace genutil

struct mbConverter {
    genutil::PieceConverter pieces;
    std::size_t produced = 0, lost = 0;
};
