// What the detector knows about languages: how likely a letter is after one and two others.
//
// A cost is -log2 of a probability, in sixths of a bit: 6 costs halve a probability. The tables are
// made by tools/tables/detect_models.py and hold a value from 0 to 91 as a printable character.
#pragma once

#include <cstdint>

namespace genutil::detect {

constexpr int kCostOfBit = 6;
constexpr int kHighestCost = 91;

enum class Script : std::uint8_t { kLatin, kCyrillic, kGreek, kHebrew, kArabic, kThai };
constexpr unsigned kScripts = 6;

// A letter has a number within its script, the same in both cases. 0 is anything but a letter. In
// scripts other than Latin, 1 is any Latin letter.
struct Letter {
    std::uint16_t character;
    std::uint8_t script, number;
    bool isUpper;
};

// Returns the letter of a character, or null if no code set of single bytes has such a letter.
const Letter* FindLetter(unsigned character);

// Returns the index of a character in the languages' tables of marks: punctuation and signs that
// texts often contain. Returns -1 if it is not among them.
int FindMark(unsigned character);

constexpr unsigned kTrigramSlots = 1792;

struct Language {
    char name[4];  // of the locale: "de"
    std::uint8_t script;
    std::uint8_t symbols;  // symbol 0 is no letter; the last is any letter foreign to the language
    const char* symbolOf;  // indexed by the number of a letter
    const char* single;    // costs of symbols
    const char* pairs;     // costs of a symbol after another, at first * symbols + second
    const char* trigrams;  // see TrigramDifference()
    const char* marks;     // costs of marks

    static int Value(char c) { return c - '#'; }
    unsigned SymbolOf(unsigned letter) const {
        return static_cast<unsigned>(Value(symbolOf[letter]));
    }
    int SingleCost(unsigned symbol) const { return Value(single[symbol]); }
    int PairCost(unsigned a, unsigned b) const { return Value(pairs[a * symbols + b]); }

    // Returns what the symbol before a pair adds to the cost of its second symbol. A slot of the
    // table has a check value and the difference. A trigram is in its slot or in the neighbouring
    // one, if it is kept at all.
    int TrigramDifference(unsigned a, unsigned b, unsigned c) const {
        const std::uint32_t code = (a * symbols + b) * symbols + c;
        const std::uint32_t hash = code * 0x9E3779B1u;
        const std::uint32_t slot = (hash >> 16) * kTrigramSlots >> 16;
        const char check = static_cast<char>('#' + ((hash & 0xFFFF) * 92 >> 16));
        const char* const first = trigrams + 2 * slot;
        if (*first == check) return Value(first[1]) - kNoDifference;
        const char* const second = trigrams + 2 * (slot ^ 1);
        return *second == check ? Value(second[1]) - kNoDifference : 0;
    }

  private:
    static constexpr int kNoDifference = 46;
};

constexpr unsigned kLanguages = 45;
constexpr unsigned kLatinLanguages = 34;  // they come first
extern const Language kLanguageTable[kLanguages];

// Languages of ideographs and syllables.
enum class Ideographs : std::uint8_t { kJapanese, kSimplified, kTraditional, kKorean };
constexpr unsigned kIdeographLanguages = 4;

// Returns the cost of a character of more than one byte in a language.
int IdeographCost(Ideographs language, unsigned character);

}  // namespace genutil::detect
