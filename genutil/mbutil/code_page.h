// The characters of a code set: tables filled once, then read without lock, allocation or system
// call.
//
// The one-byte and two-byte codes of the Windows code pages are the platform's; EUC forms are cut
// from them by row and cell, and what no code page knows comes from tables of this module. UTF-8,
// UTF-16 and the code sets that switch by escape sequences have no tables of their own: the latter
// point to the EUC forms of their character sets.
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
    kPairs,  // one-byte and two-byte codes, and longer ones behind a prefix
    kIso2022Jp,
    kIso2022Cn,
    kIso2022Kr,
    kUtf16,
    kUtf16BigEndian,  // only where a byte-order mark says so
    kUtf8
};

struct CodePage {
    CodeForm form = CodeForm::kSingleByte;

    // The character of a one-byte code. ASCII maps to itself in every code set.
    std::uint16_t bytes[256];
    // That of a two-byte code at PairIndex(lead, trail); null in a single-byte code set.
    std::unique_ptr<std::uint16_t[]> pairs;
    // That of a two-byte code behind the prefix, likewise; null without such codes. A prefix of two
    // bytes names a plane; the cells of the next plane have a trail without its high bit.
    std::unique_ptr<std::uint16_t[]> prefixed;
    std::uint8_t prefix[2] = {};
    std::uint8_t prefixLength = 0;
    std::uint8_t longest = 1;  // bytes of the longest code

    bool isLead[256] = {};   // whether a byte begins a two-byte code
    bool isTrail[256] = {};  // whether it ends one

    // The way back: Back() gives a cell, see below. Rows hold 64 characters, as many as a last byte
    // of UTF-8 tells apart; the first row is empty.
    std::uint16_t backRow[0x10000 / 64] = {};
    std::unique_ptr<std::uint16_t[]> back;

    // Whether all one-byte and two-byte codes that begin with a byte are the codes of their
    // characters on the way back; a code set has several for some.
    bool returns[256] = {};
    // The bytes for which it is not so, as many as there is room for; their number may be more.
    static constexpr unsigned kMostAmbiguous = 8;
    std::uint8_t ambiguous[kMostAmbiguous] = {};
    unsigned ambiguousCount = 0;

    // The tables that a code set with escape sequences takes its characters from.
    const CodePage* base = nullptr;
    const CodePage* secondBase = nullptr;

    static std::size_t PairIndex(unsigned lead, unsigned trail) {
        return (static_cast<std::size_t>(lead) << 8 | trail) - 0x8000;
    }
    // 0: no code; below 0x100: a one-byte code; from 0x8000: a two-byte code, lead byte high;
    // between: the code behind the prefix, as its table has it but with the lead's high bit
    // cleared.
    unsigned Back(unsigned character) const {
        return back[backRow[character >> 6] + (character & 0x3F)];
    }
};

constexpr std::size_t kPairTableSize = 0x8000;
constexpr unsigned kLowestPairCell = 0x8000;

// Filled by FillCodePage on first use; see there.
constexpr int kCodePageSlots = 66;
extern std::atomic<const CodePage*> g_codePages[kCodePageSlots];
const CodePage* FillCodePage(int codeSet);

// The tables of a code set; null for a number that is not listed, and when memory runs out or the
// system lacks the code page. The first call for a code set fills them, on any thread.
inline const CodePage* FindListedCodePage(int codeSet) {
    if (codeSet < 0 || codeSet >= kCodePageSlots) return nullptr;
    const CodePage* page = g_codePages[codeSet].load(std::memory_order_acquire);
    return page ? page : FillCodePage(codeSet);
}

// The same with the tables of code set 0 for a number that is not listed.
const CodePage* FindCodePage(int codeSet);

}  // namespace genutil
