// The starts of characters, 64 bytes at a time.
//
// In a run of lead bytes, every second one is a trail byte. All runs of a block are resolved at
// once by the arithmetic that finds escaped characters in quoted text: the runs that start at odd
// positions are added to the lead bytes, and the carries mark the end of each run.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/mbutil/step.h"

namespace genutil {

constexpr std::size_t kBlock = 64;

// Returns a mask in which bit i is set if byte i has the given value.
std::uint64_t MaskOfByte(const unsigned char* block, unsigned char byte);

// A walk over a text in blocks, each of which begins at the start of a character.
class BlockWalker {
  public:
    // A terminated text. No byte after the terminator is read.
    BlockWalker(const StepTable& table, const unsigned char* text)
        : m_table(table), m_text(text), m_known(0), m_ended(false) {}
    // The first `length` bytes of a text, which contain no terminator.
    BlockWalker(const StepTable& table, const unsigned char* text, std::size_t length)
        : m_table(table), m_text(text), m_known(length), m_ended(true) {}

    // Advances to the next block. Returns false at the end. The following functions describe the
    // current block.
    bool Next();
    std::size_t Position() const { return m_position; }  // of its first byte in the text
    std::size_t Size() const { return m_size; }          // in bytes, 1 to 64
    const unsigned char* Data() const {
        return m_data;
    }                                                  // 64 bytes, zero after the end of the
                                                       // text
    std::uint64_t Starts() const { return m_starts; }  // bits of bytes that begin a character
    std::uint64_t Invalid() const;                     // bits of those starts that are invalid

  private:
    void Learn();
    void Scan(const unsigned char* bytes, std::size_t available);
    void ScanByStep(const unsigned char* bytes, std::size_t available);

    const StepTable& m_table;
    const unsigned char* const m_text;
    std::size_t m_known;  // number of bytes known to precede the terminator
    bool m_ended;         // the text ends at m_known
    std::size_t m_window = kBlock;
    std::size_t m_position = 0;
    std::size_t m_size = 0;
    const unsigned char* m_data = nullptr;
    std::uint64_t m_starts = 0;
    std::uint64_t m_high = 0, m_leads = 0;
    std::uint64_t m_lone = 0;  // lead bytes not followed by a valid second byte
    unsigned char m_tail[kBlock + 4] = {};
};

// Counts the characters in `length` bytes that contain no terminator.
std::size_t CountCharacters(const StepTable& table, const unsigned char* s, std::size_t length);

// The run of lead bytes that ends at byte idx: its start, and true if it contains 0x8E or 0x8F.
struct RunOfLeads {
    std::size_t start;
    bool hasShift;
};
RunOfLeads FindRunOfLeads(const StepTable& table, const unsigned char* s, std::size_t idx);

}  // namespace genutil
