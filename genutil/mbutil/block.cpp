#include "genutil/mbutil/block.h"

#include <emmintrin.h>

#include <bit>
#include <cstring>

namespace genutil {
namespace {

__m128i Load(const unsigned char* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

__m128i InRange(__m128i bytes, std::array<std::uint8_t, 2> range) {
    const __m128i offset = _mm_sub_epi8(bytes, _mm_set1_epi8(static_cast<char>(range[0])));
    const __m128i span = _mm_set1_epi8(static_cast<char>(range[1]));
    return _mm_cmpeq_epi8(_mm_min_epu8(offset, span), offset);
}

__m128i InRanges(__m128i bytes, const std::array<std::array<std::uint8_t, 2>, 3>& ranges) {
    __m128i in = InRange(bytes, ranges[0]);
    if (ranges[1] != ranges[0]) in = _mm_or_si128(in, InRange(bytes, ranges[1]));
    if (ranges[2] != ranges[1]) in = _mm_or_si128(in, InRange(bytes, ranges[2]));
    return in;
}

// The mask of a block from a test of 16 bytes.
template <class Test>
std::uint64_t MaskOf(const unsigned char* block, Test test) {
    std::uint64_t mask = 0;
    for (unsigned i = 0; i < kBlock; i += 16)
        mask |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(test(Load(block + i))))} << i;
    return mask;
}

constexpr std::array<std::uint8_t, 2> kShifts = {0x8E, 1};

// Of the bytes that follow a lead byte of their own character: those at odd places in their run.
std::uint64_t SecondBytes(std::uint64_t leads) {
    constexpr std::uint64_t kEven = 0x5555555555555555;
    const std::uint64_t follows = leads << 1;
    const std::uint64_t oddStarts = leads & ~kEven & ~follows;
    const std::uint64_t evenRuns = oddStarts + leads;
    return (kEven ^ (evenRuns << 1)) & follows;
}

}  // namespace

std::uint64_t MaskOfByte(const unsigned char* block, unsigned char byte) {
    const __m128i wanted = _mm_set1_epi8(static_cast<char>(byte));
    return MaskOf(block, [&](__m128i bytes) { return _mm_cmpeq_epi8(bytes, wanted); });
}

void BlockWalker::Learn() {
    // Small windows first: a search that ends early must not pay for a long text.
    while (!m_ended && m_known - m_position < kBlock) {
        const void* end = std::memchr(m_text + m_known, 0, m_window);
        m_ended = end != nullptr;
        m_known = end ? static_cast<std::size_t>(static_cast<const unsigned char*>(end) - m_text)
                      : m_known + m_window;
        if (m_window < 4096) m_window *= 4;
    }
}

bool BlockWalker::Next() {
    m_position += m_size;
    Learn();
    const std::size_t left = m_known - m_position;
    if (left == 0) return false;
    const unsigned char* bytes = m_text + m_position;
    // Stepping looks up to three bytes behind a block: near the end these are zeroes of a copy.
    if (m_ended && left < sizeof m_tail) {
        std::memcpy(m_tail, bytes, left);
        std::memset(m_tail + left, 0, sizeof m_tail - left);
        bytes = m_tail;
    }
    Scan(bytes, left < kBlock ? left : kBlock);
    return true;
}

void BlockWalker::Scan(const unsigned char* bytes, std::size_t available) {
    m_data = bytes;
    m_size = available;
    const std::uint64_t inText =
        available < kBlock ? (std::uint64_t{1} << available) - 1 : ~std::uint64_t{0};
    const std::uint64_t high = MaskOf(bytes, [](__m128i b) { return b; });
    if (!high) {
        m_starts = inText;
        m_invalid = 0;
        return;
    }
    if (m_table.hasShifts && MaskOf(bytes, [](__m128i b) { return InRange(b, kShifts); })) {
        ScanByStep(bytes, available);
        return;
    }
    std::uint64_t leads = MaskOf(bytes, [&](__m128i b) { return InRanges(b, m_table.leadRanges); });
    const std::uint64_t trails =
        MaskOf(bytes, [&](__m128i b) { return InRanges(b, m_table.trailRanges); });
    std::uint64_t seconds = SecondBytes(leads);
    constexpr std::uint64_t kLast = std::uint64_t{1} << (kBlock - 1);
    if (available == kBlock && (leads & ~seconds & kLast)) {
        // Its second byte lies in the next block: leave both to that.
        m_size = kBlock - 1;
    }
    const std::uint64_t lone = (seconds & ~trails) >> 1;  // lead bytes whose second byte is none
    seconds &= trails;
    m_starts = ~seconds & (m_size < kBlock ? (std::uint64_t{1} << m_size) - 1 : ~std::uint64_t{0});
    const std::uint64_t singles = m_table.first[0xB1] == 1
                                      ? MaskOf(bytes,
                                               [](__m128i b) {
                                                   return InRange(b, {0xA1, 0xDF - 0xA1});
                                               })
                                      : 0;
    const std::uint64_t cutAtEnd =
        available < kBlock ? leads & (std::uint64_t{1} << (available - 1)) : 0;
    m_invalid = m_starts & (lone | cutAtEnd | (high & ~leads & ~singles));
}

void BlockWalker::ScanByStep(const unsigned char* bytes, std::size_t available) {
    m_starts = m_invalid = 0;
    std::size_t at = 0;
    while (at < available) {
        const unsigned step = StepLength(m_table, bytes + at);
        if (at + step > available) break;  // only in a full block, whose text goes on
        m_starts |= std::uint64_t{1} << at;
        if (step == 1 && bytes[at] >= 0x80 && m_table.first[bytes[at]] != 1)
            m_invalid |= std::uint64_t{1} << at;
        at += step;
    }
    m_size = at;
}

std::size_t CountCharacters(const StepTable& table, const unsigned char* s, std::size_t length) {
    std::size_t count = 0;
    BlockWalker walker(table, s, length);
    while (walker.Next()) count += static_cast<unsigned>(std::popcount(walker.Starts()));
    return count;
}

RunOfLeads FindRunOfLeads(const StepTable& table, const unsigned char* s, std::size_t idx) {
    RunOfLeads run{idx, false};
    // A few bytes by hand, then 16 at a time: only text without ASCII has long runs.
    for (int i = 0; run.start > 0 && i < 16; ++i) {
        const unsigned rule = table.first[s[run.start - 1]];
        if (rule <= 1 || (rule & StepTable::kInvalid)) return run;
        --run.start;
        run.hasShift |= table.hasShifts && s[run.start] <= 0x8F;
    }
    while (run.start >= 16) {
        const __m128i bytes = Load(s + run.start - 16);
        const __m128i shifts = table.hasShifts ? InRange(bytes, kShifts) : _mm_setzero_si128();
        const auto leads = static_cast<unsigned>(
            _mm_movemask_epi8(_mm_or_si128(shifts, InRanges(bytes, table.leadRanges))));
        const auto shiftMask = static_cast<unsigned>(_mm_movemask_epi8(shifts));
        // Bytes of the run are the ones at the top of `leads`.
        const unsigned length = static_cast<unsigned>(std::countl_one(leads << 16));
        if (length > 0) run.hasShift |= (shiftMask << 16 >> (32 - length)) != 0;
        run.start -= length;
        if (length < 16) return run;
    }
    while (run.start > 0) {
        const unsigned rule = table.first[s[run.start - 1]];
        if (rule <= 1 || (rule & StepTable::kInvalid)) break;
        --run.start;
        run.hasShift |= table.hasShifts && s[run.start] <= 0x8F;
    }
    return run;
}

}  // namespace genutil
