// The characters of a code set, in tables that are filled once and then read without a lock, an
// allocation or a system call.
//
// The one-byte and two-byte codes of the Windows code pages come from the platform. EUC forms are
// derived from them by row and cell, and characters that no code page has come from tables of this
// module. UTF-8, UTF-16 and the code sets that switch by escape sequences have no tables of their
// own. The latter refer to the EUC forms of their character sets.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "osutil/platform/text/codepages.h"

namespace genutil {

using platform::kNoCharacter;

enum class CodeForm : std::uint8_t {
    kSingleByte,
    kPairs,  // one-byte and two-byte codes, and longer ones after a prefix
    kIso2022Jp,
    kIso2022Cn,
    kIso2022Kr,
    kGb18030,  // kPairs, and codes of four bytes for all other characters
    kUtf16,
    kUtf16BigEndian,
    kUtf32,
    kUtf32BigEndian,
    kUtf8
};

constexpr bool IsUnicode(CodeForm form) {
    return form >= CodeForm::kUtf16;
}
// Returns the number of bytes of a unit.
constexpr unsigned UnitSize(CodeForm form) {
    return form == CodeForm::kUtf16 || form == CodeForm::kUtf16BigEndian   ? 2
           : form == CodeForm::kUtf32 || form == CodeForm::kUtf32BigEndian ? 4
                                                                           : 1;
}

// The number of four-byte codes of GB18030 for characters of the first plane.
constexpr unsigned kLongCodes = 39420;

// What replaces a lost character: "?", the geta mark of Japanese or U+FFFD of Unicode.
enum class Substitute : std::uint8_t { kQuestion, kGeta, kReplacement };

struct CodePage {
    CodeForm form = CodeForm::kSingleByte;
    Substitute substitute = Substitute::kQuestion;

    // The characters of the one-byte codes. ASCII maps to itself in every code set.
    std::uint16_t bytes[256];
    // The characters of the two-byte codes, at PairIndex(lead, trail); null in a single-byte code
    // set.
    std::unique_ptr<std::uint16_t[]> pairs;
    // The characters of the two-byte codes after the prefix, at the same index; null if there are
    // none. A prefix of two bytes names a plane. In the cells of the next plane, the high bit of
    // the trail byte is cleared.
    std::unique_ptr<std::uint16_t[]> prefixed;
    std::uint8_t prefix[2] = {};
    std::uint8_t prefixLength = 0;
    std::uint8_t longest = 1;  // number of bytes of the longest code

    // The characters of the four-byte codes of GB18030, and the reverse, only for characters
    // without a shorter code; null in any other code set.
    std::unique_ptr<std::uint16_t[]> longCodes, longBack;

    bool isLead[256] = {};   // true if a byte begins a two-byte code
    bool isTrail[256] = {};  // true if a byte ends a two-byte code

    // The reverse mapping; Back() returns a cell of it. A row has 64 characters, because the last
    // byte of a UTF-8 sequence distinguishes as many. The first row is empty.
    std::uint16_t backRow[0x10000 / 64] = {};
    std::unique_ptr<std::uint16_t[]> back;

    // True if all one-byte and two-byte codes that begin with a byte are the codes to which their
    // characters map back. A code set has several codes for some characters.
    bool returns[256] = {};
    // The bytes for which `returns` is false, as far as there is room. ambiguousCount may exceed
    // kMostAmbiguous.
    static constexpr unsigned kMostAmbiguous = 8;
    std::uint8_t ambiguous[kMostAmbiguous] = {};
    unsigned ambiguousCount = 0;

    // The tables from which a code set with escape sequences takes its characters.
    const CodePage* base = nullptr;
    const CodePage* secondBase = nullptr;

    static std::size_t PairIndex(unsigned lead, unsigned trail) {
        return (static_cast<std::size_t>(lead) << 8 | trail) - 0x8000;
    }
    // Returns 0 if there is no code, a one-byte code below 0x100, or a two-byte code from 0x8000,
    // with the lead byte high. Values in between are codes after the prefix, as in their table but
    // with the high bit of the lead byte cleared.
    unsigned Back(unsigned character) const {
        return back[backRow[character >> 6] + (character & 0x3F)];
    }
};

constexpr std::size_t kPairTableSize = 0x8000;
constexpr unsigned kLowestPairCell = 0x8000;

// Filled by FillCodePage() on first use; see FindListedCodePage().
constexpr int kCodePageSlots = 114;
// Code sets from here on are for conversions only.
constexpr int kFirstConversionOnly = 100;
extern std::atomic<const CodePage*> g_codePages[kCodePageSlots];
const CodePage* FillCodePage(int codeSet);

// Returns the page of a form of UTF-16 or UTF-32.
const CodePage* PageOfForm(CodeForm form);

// Returns the tables of a code set. Returns null for an unlisted number, if allocation fails, or if
// the system lacks the code page. The first call for a code set, on any thread, fills them.
inline const CodePage* FindListedCodePage(int codeSet) {
    if (codeSet < 0 || codeSet >= kCodePageSlots) return nullptr;
    const CodePage* page = g_codePages[codeSet].load(std::memory_order_acquire);
    return page ? page : FillCodePage(codeSet);
}

// Same as above for the functions on the current code set: returns the tables of code set 0 for an
// unlisted number and for a code set of conversions only.
const CodePage* FindCodePage(int codeSet);

}  // namespace genutil
