#include "genutil/mbutil/code_page_fill.h"

#include <algorithm>
#include <new>

namespace genutil {

namespace {

constexpr unsigned kJapaneseCodePage = 932;

struct ByteRange {
    std::uint16_t codePage;
    std::uint8_t first, last;
};
constexpr ByteRange kTrailBytes[] = {
    {932, 0x40, 0x7E}, {932, 0x80, 0xFC},  {936, 0x40, 0x7E},  {936, 0x80, 0xFE},
    {949, 0x41, 0x5A}, {949, 0x61, 0x7A},  {949, 0x81, 0xFE},  {950, 0x40, 0x7E},
    {950, 0xA1, 0xFE}, {1361, 0x31, 0x7E}, {1361, 0x81, 0xFE},
};

bool IsDoubleByte(unsigned codePage) {
    for (const ByteRange& range : kTrailBytes)
        if (range.codePage == codePage) return true;
    return false;
}

std::unique_ptr<std::uint16_t[]> NewTable(std::size_t cells, std::uint16_t value) {
    std::unique_ptr<std::uint16_t[]> table(new (std::nothrow) std::uint16_t[cells]);
    if (table) std::fill_n(table.get(), cells, value);
    return table;
}

// The platform provides a cell for every two bytes. No lead byte is in the lower half.
std::unique_ptr<std::uint16_t[]> ReadPairs(unsigned codePage, std::uint16_t* bytes) {
    auto all = NewTable(0x10000, 0), upper = NewTable(kPairTableSize, 0);
    if (!all || !upper || !platform::ReadCodePage(codePage, bytes, all.get())) return nullptr;
    std::copy_n(all.get() + 0x8000, kPairTableSize, upper.get());
    return upper;
}

bool IsEucByte(unsigned byte) {
    return byte >= 0xA1 && byte <= 0xFE;
}

template <typename Visitor>
void ForEachEucPair(Visitor visit) {
    for (unsigned lead = 0xA1; lead <= 0xFE; ++lead)
        for (unsigned trail = 0xA1; trail <= 0xFE; ++trail) visit(lead, trail);
}

struct ChartRow {
    std::uint8_t row;
    const char* cells;
};
constexpr ChartRow kJisX0212[] = {
#include "genutil/mbutil/jisx0212.inc"
};

unsigned HexDigit(char c) {
    return static_cast<unsigned>(c <= '9' ? c - '0' : c - 'A' + 10);
}

unsigned Distance(char mark) {
    if (mark <= '9') return static_cast<unsigned>(mark - '0' + 1);
    return static_cast<unsigned>(mark <= 'Z' ? mark - 'A' + 11 : mark - 'a' + 37);
}

// tools/tables/jisx0212.py describes the notation.
void UnpackJisX0212(std::uint16_t* table) {
    unsigned character = 0;
    for (const ChartRow& row : kJisX0212) {
        unsigned trail = 0xA1;
        for (const char* mark = row.cells; *mark; ++mark, ++trail) {
            if (*mark == '.') continue;
            if (*mark == '/') {
                character = 0;
                for (int i = 0; i < 4; ++i) character = character << 4 | HexDigit(*++mark);
            } else {
                character += Distance(*mark);
            }
            table[CodePage::PairIndex(row.row + 0xA0u, trail)] =
                static_cast<std::uint16_t>(character);
        }
    }
    // The chart says "~", which has a code of its own. As in Windows, it is the full-width form.
    table[CodePage::PairIndex(0xA2, 0xB7)] = 0xFF5E;
}

}  // namespace

bool FillWindows(CodePage& page, unsigned codePage) {
    if (!IsDoubleByte(codePage)) return platform::ReadCodePage(codePage, page.bytes, nullptr);
    page.form = CodeForm::kPairs;
    page.longest = 2;
    page.pairs = ReadPairs(codePage, page.bytes);
    if (!page.pairs) return false;
    for (unsigned byte = 0; byte < 256; ++byte)
        page.isLead[byte] = page.bytes[byte] == kNoCharacter;
    for (const ByteRange& range : kTrailBytes)
        if (range.codePage == codePage)
            std::fill(page.isTrail + range.first, page.isTrail + range.last + 1, true);
    return true;
}

bool BeginEuc(CodePage& page) {
    page.form = CodeForm::kPairs;
    page.longest = 2;
    page.pairs = NewTable(kPairTableSize, kNoCharacter);
    for (unsigned byte = 0; byte < 256; ++byte) {
        page.bytes[byte] = byte < 0x80 ? static_cast<std::uint16_t>(byte) : kNoCharacter;
        page.isLead[byte] = page.isTrail[byte] = IsEucByte(byte);
    }
    return page.pairs != nullptr;
}

bool FillCutToEuc(CodePage& page, unsigned codePage) {
    std::uint16_t bytes[256];
    const auto whole = ReadPairs(codePage, bytes);
    if (!whole || !BeginEuc(page)) return false;
    ForEachEucPair([&](unsigned lead, unsigned trail) {
        const std::size_t index = CodePage::PairIndex(lead, trail);
        page.pairs[index] = whole[index];
    });
    return true;
}

bool FillEucJp(CodePage& page) {
    std::uint16_t bytes[256];
    const auto shiftJis = ReadPairs(kJapaneseCodePage, bytes);
    page.prefixed = NewTable(kPairTableSize, kNoCharacter);
    if (!shiftJis || !page.prefixed || !BeginEuc(page)) return false;
    ForEachEucPair([&](unsigned lead, unsigned trail) {
        const unsigned row = lead - 0xA1, cell = trail - 0xA1;  // counted from 0
        const unsigned high = row / 2 + (row < 62 ? 0x81u : 0xC1u);
        const unsigned low = row % 2 ? cell + 0x9F : cell + (cell < 63 ? 0x40u : 0x41u);
        page.pairs[CodePage::PairIndex(lead, trail)] = shiftJis[CodePage::PairIndex(high, low)];
    });
    for (unsigned trail = 0xA1; trail <= 0xDF; ++trail)
        page.pairs[CodePage::PairIndex(0x8E, trail)] = bytes[trail];
    UnpackJisX0212(page.prefixed.get());
    page.prefix[0] = 0x8F;
    page.prefixLength = 1;
    page.longest = 3;
    return true;
}

bool Fill8859(CodePage& page, unsigned part) {
    static constexpr struct {
        std::uint8_t part;
        std::uint16_t upper[96];
    } kParts[] = {
#include "genutil/mbutil/iso8859.inc"
    };
    for (const auto& row : kParts)
        for (unsigned byte = 0; row.part == part && byte < 256; ++byte)
            page.bytes[byte] =
                byte < 0xA0 ? static_cast<std::uint16_t>(byte) : row.upper[byte - 0xA0];
    return true;
}

}  // namespace genutil
