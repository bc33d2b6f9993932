// The text whose encoding is sought, and the encodings that it may be in.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "genutil/mbutil/detect_model.h"

namespace genutil::detect {

constexpr std::size_t kSampleSize = 2048;

// A look at all bytes of a text, and those of them at which letters are compared.
struct Text {
    const unsigned char* bytes = nullptr;
    std::size_t length = 0;
    std::uint64_t present[4] = {};  // a bit for each byte value that occurs
    std::size_t high = 0;           // number of bytes above ASCII
    std::size_t controls = 0;       // number of control characters that texts do not contain
    std::size_t escapes = 0;        // number of escape characters and shifts

    // Parts of the text with bytes above ASCII, separated by line ends.
    unsigned char sample[kSampleSize];
    std::size_t sampleLength = 0;
};
void Examine(const unsigned char* bytes, std::size_t length, Text* text);

// A language that the caller expects.
struct Hint {
    char language[4] = {};  // as in Language::name and IdeographLanguageName()
    bool Is(const char* name) const;
};
constexpr int kHintGain = 6 * kCostOfBit;

struct Candidate {
    const char* name;  // of the encoding
    int codeSet;
    int kind = 0;  // one of mbGuessKind
    int cost = 0;  // of the whole text
    const char* language = "";
    std::size_t characters = 0;  // above ASCII
    std::size_t bad = 0;         // invalid bytes
    // The part of the cost that the characters above ASCII cause.
    int highCost = 0;
};

class Candidates {
  public:
    // Adds a candidate, or replaces its encoding's earlier one if it is better.
    void Add(const Candidate& candidate);
    void Sort();
    std::size_t size() const { return m_count; }
    Candidate& operator[](std::size_t i) { return m_all[i]; }
    const Candidate* begin() const { return m_all.data(); }
    const Candidate* end() const { return begin() + m_count; }

  private:
    std::array<Candidate, 48> m_all;
    std::size_t m_count = 0;
};

// The costs of the parts of a text that all encodings have in common.
struct CommonCosts {
    int ascii = 0;        // of the ASCII letters, in the language in which they are likeliest
    int otherScript = 0;  // of the Latin words, in a text of another script
    int noise = 0;        // of the rest, if it is no text
};

// Each adds the encodings of its kind in which the text is valid. The costs of the others are those
// of the characters above ASCII alone; `rival` is the least of them, and encodings of single bytes
// that cannot compete are left out.
constexpr int kNoRival = 1 << 30;
struct Prepared;
CommonCosts AddSingleByte(const Prepared& prepared, const Text& text, const Hint& hint, int rival,
                          Candidates* candidates);
void AddDoubleByte(const Text& text, const Hint& hint, Candidates* candidates);
void AddUtf8(const Text& text, Candidates* candidates);
void AddUtf16(const Text& text, Candidates* candidates);
void AddUtf32(const Text& text, Candidates* candidates);
// Adds the code set whose escape sequences a text has, if every byte between them is in its place.
void AddEscapes(const Text& text, Candidates* candidates);

}  // namespace genutil::detect
