#include "genutil/mbutil/detect_encodings.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <memory>
#include <new>

#include "genutil/mbutil/code_page.h"
#include "mbutil.h"

namespace genutil::detect {

namespace {

struct EncodingRow {
    const char* name;
    std::int16_t codeSet;
    Script script;
    std::uint8_t bits;  // cost in bits
    std::uint8_t regions;
};
// Of two in which a text is the same, the first is reported.
constexpr EncodingRow kRows[kEncodings] = {
    {"windows-1252", mbWestern, Script::kLatin, 0, kWest},
    {"windows-1250", mbWindows1250, Script::kLatin, 0, kCentral},
    {"windows-1254", mbWindows1254, Script::kLatin, 1, kTurkey | kWest},
    {"windows-1257", mbWindows1257, Script::kLatin, 1, kBaltic},
    {"windows-1258", mbWindows1258, Script::kLatin, 1, kVietnam},
    {"iso-8859-1", mb8859_1, Script::kLatin, 1, kWest},
    {"iso-8859-15", mb8859_15, Script::kLatin, 2, kWest},
    {"iso-8859-2", mb8859_2, Script::kLatin, 1, kCentral},
    {"iso-8859-9", mb8859_9, Script::kLatin, 2, kTurkey | kWest},
    {"iso-8859-13", mb8859_13, Script::kLatin, 2, kBaltic},
    {"iso-8859-4", mb8859_4, Script::kLatin, 3, kBaltic | kWest},
    {"iso-8859-16", mb8859_16, Script::kLatin, 4, kCentral},
    {"iso-8859-3", mb8859_3, Script::kLatin, 4, kEsperanto},
    {"iso-8859-10", mb8859_10, Script::kLatin, 5, kBaltic | kWest},
    {"iso-8859-14", mb8859_14, Script::kLatin, 4, kCeltic | kWest},
    {"ibm850", mbDos850, Script::kLatin, 2, kWest},
    {"ibm852", mbDos852, Script::kLatin, 2, kCentral},
    {"ibm437", mbDos437, Script::kLatin, 3, kWest},
    {"windows-1251", mbWindows1251, Script::kCyrillic, 0, kOther},
    {"koi8-r", mbKoi8R, Script::kCyrillic, 0, kOther},
    {"koi8-u", mbKoi8U, Script::kCyrillic, 1, kOther},
    {"iso-8859-5", mb8859_5, Script::kCyrillic, 1, kOther},
    {"ibm866", mbDos866, Script::kCyrillic, 1, kOther},
    {"windows-1253", mbWindows1253, Script::kGreek, 0, kOther},
    {"iso-8859-7", mb8859_7, Script::kGreek, 1, kOther},
    {"windows-1255", mbWindows1255, Script::kHebrew, 0, kOther},
    {"iso-8859-8", mb8859_8, Script::kHebrew, 1, kOther},
    {"windows-1256", mbWindows1256, Script::kArabic, 0, kOther},
    {"iso-8859-6", mb8859_6, Script::kArabic, 1, kOther},
    {"windows-874", mbWindows874, Script::kThai, 0, kOther},
    {"iso-8859-11", mb8859_11, Script::kThai, 0, kOther},
};

struct RegionRow {
    const char* languages;
    std::uint8_t regions;
};
constexpr RegionRow kRegionRows[] = {
    {"pl cs sk hu ro hr sl", kCentral},
    {"et lv lt", kBaltic},
    {"tr", kTurkey},
    {"vi", kVietnam},
    {"eo", kEsperanto},
    {"cy ga", kCeltic | kWest},
    {"sq de", kCentral | kWest},
};

// Returns true for marks that stand between letters: apostrophe, raised point, hyphens.
bool IsInWords(unsigned character) {
    return character == 0x2019 || character == 0xB7 || character == 0xAD || character == 0x2010 ||
           character == 0x2011;
}

// Returns true for marks that no letter precedes.
bool IsOpening(unsigned character) {
    return character == 0x201A || character == 0x201E || character == 0xA1 || character == 0xBF;
}

bool IsControl(unsigned character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

bool IsPrivate(unsigned character) {
    return character >= 0xE000 && character < 0xF900;
}

// The cost of a byte in the language in which it is commonest.
int LeastCost(const Encoding& encoding, unsigned byte) {
    if (encoding.letters[byte] == 0 && encoding.marks[byte] < 0) return kStrangeCost;
    if (encoding.isLatinGuest[byte]) return kGuestCost;
    int least = kStrangeCost;
    for (const Language& language : kLanguageTable) {
        if (language.script != encoding.script) continue;
        const int cost = encoding.letters[byte] != 0
                             ? language.SingleCost(language.SymbolOf(encoding.letters[byte]))
                             : Language::Value(language.marks[encoding.marks[byte]]);
        least = std::min(least, cost);
    }
    return least;
}

void SetByte(Encoding& encoding, unsigned byte, unsigned character) {
    encoding.characters[byte] = static_cast<std::uint16_t>(character);
    encoding.marks[byte] = -1;
    const bool usual = byte < 0x80 || !IsControl(character);
    if (character == kNoCharacter || IsPrivate(character) || !usual)
        encoding.invalid[byte / 64] |= std::uint64_t{1} << byte % 64;
    const Letter* const letter = FindLetter(character);
    const bool isLatin = letter && letter->script == static_cast<std::uint8_t>(Script::kLatin);
    if (letter && letter->script == encoding.script)
        encoding.letters[byte] = letter->number;
    else if (isLatin)
        encoding.letters[byte] = 1;
    encoding.isLatinGuest[byte] = encoding.letters[byte] == 1 && byte >= 0x80;
    if (encoding.letters[byte] != 0) {
        const bool hasCase =
            encoding.script <= static_cast<std::uint8_t>(Script::kGreek) || isLatin;
        encoding.kinds[byte] = !hasCase          ? ByteKind::kCaseless
                               : letter->isUpper ? ByteKind::kUpper
                                                 : ByteKind::kLower;
    }
    if (byte >= 0x80 && encoding.letters[byte] == 0 && !IsInWords(character))
        encoding.kinds[byte] = IsOpening(character) ? ByteKind::kOpening
                               : character == 0xA0  ? ByteKind::kSpace
                                                    : ByteKind::kMark;
    if (byte >= 0x80) encoding.marks[byte] = static_cast<std::int8_t>(FindMark(character));
    encoding.costs[byte] = byte < 0x80 ? 0 : static_cast<std::uint8_t>(LeastCost(encoding, byte));
}

void Fill(Encoding& encoding, const EncodingRow& row) {
    encoding.name = row.name;
    encoding.codeSet = row.codeSet;
    encoding.script = static_cast<std::uint8_t>(row.script);
    encoding.cost = static_cast<std::uint8_t>(row.bits * kCostOfBit);
    encoding.regions = row.regions;
    const CodePage* const page = FindListedCodePage(row.codeSet);
    if (page == nullptr || page->form != CodeForm::kSingleByte) return;
    encoding.known = true;
    for (unsigned byte = 0; byte < 256; ++byte) SetByte(encoding, byte, page->bytes[byte]);
}

std::uint8_t RegionsOf(const Language& language) {
    if (language.script != static_cast<std::uint8_t>(Script::kLatin)) return kOther;
    for (const RegionRow& row : kRegionRows)
        if (std::strstr(row.languages, language.name)) return row.regions;
    return kWest;
}

void FillAscii(Prepared& prepared) {
    for (unsigned c = 'a'; c <= 'z'; ++c)
        prepared.asciiLetters[c] = prepared.asciiLetters[c - 0x20] =
            static_cast<std::uint8_t>(c - 'a' + 1);
    for (unsigned first = 0; first < 27; ++first)
        for (unsigned second = 0; second < 27; ++second)
            for (unsigned i = 0; i < kLatinLanguages; ++i)
                prepared.asciiPairs[first * 27 + second][i] =
                    static_cast<std::uint8_t>(kLanguageTable[i].PairCost(first, second));
}

std::atomic<const Prepared*> g_prepared;

}  // namespace

// Two threads may prepare at the same time. The first to finish publishes its own.
const Prepared* Prepare() {
    if (const Prepared* prepared = g_prepared.load(std::memory_order_acquire)) return prepared;
    std::unique_ptr<Prepared> made(new (std::nothrow) Prepared());
    if (!made) return nullptr;
    for (unsigned i = 0; i < kEncodings; ++i) Fill(made->encodings[i], kRows[i]);
    for (unsigned i = 0; i < kLanguages; ++i) made->regions[i] = RegionsOf(kLanguageTable[i]);
    FillAscii(*made);
    const Prepared* first = nullptr;
    if (!g_prepared.compare_exchange_strong(first, made.get(), std::memory_order_acq_rel))
        return first;
    return made.release();
}

}  // namespace genutil::detect
