// EUC-TW: the characters that Big5 has for the cells of CNS 11643. Plane 1 is written in two bytes,
// planes 2 and 3 in four; of plane 3 Big5 has seven.
#include <algorithm>
#include <new>

#include "genutil/mbutil/chinese.h"
#include "genutil/mbutil/code_page_fill.h"
#include "mbutil.h"

namespace genutil {

namespace {

std::uint16_t* CellOf(CodePage& page, unsigned cns) {
    const unsigned plane = cns >> 16, row = cns >> 8 & 0x7F, cell = cns & 0x7F;
    if (plane == 1) return &page.pairs[CodePage::PairIndex(row | 0x80, cell | 0x80)];
    if (plane == 2) return &page.prefixed[CodePage::PairIndex(row | 0x80, cell | 0x80)];
    return plane == 3 ? &page.prefixed[CodePage::PairIndex(row | 0x80, cell)] : nullptr;
}

}  // namespace

bool FillEucTw(CodePage& page) {
    const CodePage* big5 = FindCodePage(mbBig5);
    page.prefixed.reset(new (std::nothrow) std::uint16_t[kPairTableSize]);
    if (!big5 || !page.prefixed || !BeginEuc(page)) return false;
    std::fill_n(page.prefixed.get(), kPairTableSize, kNoCharacter);
    page.prefix[0] = 0x8E;
    page.prefix[1] = 0xA2;
    page.prefixLength = 2;
    page.longest = 4;
    for (unsigned big5Code = kLowestPairCell; big5Code < 0x10000; ++big5Code) {
        const unsigned character = big5->pairs[CodePage::PairIndex(big5Code >> 8, big5Code & 0xFF)];
        const unsigned cns = character == kNoCharacter ? 0 : CnsFromBig5(big5Code);
        std::uint16_t* cell = cns ? CellOf(page, cns) : nullptr;
        if (cell && *cell == kNoCharacter) *cell = static_cast<std::uint16_t>(character);
    }
    return true;
}

}  // namespace genutil
