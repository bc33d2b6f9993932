// EUC-TW: the Big5 characters of the cells of CNS 11643. Plane 1 is written in two bytes, planes 2
// and 3 in four. Big5 has seven characters of plane 3.
//
// Circled and parenthesised digits, small roman numerals and radicals are an extension of Big5 that
// Windows leaves to the user, in private characters from U+F6B1 on. They belong to CNS 11643
// proper, so they map to their own characters here.
#include <algorithm>
#include <iterator>
#include <new>

#include "genutil/mbutil/chinese.h"
#include "genutil/mbutil/code_page_fill.h"

namespace genutil {

namespace {

std::uint16_t* CellOf(CodePage& page, unsigned cns) {
    const unsigned plane = cns >> 16, row = cns >> 8 & 0x7F, cell = cns & 0x7F;
    if (plane == 1) return &page.pairs[CodePage::PairIndex(row | 0x80, cell | 0x80)];
    if (plane == 2) return &page.prefixed[CodePage::PairIndex(row | 0x80, cell | 0x80)];
    return plane == 3 ? &page.prefixed[CodePage::PairIndex(row | 0x80, cell)] : nullptr;
}

constexpr unsigned kFirstPrivate = 0xF6B1;
constexpr std::uint16_t kRadicals[] = {0x4E36, 0x4E3F, 0x4E85, 0x4EA0, 0x5182, 0x5196, 0x51AB,
                                       0x52F9, 0x5338, 0x5369, 0x53B6, 0x590A, 0x5B80, 0x5DDB,
                                       0x5E7A, 0x5E7F, 0x5EF4, 0x5F50, 0x5F61, 0x6534, 0x65E0,
                                       0x7592, 0x7676, 0x8FB5, 0x96B6};

unsigned CharacterOf(unsigned big5Code, unsigned big5Character) {
    if (big5Code == 0xA2CC) return 0x3038;  // the numerals ten and thirty, not the hanzi that Big5
    if (big5Code == 0xA2CE) return 0x303A;  // duplicates there
    const unsigned index = big5Character - kFirstPrivate;  // wraps for a lower character
    if (index < 10) return 0x2460 + index;
    if (index < 20) return 0x2474 + index - 10;
    if (index < 30) return 0x2170 + index - 20;
    return index < 30 + std::size(kRadicals) ? kRadicals[index - 30] : big5Character;
}

}  // namespace

bool FillEucTw(CodePage& page, const CodePage* big5) {
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
        if (cell && *cell == kNoCharacter)
            *cell = static_cast<std::uint16_t>(CharacterOf(big5Code, character));
    }
    return true;
}

}  // namespace genutil
