// Character starts of 64 bytes at a time.
//
// In a run of lead bytes every second one is a trail byte. Which of them, for all runs of a block
// at once, is the arithmetic that tells escaped characters in quoted text: add the runs that start
// on odd positions to themselves, and the carries mark where each run ends.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/mbutil/step.h"

namespace genutil {

constexpr std::size_t kBlock = 64;

// Bit i of a mask speaks of byte i.
std::uint64_t MaskOfByte(const unsigned char* block, unsigned char byte);

// Goes through a text block by block; each begins at a character's start.
class BlockWalker {
  public:
    // A text up to its terminator, of which no byte behind it is read.
    BlockWalker(const StepTable& table, const unsigned char* text)
        : m_table(table), m_text(text), m_known(0), m_ended(false) {}
    // The first `length` bytes of a text that holds no terminator in them.
    BlockWalker(const StepTable& table, const unsigned char* text, std::size_t length)
        : m_table(table), m_text(text), m_known(length), m_ended(true) {}

    // Advances; false at the end. Then the following speak of the new block:
    bool Next();
    std::size_t Position() const { return m_position; }   // of its first byte in the text
    std::size_t Size() const { return m_size; }           // its bytes, 1 to 64
    const unsigned char* Data() const { return m_data; }  // 64 bytes, zero behind the text's end
    std::uint64_t Starts() const { return m_starts; }     // bytes that begin a character
    std::uint64_t Invalid() const;                        // of these, the invalid ones

  private:
    void Learn();
    void Scan(const unsigned char* bytes, std::size_t available);
    void ScanByStep(const unsigned char* bytes, std::size_t available);

    const StepTable& m_table;
    const unsigned char* const m_text;
    std::size_t m_known;  // bytes before the terminator, as far as it is known
    bool m_ended;         // m_known ends the text
    std::size_t m_window = kBlock;
    std::size_t m_position = 0;
    std::size_t m_size = 0;
    const unsigned char* m_data = nullptr;
    std::uint64_t m_starts = 0;
    std::uint64_t m_high = 0, m_leads = 0;
    std::uint64_t m_lone = 0;  // lead bytes whose second byte is none
    unsigned char m_tail[kBlock + 4] = {};
};

// Characters in `length` bytes without a terminator.
std::size_t CountCharacters(const StepTable& table, const unsigned char* s, std::size_t length);

// The run of lead bytes that ends at byte idx: where it starts, and whether 0x8E or 0x8F is in it.
struct RunOfLeads {
    std::size_t start;
    bool hasShift;
};
RunOfLeads FindRunOfLeads(const StepTable& table, const unsigned char* s, std::size_t idx);

}  // namespace genutil
