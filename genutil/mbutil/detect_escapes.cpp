// Code sets with escape sequences: ISO-2022-JP, ISO-2022-KR and ISO-2022-CN.
#include <cstddef>

#include "genutil/mbutil/detect_candidate.h"
#include "mbdetect.h"
#include "mbutil.h"

namespace genutil::detect {

namespace {

struct Escape {
    const char* bytes;  // after ESC
    std::size_t length;
    int codeSet;
    bool wide;    // true if characters of two bytes follow
    bool shifts;  // true if they follow only after SO
};
constexpr Escape kEscapes[] = {
    {"$B", 2, mbJis, true, false},       {"$@", 2, mbJis, true, false},
    {"$(D", 3, mbJis, true, false},      {"$(B", 3, mbJis, true, false},
    {"$(@", 3, mbJis, true, false},      {"&@", 2, mbJis, false, false},
    {"(B", 2, mbJis, false, false},      {"(J", 2, mbJis, false, false},
    {"(I", 2, mbJis, false, false},      {"(H", 2, mbJis, false, false},
    {"$)C", 3, mbIso2022Kr, true, true}, {"$)A", 3, mbIso2022Cn, true, true},
    {"$)G", 3, mbIso2022Cn, true, true}, {"$)E", 3, mbIso2022Cn, true, true},
    {"$*H", 3, mbIso2022Cn, true, true},
};

const Escape* EscapeAt(const unsigned char* p, const unsigned char* end) {
    for (const Escape& escape : kEscapes) {
        if (static_cast<std::size_t>(end - p) < escape.length) continue;
        std::size_t i = 0;
        while (i < escape.length && p[i] == static_cast<unsigned char>(escape.bytes[i])) ++i;
        if (i == escape.length) return &escape;
    }
    return nullptr;
}

bool IsCell(unsigned byte) {
    return byte >= 0x21 && byte <= 0x7E;
}

struct Walk {
    std::size_t characters = 0, bad = 0;
    int codeSet = -1;
};

// Reads the text of one code set. A designation of another one is an error.
Walk ReadText(const Text& text) {
    Walk walk;
    bool wide = false, designated = false;
    const unsigned char* p = text.bytes;
    const unsigned char* const end = p + text.length;
    while (p < end) {
        const unsigned byte = *p++;
        if (byte == 0x1B) {
            const Escape* const escape = EscapeAt(p, end);
            if (escape == nullptr) {
                walk.bad += end - p >= 3;  // or cut
                continue;
            }
            p += escape->length;
            if (walk.codeSet < 0) walk.codeSet = escape->codeSet;
            walk.bad += walk.codeSet != escape->codeSet;
            designated |= escape->wide;
            if (!escape->shifts) wide = escape->wide;
        } else if (byte == 0x0E) {
            wide = designated;
        } else if (byte == 0x0F || byte == '\n' || byte == '\r') {
            wide = false;
        } else if (wide && IsCell(byte) && p < end) {
            walk.bad += !IsCell(*p);
            ++walk.characters;
            ++p;
        } else if (byte >= 0x80 || byte == 0) {
            ++walk.bad;
        }
    }
    return walk;
}

}  // namespace

void AddEscapes(const Text& text, Candidates* candidates) {
    const Walk walk = ReadText(text);
    if (walk.codeSet < 0 || walk.characters == 0 || walk.bad != 0) return;
    Candidate candidate{walk.codeSet == mbJis         ? "iso-2022-jp"
                        : walk.codeSet == mbIso2022Kr ? "iso-2022-kr"
                                                      : "iso-2022-cn",
                        walk.codeSet};
    candidate.kind = mbGuessEscapes;
    candidate.language = walk.codeSet == mbJis ? "ja" : walk.codeSet == mbIso2022Kr ? "ko" : "zh";
    candidate.characters = walk.characters;
    candidates->Add(candidate);
}

}  // namespace genutil::detect
