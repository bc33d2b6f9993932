#include "genutil/mbutil/character_blocks.h"

#include <bit>
#include <cstdint>
#include <cstring>

#include "genutil/simd.h"

namespace genutil {
namespace {

using simd::Vector;

template <unsigned Count>
Vector InFirst(Vector bytes, const StepTable::Ranges& ranges) {
    const auto inRange = [&](unsigned r) {
        return simd::InSpan8(bytes, simd::Load(ranges.low[r]), simd::Load(ranges.span[r]));
    };
    Vector in = inRange(0);
    for (unsigned r = 1; r < Count; ++r) in = in | inRange(r);
    return in;
}

// Computes the mask of a block from a test of 16 bytes.
template <class Test>
std::uint64_t MaskOf(const unsigned char* block, Test test) {
    std::uint64_t mask = 0;
    for (unsigned i = 0; i < kBlock; i += 16)
        mask |= std::uint64_t{simd::TopBits(test(simd::Load(block + i)))} << i;
    return mask;
}

// Returns the mask of the bytes in any of the ranges.
std::uint64_t MaskOfRanges(const unsigned char* block, const StepTable::Ranges& ranges) {
    if (ranges.count == 1) return MaskOf(block, [&](Vector b) { return InFirst<1>(b, ranges); });
    if (ranges.count == 2) return MaskOf(block, [&](Vector b) { return InFirst<2>(b, ranges); });
    return MaskOf(block, [&](Vector b) { return InFirst<3>(b, ranges); });
}

Vector InRanges(Vector bytes, const StepTable::Ranges& ranges) {
    return ranges.count == 1   ? InFirst<1>(bytes, ranges)
           : ranges.count == 2 ? InFirst<2>(bytes, ranges)
                               : InFirst<3>(bytes, ranges);
}

std::uint64_t MaskOfShifts(const unsigned char* block) {
    return MaskOf(block, [](Vector b) { return simd::InRange8(b, 0x8E, 0x8F); });
}

std::uint64_t FirstBits(std::size_t n) {
    return n < kBlock ? (std::uint64_t{1} << n) - 1 : ~std::uint64_t{0};
}

// Returns the mask of bytes that follow a lead byte of their own character: those at odd positions
// in their run.
std::uint64_t SecondBytes(std::uint64_t leads) {
    constexpr std::uint64_t kEven = 0x5555555555555555;
    const std::uint64_t follows = leads << 1;
    const std::uint64_t oddStarts = leads & ~kEven & ~follows;
    const std::uint64_t evenRuns = oddStarts + leads;
    return (kEven ^ (evenRuns << 1)) & follows;
}

}  // namespace

std::uint64_t MaskOfByte(const unsigned char* block, unsigned char byte) {
    const Vector wanted = simd::Splat8(byte);
    return MaskOf(block, [&](Vector bytes) { return simd::Equal8(bytes, wanted); });
}

void BlockWalker::Learn() {
    // Small windows first, so that a search that ends early does not pay for a long text.
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
    // Stepping reads up to three bytes after a block. Near the end these are zeroes in a copy.
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
    m_lone = 0;
    m_leads = 0;
    m_high = MaskOf(bytes, [](Vector b) { return b; });
    m_starts = FirstBits(available);
    if (!m_high) return;
    if (m_table.hasShifts && MaskOfShifts(bytes)) {
        ScanByStep(bytes, available);
        return;
    }
    m_leads = MaskOfRanges(bytes, m_table.leads);
    const std::uint64_t trails = MaskOfRanges(bytes, m_table.trails);
    const std::uint64_t seconds = SecondBytes(m_leads);
    // A lead byte at the end of the block, whose second byte is in the next block, is left to that
    // block.
    if (available == kBlock && (m_leads & ~seconds) >> (kBlock - 1)) m_size = kBlock - 1;
    m_lone = (seconds & ~trails) >> 1;
    m_starts = ~(seconds & trails) & FirstBits(m_size);
}

std::uint64_t BlockWalker::Invalid() const {
    const bool hasSingles = m_table.first[0xB1] == 1;  // half-width katakana
    const std::uint64_t singles =
        hasSingles ? MaskOf(m_data, [](Vector b) { return simd::InRange8(b, 0xA1, 0xDF); }) : 0;
    return m_starts & (m_lone | (m_high & ~m_leads & ~singles));
}

void BlockWalker::ScanByStep(const unsigned char* bytes, std::size_t available) {
    // Whole characters count as lead bytes here, so that the remaining bytes are invalid.
    m_starts = 0;
    std::size_t at = 0;
    while (at < available) {
        const unsigned step = StepLength(m_table, bytes + at);
        if (at + step > available) break;  // only in a full block, whose text continues
        m_starts |= std::uint64_t{1} << at;
        if (step > 1) m_leads |= std::uint64_t{1} << at;
        at += step;
    }
    m_size = at;
}

std::size_t CountCharacters(const StepTable& table, const unsigned char* s, std::size_t length) {
    std::size_t seconds = 0, at = 0;
    // Counts second bytes of pairs in whole blocks without shifts.
    while (length - at >= kBlock) {
        const std::uint64_t leads = MaskOfRanges(s + at, table.leads);
        if (table.hasShifts && MaskOfShifts(s + at)) break;
        const std::uint64_t follows = SecondBytes(leads);
        if (leads)
            seconds +=
                static_cast<unsigned>(std::popcount(follows & MaskOfRanges(s + at, table.trails)));
        at += kBlock - ((leads & ~follows) >> (kBlock - 1));
    }
    std::size_t count = at - seconds;
    BlockWalker walker(table, s + at, length - at);
    while (walker.Next()) count += static_cast<unsigned>(std::popcount(walker.Starts()));
    return count;
}

RunOfLeads FindRunOfLeads(const StepTable& table, const unsigned char* s, std::size_t idx) {
    RunOfLeads run{idx, false};
    // Sixteen bytes at a time, because long runs make every search backwards long.
    while (run.start >= 16) {
        const Vector bytes = simd::Load(s + run.start - 16);
        const Vector shifts = table.hasShifts ? simd::InRange8(bytes, 0x8E, 0x8F) : simd::Zero();
        const unsigned leads = simd::TopBits(shifts | InRanges(bytes, table.leads));
        const unsigned shiftMask = simd::TopBits(shifts);
        // The run is the sequence of ones at the top of `leads`.
        const auto length = static_cast<unsigned>(std::countl_one(leads << 16));
        if (length > 0) run.hasShift |= (shiftMask << 16 >> (32 - length)) != 0;
        run.start -= length;
        if (length < 16) return run;
    }
    while (run.start > 0) {
        const unsigned rule = table.first[s[run.start - 1]];
        if (rule <= 1 || rule == StepTable::kInvalid) break;
        --run.start;
        run.hasShift |= table.hasShifts && s[run.start] <= 0x8F;
    }
    return run;
}

}  // namespace genutil
