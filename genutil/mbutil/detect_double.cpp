// East Asian encodings of one, two and more bytes.
#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/code_page.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/detect_candidate.h"
#include "mbdetect.h"
#include "mbutil.h"

namespace genutil::detect {

namespace {

struct Row {
    const char* name;
    int codeSet;
    Ideographs ideographs;
    const char* language;
    int bits;  // cost in bits
};
constexpr Row kRows[] = {
    {"shift_jis", mbShiftJis, Ideographs::kJapanese, "ja", 0},
    {"euc-jp", mbEucJp, Ideographs::kJapanese, "ja", 0},
    {"gb2312", mbGb2312, Ideographs::kSimplified, "zh", 0},
    {"gb18030", mbGb18030, Ideographs::kSimplified, "zh", 2},
    {"big5", mbBig5, Ideographs::kTraditional, "tw", 0},
    {"euc-tw", mbEucTw, Ideographs::kTraditional, "tw", 4},
    {"cp949", mbKorean, Ideographs::kKorean, "ko", 0},
    {"johab", mbJohab, Ideographs::kKorean, "ko", 6},
};

constexpr std::size_t kMostCompared = 1000;
constexpr int kAsciiLetterCost = 24, kAsciiOtherCost = 9,
              kAfterLetterCost = 15;  // after a wide character
constexpr int kBadCost = 120;
constexpr int kOwnUseCost = 150;

bool IsAsciiLetter(unsigned c) {
    return (c | 0x20) >= 'a' && (c | 0x20) <= 'z';
}

// Returns true if the text ends within a character.
bool IsCut(const CodePage& page, const unsigned char* p, const unsigned char* end) {
    const bool begins = page.isLead[*p] || (page.prefixLength > 0 && *p == page.prefix[0]);
    return begins && end - p < static_cast<std::ptrdiff_t>(page.longest);
}

bool Compare(const CodePage& page, const Text& text, Ideographs language, Candidate* candidate) {
    const unsigned char* p = text.bytes;
    const unsigned char* const end = p + text.length;
    int cost = 0;
    while (p < end) {
        const std::size_t ascii = AsciiRun(p, static_cast<std::size_t>(end - p));
        if (ascii > 0) {
            if (p > text.bytes && candidate->characters < kMostCompared)
                cost += IsAsciiLetter(*p) ? kAsciiLetterCost : kAsciiOtherCost;
            p += ascii;
            if (p < end && IsAsciiLetter(p[-1])) cost += kAfterLetterCost;
            continue;
        }
        const bool isGb18030 = page.form == CodeForm::kGb18030;
        const CodeRead read = isGb18030 ? ReadGb18030(page, p, end) : ReadCode(page, p, end);
        if (read.length == 0) {
            if (IsCut(page, p, end)) break;
            if (++candidate->bad * 50 > candidate->characters + 50) return false;
            cost += kBadCost;
            ++p;
            continue;
        }
        if (++candidate->characters <= kMostCompared) {
            const bool ownUse = read.character >= 0xE000 && read.character < 0xF900;
            cost += ownUse ? kOwnUseCost : IdeographCost(language, read.character);
        }
        p += read.length;
    }
    candidate->highCost = cost;
    return candidate->characters > 0 && candidate->bad * 20 <= candidate->characters;
}

}  // namespace

void AddDoubleByte(const Text& text, const Hint& hint, Candidates* candidates) {
    bool isGb2312 = false;
    for (const Row& row : kRows) {
        // Without codes of four bytes the two are the same.
        if (row.codeSet == mbGb18030 && isGb2312) continue;
        const CodePage* const page = FindListedCodePage(row.codeSet);
        if (page == nullptr) continue;
        Candidate candidate{row.name, row.codeSet};
        if (!Compare(*page, text, row.ideographs, &candidate)) continue;
        candidate.kind = candidate.bad > 0 ? mbGuessDamaged : mbGuessLetters;
        if (row.codeSet == mbGb2312) isGb2312 = candidate.bad == 0;
        candidate.language = row.language;
        candidate.cost = row.bits * kCostOfBit + candidate.highCost;
        if (hint.Is(row.language)) candidate.cost -= kHintGain;
        candidates->Add(candidate);
    }
}

}  // namespace genutil::detect
