// Encodings of single bytes. The letters of ASCII are the same in all of them and show the
// language; the other bytes are then compared as letters of the likely languages.
#include <algorithm>
#include <climits>

#include "genutil/mbutil/detect_candidate.h"
#include "genutil/mbutil/detect_encodings.h"
#include "mbdetect.h"
#include "mbutil.h"

namespace genutil::detect {

namespace {

constexpr int kInWordCost = 8 * kCostOfBit;  // a mark between letters, or two spaces
constexpr int kNoiseCost = 8 * kCostOfBit, kNoNoiseGain = 16 * kCostOfBit;
constexpr int kLatinWordCost = 2 * kCostOfBit;
constexpr unsigned kMostLatinWords = 10;
constexpr unsigned kFirstTouched = 48;  // positions of the first look
constexpr int kRefineMargin = 35 * kCostOfBit;
constexpr int kMostAsciiExcess = 50 * kCostOfBit;
constexpr int kForeignRegionCost = 4 * kCostOfBit;
constexpr unsigned kMostEncodings = 20;
constexpr unsigned kMostCombinations = 16;
constexpr int kMixedCost = 10 * kCostOfBit;  // a letter of another script beside a Latin one
constexpr std::size_t kMostPairs = 6000;     // compared before the best combinations are chosen

// Costs of the letter case of a byte after another, by their kinds: other, lower, upper,
// caseless, mark, opening mark, no-break space.
constexpr std::uint8_t kCaseCosts[7][7] = {{0, 1, 12, 0, 0, 0, 0},  {0, 0, 36, 12, 0, 36, 0},
                                           {0, 3, 9, 12, 0, 36, 0}, {0, 12, 12, 0, 0, 36, 0},
                                           {0, 1, 12, 0, 0, 0, 0},  {0, 1, 12, 0, 0, 0, 0},
                                           {0, 1, 12, 0, 0, 0, 0}};

struct HighByte {
    std::uint8_t byte;
    int count;
    int mixed;  // number of times that an ASCII letter is beside it
};

bool IsLetter(unsigned kind) {
    return kind >= static_cast<unsigned>(ByteKind::kLower) &&
           kind <= static_cast<unsigned>(ByteKind::kCaseless);
}

// Consecutive positions in the sample.
struct Run {
    std::uint16_t begin, end;
};

// An encoding and a language in it.
struct Combination {
    int cost;
    const Encoding* encoding;
    const Language* language;
    int highCost;
};

class Comparison {
  public:
    Comparison(const Prepared& prepared, const Text& text, const Hint& hint)
        : m_prepared(prepared), m_text(text), m_hint(hint) {}

    CommonCosts Compare(int rival, Candidates* candidates);

  private:
    enum class Extent : std::uint8_t { kFirst, kAll };
    template <class Visit>
    void ForEachRun(Extent extent, Visit visit) const {
        const unsigned count = extent == Extent::kAll ? m_runCount : m_firstRuns;
        for (unsigned i = 0; i < count; ++i) {
            Run run = m_runs[i];
            if (extent == Extent::kFirst) run.end = std::min(run.end, m_firstEnd);
            visit(run);
        }
    }

    void CountHighBytes();
    void FindTouched();
    void CompareAscii();
    void SelectEncodings();
    bool SameReading(const Encoding& a, const Encoding& b) const;
    void SelectLanguages();
    void Decode(const Encoding& encoding, unsigned end);
    void CompareAllPairs();
    void ComparePairs(const Encoding& encoding, const Language& language, int caseCost);
    int CaseCost(const Encoding& encoding, Extent extent) const;
    int MarkCost(const Encoding& encoding, const Language& language) const;
    int PairCosts(const Language& language, Extent extent) const;
    int AsciiTrigrams(unsigned language);
    int TouchedTrigrams(const Language& language) const;
    void Keep(const Combination& combination);
    void AddBest(int asciiTrigrams, Candidates* candidates);
    bool IsHigh(std::size_t i) const { return m_text.sample[i] >= 0x80; }
    bool IsBesideSpace(unsigned i) const {
        return (i > 0 && m_text.sample[i - 1] == ' ') ||
               (i + 1 < m_text.sampleLength && m_text.sample[i + 1] == ' ');
    }
    unsigned KindAt(const Encoding& encoding, unsigned i) const {
        return static_cast<unsigned>(encoding.kinds[m_text.sample[i]]);
    }

