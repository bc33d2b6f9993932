// UTF-8 and UTF-16 without a byte-order mark.
#include <algorithm>

#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/detect_candidate.h"
#include "mbdetect.h"
#include "mbutil.h"

namespace genutil::detect {

namespace {

constexpr std::size_t kMostCompared = 1000;
constexpr int kUtf8Gain = 10 * kCostOfBit;
constexpr int kBadCost = 120;
constexpr int kSameBlockCost = 36, kOtherBlockCost = 66, kRareCost = 96, kOwnUseCost = 150;
constexpr int kControlCost = 150, kAsciiCost = 28;

bool IsIdeograph(unsigned c) {
    return (c >= 0x2010 && c < 0x2070) || (c >= 0x3000 && c < 0xA000) ||
           (c >= 0xAC00 && c < 0xD7A4) || (c >= 0xFF00 && c < 0xFFF0);
}

int LeastIdeographCost(unsigned c) {
    int least = kRareCost;
    for (unsigned i = 0; i < kIdeographLanguages; ++i)
        least = std::min(least, IdeographCost(static_cast<Ideographs>(i), c));
    return least;
}

// Scripts are written in blocks of 128 characters, of which a text uses one or two.
class Blocks {
  public:
    int CostOf(unsigned c) {
        if (IsIdeograph(c)) return LeastIdeographCost(c);
        if (c >= 0x80 && c < 0xA0) return kControlCost;
        if ((c >= 0xE000 && c < 0xF900) || c >= 0x40000) return kOwnUseCost;
        if ((c >= 0x2000 && c < 0x2E80) || c >= 0x10000) return kOtherBlockCost;
        if (c >= 0xA000 || (c >= 0x1200 && c < 0x1E00)) return kRareCost;
        const unsigned block = c / 0x80;
        if (block == m_last || block == m_earlier) return kSameBlockCost;
        m_earlier = m_last;
        m_last = block;
        return kOtherBlockCost;
    }

  private:
    unsigned m_last = 0, m_earlier = 0;
};

// Returns true if the text ends within the character at p.
bool IsCutUtf8(const unsigned char* p, const unsigned char* end) {
    const unsigned lead = *p;
    if (lead < 0xC2 || lead > 0xF4) return false;
    if (end - p >= (lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4)) return false;
    return std::all_of(p + 1, end, [](unsigned char c) { return IsContinuation(c); });
}

unsigned UnitAt(const unsigned char* p, bool bigEndian) {
    return bigEndian ? p[0] << 8u | p[1] : p[1] << 8u | p[0];
}

int AsciiUnitCost(unsigned c) {
    if (c >= 0x20 && c != 0x7F) return kAsciiCost;
    return c >= '\t' && c <= '\r' ? kSameBlockCost : kControlCost;
}

bool CompareUtf16(const Text& text, bool bigEndian, Candidate* candidate) {
    Blocks blocks;
    bool high = false;
    unsigned lead = 0;
    std::size_t units = 0;
    for (std::size_t i = 0; i + 1 < text.length; i += 2, ++units) {
        const unsigned unit = UnitAt(text.bytes + i, bigEndian);
        if (IsLowSurrogate(unit) != high || unit >= 0xFFFE) return false;
        high = IsHighSurrogate(unit);
        if (units >= kMostCompared) continue;
        if (high) {
            lead = unit;
            continue;
        }
        ++candidate->characters;
        if (unit < 0x80)
            candidate->highCost += AsciiUnitCost(unit);
        else if (IsLowSurrogate(unit))
            candidate->highCost += lead >= 0xD83C && lead <= 0xD83E ? kOtherBlockCost : kRareCost;
        else
            candidate->highCost += blocks.CostOf(unit);
    }
    return candidate->characters > 0;
}

bool CompareUtf32(const Text& text, bool bigEndian, Candidate* candidate) {
    Blocks blocks;
    for (std::size_t i = 0; i < text.length; i += 4) {
        const unsigned char* const p = text.bytes + i;
        const unsigned first = UnitAt(p, bigEndian), second = UnitAt(p + 2, bigEndian);
        const unsigned c = bigEndian ? first << 16 | second : second << 16 | first;
        if (c > 0x10FFFF || IsHighSurrogate(c) || IsLowSurrogate(c)) return false;
        if (candidate->characters++ >= kMostCompared) continue;
        candidate->highCost += c < 0x80 ? AsciiUnitCost(c) : blocks.CostOf(c);
    }
    return true;
}

}  // namespace

void AddUtf8(const Text& text, Candidates* candidates) {
    Candidate candidate{"utf-8", mbUtf8};
    Blocks blocks;
    const unsigned char* p = text.bytes;
    const unsigned char* const end = p + text.length;
    while (p < end) {
        p += AsciiRun(p, static_cast<std::size_t>(end - p));
        if (p == end) break;
        const CodeRead read = ReadUtf8(p, end);
        if (read.length != 0) {
            if (++candidate.characters <= kMostCompared)
                candidate.highCost += blocks.CostOf(read.character);
            p += read.length;
            continue;
        }
        if (IsCutUtf8(p, end)) break;
        if (++candidate.bad * 20 > candidate.characters + 20) return;
        candidate.highCost += kBadCost;
        ++p;
    }
    if (candidate.characters == 0 || candidate.bad * 20 > candidate.characters) return;
    candidate.kind = candidate.bad > 0 ? mbGuessDamaged : mbGuessValid;
    candidate.cost = candidate.highCost - kUtf8Gain;
    candidates->Add(candidate);
}

void AddUtf16(const Text& text, Candidates* candidates) {
    if (text.length < 2) return;
    for (const bool bigEndian : {false, true}) {
        Candidate candidate{bigEndian ? "utf-16be" : "utf-16le", bigEndian ? mbUtf16Be : mbUtf16};
        if (!CompareUtf16(text, bigEndian, &candidate)) continue;
        if (text.length % 2 != 0) candidate.highCost += kControlCost;
        candidate.kind = mbGuessValid;
        candidate.cost = candidate.highCost;
        candidates->Add(candidate);
    }
}

void AddUtf32(const Text& text, Candidates* candidates) {
    if (text.length < 4 || text.length % 4 != 0) return;
    for (const bool bigEndian : {false, true}) {
        Candidate candidate{bigEndian ? "utf-32be" : "utf-32le", bigEndian ? mbUtf32Be : mbUtf32};
        if (!CompareUtf32(text, bigEndian, &candidate)) continue;
        candidate.kind = mbGuessValid;
        candidate.cost = candidate.highCost;
        candidates->Add(candidate);
    }
}

}  // namespace genutil::detect
