// The mapping from characters back to codes, and the choice between several codes of a character.
#include <new>

#include "genutil/mbutil/code_page_fill.h"
#include "mbutil.h"

namespace genutil {

namespace {

// Of the codes that share a character the lowest is chosen, with exceptions that follow Windows. In
// Shift-JIS, the vendor-selected rows come after the extension rows with the same characters. Ten
// Big5 codes are duplicates, of which the lower one is not always chosen.
bool ComesLast(int codeSet, unsigned lead) {
    return codeSet == mbShiftJis && (lead == 0xED || lead == 0xEE);
}
constexpr std::uint16_t kBig5Choices[] = {0xA451, 0xA4CA, 0xF9E9, 0xF9EA, 0xF9EB, 0xF9F9};

// Characters that other published tables of JIS X 0208 assign to the same code. They denote the
// same character, so text from such a system converts.
struct Variant {
    std::uint16_t other, ours;
};
constexpr Variant kJisVariants[] = {{0x301C, 0xFF5E}, {0x2016, 0x2225}, {0x2212, 0xFF0D},
                                    {0x2014, 0x2015}, {0x00A2, 0xFFE0}, {0x00A3, 0xFFE1},
                                    {0x00AC, 0xFFE2}};

bool UsesJisVariants(int codeSet) {
    return codeSet == mbShiftJis || codeSet == mbEucJp;
}

// Calls visit(other, ours) for each character that has no code of its own but denotes the same as
// one that has.
template <class Visit>
void ForEachVariant(int codeSet, Visit visit) {
    if (UsesJisVariants(codeSet))
        for (const Variant& variant : kJisVariants) visit(variant.other, variant.ours);
    if (codeSet == mbJohab)
        for (unsigned i = 0; i < kKoreanLetters; ++i)
            visit(kConjoiningLetters[i], kFirstKoreanLetter + i);
}

class BackTable {
  public:
    explicit BackTable(CodePage& page) : m_page(page) {}

    // Allocates a row of 64 cells for each group of 64 characters in use, after an empty row.
    bool Lay(int codeSet) {
        bool used[kRows] = {};
        const auto note = [&](unsigned character) {
            if (character != kNoCharacter) used[character >> 6] = true;
        };
        for (const std::uint16_t character : m_page.bytes) note(character);
        for (const auto* table : {m_page.pairs.get(), m_page.prefixed.get()})
            for (std::size_t i = 0; table && i < kPairTableSize; ++i) note(table[i]);
        ForEachVariant(codeSet, [&](unsigned other, unsigned) { note(other); });
        std::size_t rows = 1;
        for (unsigned row = 0; row < kRows; ++row)
            if (used[row]) m_page.backRow[row] = static_cast<std::uint16_t>(rows++ * 64);
        m_page.back.reset(new (std::nothrow) std::uint16_t[rows * 64]());
        return m_page.back != nullptr;
    }

    std::uint16_t& Cell(unsigned character) {
        return m_page.back[m_page.backRow[character >> 6] + (character & 0x3F)];
    }
    void Offer(unsigned character, unsigned cell) {
        if (character != kNoCharacter && Cell(character) == 0)
            Cell(character) = static_cast<std::uint16_t>(cell);
    }
    void OfferPairs(const std::uint16_t* table, unsigned lead, unsigned clear) {
        for (unsigned trail = 0; trail < 256; ++trail)
            Offer(table[CodePage::PairIndex(lead, trail)], (lead << 8 | trail) & ~clear);
    }

  private:
    static constexpr unsigned kRows = 0x10000 / 64;  // those of surrogates are never used

    CodePage& m_page;
};

bool ReturnsWithin(const CodePage& page, unsigned lead) {
    if (page.prefixed && lead == page.prefix[0]) return false;  // not examined
    if (page.bytes[lead] != kNoCharacter) return page.Back(page.bytes[lead]) == lead;
    for (unsigned trail = 0; page.pairs && lead >= 0x80 && trail < 256; ++trail) {
        const unsigned character = page.pairs[CodePage::PairIndex(lead, trail)];
        if (character != kNoCharacter && page.Back(character) != (lead << 8 | trail)) return false;
    }
    return true;
}

bool FillTables(CodePage& page, int codeSet) {
    BackTable back(page);
    if (!back.Lay(codeSet)) return false;
    for (unsigned byte = 1; byte < 256; ++byte) back.Offer(page.bytes[byte], byte);
    if (!page.pairs) return true;
    if (codeSet == mbBig5)
        for (const unsigned code : kBig5Choices)
            back.Offer(page.pairs[CodePage::PairIndex(code >> 8, code & 0xFF)], code);
    for (const bool last : {false, true})
        for (unsigned lead = 0x80; lead < 256; ++lead)
            if (ComesLast(codeSet, lead) == last) back.OfferPairs(page.pairs.get(), lead, 0);
    for (unsigned lead = 0x80; page.prefixed && lead < 256; ++lead)
        back.OfferPairs(page.prefixed.get(), lead, 0x8000);
    ForEachVariant(codeSet,
                   [&](unsigned other, unsigned ours) { back.Offer(other, back.Cell(ours)); });
    return true;
}

}  // namespace

bool FillBack(CodePage& page, int codeSet) {
    if (!FillTables(page, codeSet)) return false;
    for (unsigned lead = 0; lead < 256; ++lead) {
        page.returns[lead] = ReturnsWithin(page, lead);
        if (!page.returns[lead] && page.ambiguousCount++ < CodePage::kMostAmbiguous)
            page.ambiguous[page.ambiguousCount - 1] = static_cast<std::uint8_t>(lead);
    }
    return true;
}

}  // namespace genutil