    const Prepared& m_prepared;
    const Text& m_text;
    const Hint& m_hint;

    HighByte m_high[128];
    unsigned m_highCount = 0;
    int m_highTotal = 0;
    Run m_runs[kSampleSize / 2 + 1];  // where a pair has a byte above ASCII
    unsigned m_runCount = 0, m_firstRuns = 0;
    std::uint16_t m_firstEnd = 0;  // where the first look ends
    unsigned m_touchedCount = 0, m_firstCount = 0;

    int m_otherScript = 0;    // the cost of Latin words in a text of another script
    int m_ascii[kRowLength];  // cost of the pairs in ASCII
    int m_asciiTrigrams[kLatinLanguages];
    unsigned m_latinOrder[kLatinLanguages];
    unsigned m_latinCount = 0;

    const Encoding* m_encodings[kMostEncodings];
    unsigned m_encodingCount = 0;

    std::uint8_t m_letters[kSampleSize + 2];  // of the sample, after one that is none
    Combination m_best[kMostCombinations];
    unsigned m_bestCount = 0;
    unsigned m_sampleEnd = 0;
    int m_mostHighCost = INT_MAX;
};

void Comparison::CountHighBytes() {
    int counts[128] = {}, mixed[128] = {};
    const auto isAsciiLetter = [&](std::size_t i) {
        return i < m_text.sampleLength && m_prepared.asciiLetters[m_text.sample[i]] != 0;
    };
    for (std::size_t i = 0; i < m_text.sampleLength; ++i) {
        if (!IsHigh(i)) continue;
        ++counts[m_text.sample[i] & 0x7F];
        mixed[m_text.sample[i] & 0x7F] += isAsciiLetter(i + 1) || (i > 0 && isAsciiLetter(i - 1));
    }
    for (unsigned i = 0; i < 128; ++i) {
        if (counts[i] == 0) continue;
        m_high[m_highCount++] = {static_cast<std::uint8_t>(i | 0x80), counts[i], mixed[i]};
        m_highTotal += counts[i];
    }
}

void Comparison::FindTouched() {
    bool before = false;
    for (std::size_t i = 0; i < m_text.sampleLength; ++i) {
        const bool high = IsHigh(i);
        if (high || before) {
            if (m_runCount == 0 || m_runs[m_runCount - 1].end != i)
                m_runs[m_runCount++] = {static_cast<std::uint16_t>(i), 0};
            m_runs[m_runCount - 1].end = static_cast<std::uint16_t>(i + 1);
            ++m_touchedCount;
        }
        before = high;
    }
    // The first runs are enough to see which combinations are out of the question.
    unsigned count = 0;
    while (m_firstRuns < m_runCount && count < kFirstTouched) {
        count += m_runs[m_firstRuns].end - m_runs[m_firstRuns].begin;
        ++m_firstRuns;
    }
    if (count > 2 * kFirstTouched) {
        Run& last = m_runs[m_firstRuns - 1];
        const unsigned cut = count - kFirstTouched;
        m_firstEnd = static_cast<std::uint16_t>(last.end - cut);
        count -= cut;
    } else if (m_firstRuns > 0) {
        m_firstEnd = m_runs[m_firstRuns - 1].end;
    }
    m_firstCount = count;
}

void Comparison::CompareAscii() {
    std::fill_n(m_ascii, kRowLength, 0);
    std::fill_n(m_asciiTrigrams, kLatinLanguages, INT_MIN);
    std::size_t i = 0;
    unsigned before = 0, words = 0;
    while (i < m_text.sampleLength) {
        // Sums of this many pairs fit into 16 bits.
        const std::size_t end = std::min<std::size_t>(m_text.sampleLength, i + 512);
        std::uint16_t sums[kRowLength] = {};
        for (; i < end; ++i) {
            const unsigned letter = m_prepared.asciiLetters[m_text.sample[i]];
            const bool touched = IsHigh(i) || (i > 0 && IsHigh(i - 1));
            if (!touched && (letter | before) != 0) {
                const std::uint8_t* const row = m_prepared.asciiPairs[before * 27 + letter];
                for (unsigned k = 0; k < kRowLength; ++k)
                    sums[k] = static_cast<std::uint16_t>(sums[k] + row[k]);
            }
            words += before == 0 && letter != 0 && !touched;
            before = letter;
        }
        for (unsigned k = 0; k < kRowLength; ++k) m_ascii[k] += sums[k];
    }
    // A text may contain words of another language, or a program.
    const int most = *std::min_element(m_ascii, m_ascii + kLatinLanguages) + kMostAsciiExcess;
    for (int& cost : m_ascii) cost = std::min(cost, most);
    m_otherScript = static_cast<int>(std::min(words, kMostLatinWords)) * kLatinWordCost;
}

// Encodings in which the bytes of a text are the same characters.
bool Comparison::SameReading(const Encoding& a, const Encoding& b) const {
    for (unsigned byte = 128; byte < 256; ++byte)
        if ((m_text.present[byte / 64] >> byte % 64 & 1) != 0 &&
            a.characters[byte] != b.characters[byte])
            return false;
    return true;
}

// Keeps the encodings in which the bytes are usual ones, whatever their order.
void Comparison::SelectEncodings() {
    struct Choice {
        int cost;
        const Encoding* encoding;
    };
    Choice choices[kEncodings];
    unsigned count = 0;
    for (const Encoding& encoding : m_prepared.encodings) {
        if (!encoding.known) continue;
        bool invalid = false;
        for (unsigned i = 0; i < 4; ++i) invalid |= (encoding.invalid[i] & m_text.present[i]) != 0;
        if (invalid) continue;
        int cost = encoding.cost;
        const bool isLatin = encoding.script == static_cast<std::uint8_t>(Script::kLatin);
        for (unsigned i = 0; i < m_highCount; ++i) {
            const HighByte& high = m_high[i];
            cost += high.count * encoding.costs[high.byte];
            if (!isLatin && encoding.letters[high.byte] != 0) cost += high.mixed * kMixedCost;
        }
        choices[count++] = {cost, &encoding};
    }
    std::stable_sort(choices, choices + count,
                     [](const Choice& a, const Choice& b) { return a.cost < b.cost; });
    const int margin = 20 * kCostOfBit + 2 * kCostOfBit * m_highTotal;
    for (unsigned i = 0; i < count && m_encodingCount < kMostEncodings; ++i) {
        if (choices[i].cost > choices[0].cost + margin) break;
        bool same = false;
        for (unsigned k = 0; k < m_encodingCount && !same; ++k)
            same = SameReading(*m_encodings[k], *choices[i].encoding);
        if (!same) m_encodings[m_encodingCount++] = choices[i].encoding;
    }
}

void Comparison::SelectLanguages() {
    for (unsigned i = 0; i < kLatinLanguages; ++i) m_latinOrder[i] = i;
    const auto costOf = [&](unsigned i) {
        return m_ascii[i] - (m_hint.Is(kLanguageTable[i].name) ? kHintGain : 0);
    };
    std::sort(m_latinOrder, m_latinOrder + kLatinLanguages,
              [&](unsigned a, unsigned b) { return costOf(a) < costOf(b); });
    const std::size_t pairs = (m_touchedCount + 1u) * (m_encodingCount + 1u);
    m_latinCount =
        static_cast<unsigned>(std::clamp<std::size_t>(kMostPairs / pairs, 8, kLatinLanguages));
}

void Comparison::Decode(const Encoding& encoding, unsigned end) {
    m_letters[0] = 0;
    for (unsigned i = 0; i < end; ++i) m_letters[i + 1] = encoding.letters[m_text.sample[i]];
}

int Comparison::CaseCost(const Encoding& encoding, Extent extent) const {
    int cost = 0;
    ForEachRun(extent, [&](Run run) {
        unsigned before = run.begin == 0 ? 0 : KindAt(encoding, run.begin - 1u);
        for (unsigned at = run.begin; at < run.end; ++at) {
            const unsigned kind = KindAt(encoding, at);
            cost += kCaseCosts[before][kind];
            if (kind == static_cast<unsigned>(ByteKind::kMark) && IsLetter(before) &&
                at + 1 < m_text.sampleLength && IsLetter(KindAt(encoding, at + 1)))
                cost += kInWordCost;
            if (kind == static_cast<unsigned>(ByteKind::kSpace) && IsBesideSpace(at))
                cost += kInWordCost;
            before = kind;
        }
    });
    return cost;
}

int Comparison::MarkCost(const Encoding& encoding, const Language& language) const {
    int cost = 0;
    for (unsigned i = 0; i < m_highCount; ++i) {
        const unsigned byte = m_high[i].byte;
        if (encoding.isLatinGuest[byte]) cost += m_high[i].count * kGuestCost;
        if (encoding.letters[byte] != 0) continue;
        const int mark = encoding.marks[byte];
        cost += m_high[i].count * (mark < 0 ? kStrangeCost : Language::Value(language.marks[mark]));
    }
    return cost;
}

int Comparison::PairCosts(const Language& language, Extent extent) const {
    int cost = 0;
    const unsigned symbols = language.symbols;
    ForEachRun(extent, [&](Run run) {
        unsigned before = language.SymbolOf(m_letters[run.begin]);
        for (unsigned at = run.begin; at < run.end; ++at) {
            const unsigned symbol = language.SymbolOf(m_letters[at + 1]);
            cost += Language::Value(language.pairs[before * symbols + symbol]);
            before = symbol;
        }
    });
    return cost;
}

int Comparison::TouchedTrigrams(const Language& language) const {
    int cost = 0;
    ForEachRun(Extent::kAll, [&](Run run) {
        // The position after a run also has a byte above ASCII two before it.
        const unsigned end = std::min<unsigned>(run.end + 1u, m_sampleEnd);
        unsigned at = std::max<unsigned>(run.begin, 1);
        unsigned a = language.SymbolOf(m_letters[at - 1]), b = language.SymbolOf(m_letters[at]);
        for (; at < end; ++at) {
            const unsigned c = language.SymbolOf(m_letters[at + 1]);
            if (b != 0) cost += language.TrigramDifference(a, b, c);
            a = b;
            b = c;
        }
    });
    return cost;
}

int Comparison::AsciiTrigrams(unsigned index) {
    if (m_asciiTrigrams[index] != INT_MIN) return m_asciiTrigrams[index];
    const Language& language = kLanguageTable[index];
    int cost = 0;
    unsigned a = 0, b = 0, high = 0;  // high: bits for the last bytes
    for (std::size_t i = 0; i < m_text.sampleLength; ++i) {
        high = (high << 1 | IsHigh(i)) & 7;
        const unsigned c = m_prepared.asciiLetters[m_text.sample[i]];
        if (high == 0 && b != 0) cost += language.TrigramDifference(a, b, c);
        a = b;
        b = c;
    }
    return m_asciiTrigrams[index] = cost;
}

void Comparison::Keep(const Combination& combination) {
    if (m_bestCount == kMostCombinations && combination.cost >= m_best[m_bestCount - 1].cost)
        return;
    unsigned at = m_bestCount < kMostCombinations ? m_bestCount++ : m_bestCount - 1;
    for (; at > 0 && m_best[at - 1].cost > combination.cost; --at) m_best[at] = m_best[at - 1];
    m_best[at] = combination;
}

void Comparison::ComparePairs(const Encoding& encoding, const Language& language, int caseCost) {
    const unsigned index = static_cast<unsigned>(&language - kLanguageTable);
    const bool isLatin = index < kLatinLanguages;
    const long first = caseCost + PairCosts(language, Extent::kFirst);
    const int high = static_cast<int>(first * m_touchedCount / std::max(m_firstCount, 1u)) +
                     MarkCost(encoding, language);
    if (high > m_mostHighCost) return;
    int cost = high + encoding.cost +
               (isLatin ? m_ascii[index] : m_ascii[m_latinOrder[0]] + m_otherScript);
    if (!(m_prepared.regions[index] & encoding.regions)) cost += kForeignRegionCost;
    if (m_hint.Is(language.name)) cost -= kHintGain;
    Keep({cost, &encoding, &language, high});
}

void Comparison::CompareAllPairs() {
    for (unsigned e = 0; e < m_encodingCount; ++e) {
        const Encoding& encoding = *m_encodings[e];
        Decode(encoding, m_firstEnd);
        const int caseCost = CaseCost(encoding, Extent::kFirst);
        if (encoding.script == static_cast<std::uint8_t>(Script::kLatin)) {
            for (unsigned i = 0; i < m_latinCount; ++i)
                ComparePairs(encoding, kLanguageTable[m_latinOrder[i]], caseCost);
        } else {
            for (unsigned i = kLatinLanguages; i < kLanguages; ++i)
                if (kLanguageTable[i].script == encoding.script)
                    ComparePairs(encoding, kLanguageTable[i], caseCost);
        }
    }
}

// Computes the whole cost of the best combinations.
void Comparison::AddBest(int asciiTrigrams, Candidates* candidates) {
    const Encoding* decoded = nullptr;
    for (unsigned i = 0; i < m_bestCount; ++i) {
        const Combination& best = m_best[i];
        if (i >= 4 && best.cost > m_best[0].cost + m_best[0].highCost / 8 + kRefineMargin) break;
        const Encoding& encoding = *best.encoding;
        const Language& language = *best.language;
        if (decoded != &encoding) Decode(*(decoded = &encoding), m_sampleEnd);
        const unsigned index = static_cast<unsigned>(&language - kLanguageTable);
        Candidate candidate{encoding.name, encoding.codeSet};
        candidate.highCost = MarkCost(encoding, language) + CaseCost(encoding, Extent::kAll) +
                             PairCosts(language, Extent::kAll) + TouchedTrigrams(language);
        candidate.cost = best.cost - best.highCost + candidate.highCost +
                         (index < kLatinLanguages ? AsciiTrigrams(index) : asciiTrigrams);
        candidate.kind = mbGuessLetters;
        candidate.language = language.name;
        candidate.characters = m_text.high;
        candidates->Add(candidate);
    }
}

CommonCosts Comparison::Compare(int rival, Candidates* candidates) {
    m_sampleEnd = static_cast<unsigned>(m_text.sampleLength);
    if (rival < kNoRival) m_mostHighCost = rival + rival / 4 + kRefineMargin;
    CountHighBytes();
    FindTouched();
    CompareAscii();
    SelectEncodings();
    SelectLanguages();
    CompareAllPairs();
    int ascii = INT_MAX;
    for (unsigned i = 0; i < 2; ++i) {
        const unsigned index = m_latinOrder[i];
        ascii = std::min(ascii, m_ascii[index] + AsciiTrigrams(index));
    }
    AddBest(ascii - m_ascii[m_latinOrder[0]], candidates);
    return {ascii, m_otherScript, static_cast<int>(m_touchedCount) * kNoiseCost + kNoNoiseGain};
}

}  // namespace

CommonCosts AddSingleByte(const Prepared& prepared, const Text& text, const Hint& hint, int rival,
                          Candidates* candidates) {
    return Comparison(prepared, text, hint).Compare(rival, candidates);
}

}  // namespace genutil::detect
