// GB18030: the two-byte codes of code page 936 and its extensions, and four-byte codes for every
// other character. Those of the first plane follow the order of the characters that have no shorter
// code.
#include <algorithm>
#include <new>
#include <utility>

#include "genutil/mbutil/code_page_fill.h"

namespace genutil {

namespace {

struct Run {
    std::uint16_t code, character;
    std::uint8_t count;
};
constexpr Run kRuns[] = {
#include "genutil/mbutil/gb18030.inc"
};

// The edition of 2005 exchanges the characters of these codes, of which the second has four bytes.
constexpr unsigned kSwappedPair = 0xA8BC;
constexpr std::uint16_t kSwapped[] = {0x1E3F, 0xE7C7};

}  // namespace

bool FillGb18030(CodePage& page) {
    constexpr unsigned kChineseCodePage = 936;
    page.longCodes.reset(new (std::nothrow) std::uint16_t[kLongCodes]);
    page.longBack.reset(new (std::nothrow) std::uint16_t[0x10000]);
    if (!page.longCodes || !page.longBack || !FillWindows(page, kChineseCodePage)) return false;
    for (const unsigned byte : {0x80, 0xFF}) {
        page.bytes[byte] = kNoCharacter;
        page.isLead[byte] = false;
    }
    for (const Run& run : kRuns)
        for (unsigned i = 0; i < run.count; ++i)
            page.pairs[run.code + i - 0x8000] = static_cast<std::uint16_t>(run.character + i);
    // Marks the characters with shorter codes, then numbers the others.
    constexpr std::uint16_t kFree = 0xFFFF, kShort = 0xFFFE;
    std::fill_n(page.longBack.get(), 0x10000, kFree);
    for (unsigned c = 0; c < 0x80; ++c) page.longBack[c] = kShort;
    for (std::size_t i = 0; i < kPairTableSize; ++i)
        if (page.pairs[i] != kNoCharacter) page.longBack[page.pairs[i]] = kShort;
    std::uint16_t next = 0;
    for (unsigned c = 0x80; c < 0x10000 && next < kLongCodes; ++c) {
        if (page.longBack[c] == kShort || (c >= 0xD800 && c < 0xE000)) continue;
        page.longCodes[next] = static_cast<std::uint16_t>(c);
        page.longBack[c] = next++;
    }
    const std::uint16_t swapped = page.longBack[kSwapped[0]];
    page.pairs[kSwappedPair - 0x8000] = kSwapped[0];
    page.longCodes[swapped] = kSwapped[1];
    page.longBack[kSwapped[1]] = swapped;
    page.form = CodeForm::kGb18030;
    page.longest = 4;
    return true;
}

}  // namespace genutil
