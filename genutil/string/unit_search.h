// Search in text of bytes or of 16-bit characters ("units"), 16 of them at a time.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "genutil/simd.h"

namespace genutil {

constexpr std::size_t kUnitBlock = 16;

inline simd::Vector SplatUnit(unsigned char unit) {
    return simd::Splat8(unit);
}
inline simd::Vector SplatUnit(unsigned short unit) {
    return simd::Splat16(unit);
}

// Returns one bit for each of 16 units.
inline unsigned EqualUnits(const unsigned char* p, simd::Vector wanted) {
    return simd::TopBits(simd::Equal8(simd::Load(p), wanted));
}
inline unsigned EqualUnits(const unsigned short* p, simd::Vector wanted) {
    const simd::Vector low = simd::Equal16(simd::Load(p), wanted);
    const simd::Vector high = simd::Equal16(simd::Load(p + 8), wanted);
    return simd::TopBits(simd::NarrowSigned(low, high));
}

// Finds the positions in a text that begin with any of a few units. For a single unit, it can also
// require another unit at a distance.
template <class Unit>
class UnitFinder {
  public:
    static constexpr unsigned kMost = 6;

    UnitFinder(const Unit* text, std::size_t length) : m_text(text), m_length(length) {}

    // The remaining entries repeat the unit, so that the number of comparisons is fixed.
    void AddFirst(Unit unit) {
        for (unsigned i = m_count++; i < kMost; ++i) m_first[i] = SplatUnit(unit);
    }
    void RequireAt(std::size_t distance, Unit unit) {
        m_distance = distance;
        m_later = SplatUnit(unit);
    }

    // Calls visit(position) for every match from `from` on. The result is the position at which the
    // search continues.
    template <class Visitor>
    void ForEach(std::size_t from, Visitor visit) const {
        if (m_count == 1)
            ForEachOf<1>(from, visit);
        else if (m_count <= 3)
            ForEachOf<3>(from, visit);
        else
            ForEachOf<kMost>(from, visit);
    }

    // With a single unit: returns the number of matches.
    std::size_t Count() const {
        std::size_t count = 0;
        for (std::size_t base = 0; base < m_length; base += 4 * kUnitBlock)
            count += static_cast<unsigned>(std::popcount(LongMaskAt<1>(base)));
        return count;
    }

    // With a single unit: returns the next match from `from` on, or the length of the text if there
    // is none. `from` must never decrease.
    std::size_t Next(std::size_t from) {
        if (!m_begun || from >= m_base + kUnitBlock) {
            m_begun = true;
            m_base = from;
            m_mask = from < m_length ? MaskFrom(from) : 0;
        } else {
            m_mask &= ~0u << (from - m_base);
        }
        while (!m_mask) {
            m_base += kUnitBlock;
            if (m_base >= m_length) return m_length;
            m_mask = MaskFrom(m_base);
        }
        return m_base + static_cast<unsigned>(std::countr_zero(m_mask));
    }

  private:
    unsigned MaskFrom(std::size_t base) const { return MaskAt<1>(base); }

    // In steps of 64 units, so that one unpredictable branch serves several positions.
    template <unsigned Count, class Visitor>
    void ForEachOf(std::size_t from, Visitor visit) const {
        std::size_t behind = from;
        for (std::size_t base = from; base < m_length; base += 4 * kUnitBlock)
            for (std::uint64_t mask = LongMaskAt<Count>(base); mask; mask &= mask - 1) {
                const std::size_t at = base + static_cast<unsigned>(std::countr_zero(mask));
                if (at >= behind) behind = visit(at);
            }
    }

    template <unsigned Count>
    std::uint64_t LongMaskAt(std::size_t base) const {
        const bool whole = m_length - base >= 4 * kUnitBlock + m_distance;
        std::uint64_t mask = 0;
        for (unsigned i = 0; i < 4; ++i, base += kUnitBlock) {
            if (base >= m_length) break;
            const unsigned part = whole ? Compare<Count>(m_text + base, m_text + base + m_distance)
                                        : MaskAt<Count>(base);
            mask |= std::uint64_t{part} << (i * kUnitBlock);
        }
        return mask;
    }

    template <unsigned Count>
    unsigned Compare(const Unit* first, const Unit* later) const {
        unsigned mask = EqualUnits(first, m_first[0]);
        for (unsigned i = 1; i < Count; ++i) mask |= EqualUnits(first, m_first[i]);
        if (m_distance) mask &= EqualUnits(later, m_later);
        return mask;
    }

    // No unit after the end of the text is read.
    template <unsigned Count>
    unsigned MaskAt(std::size_t base) const {
        if (m_length - base >= kUnitBlock + m_distance)
            return Compare<Count>(m_text + base, m_text + base + m_distance);
        const std::size_t left = m_length - base;
        if (left <= m_distance) return 0;
        Unit first[kUnitBlock] = {}, later[kUnitBlock] = {};
        const std::size_t n = left - m_distance < kUnitBlock ? left - m_distance : kUnitBlock;
        std::memcpy(first, m_text + base, n * sizeof(Unit));
        std::memcpy(later, m_text + base + m_distance, n * sizeof(Unit));
        return Compare<Count>(first, later) & ((1u << n) - 1);
    }

    const Unit* const m_text;
    const std::size_t m_length;
    simd::Vector m_first[kMost] = {};
    simd::Vector m_later = simd::Zero();
    unsigned m_count = 0;
    std::size_t m_distance = 0;
    std::size_t m_base = 0;
    unsigned m_mask = 0;
    bool m_begun = false;
};

// Returns true if the first and the last Word of n bytes are equal. The two may overlap.
template <class Word>
bool SameEnds(const unsigned char* a, const unsigned char* b, std::size_t n) {
    Word x, y, u, v;
    std::memcpy(&x, a, sizeof x);
    std::memcpy(&y, b, sizeof y);
    std::memcpy(&u, a + n - sizeof u, sizeof u);
    std::memcpy(&v, b + n - sizeof v, sizeof v);
    return ((x ^ y) | (u ^ v)) == 0;
}

template <class Unit>
bool SameUnits(const Unit* a, const Unit* b, std::size_t n) {
    const auto* p = reinterpret_cast<const unsigned char*>(a);
    const auto* q = reinterpret_cast<const unsigned char*>(b);
    const std::size_t bytes = n * sizeof(Unit);
    if (bytes >= 4 && bytes <= 8) return SameEnds<std::uint32_t>(p, q, bytes);
    if (bytes > 8 && bytes <= 16) return SameEnds<std::uint64_t>(p, q, bytes);
    if (bytes > 16) return std::memcmp(p, q, bytes) == 0;
    for (std::size_t i = 0; i < bytes; ++i)
        if (p[i] != q[i]) return false;
    return true;
}

constexpr std::size_t kNotFound = ~std::size_t{0};

// Finds the first occurrence of a needle from `from` on. An empty needle is found at once.
template <class Unit>
std::size_t FindUnits(const Unit* text, std::size_t length, const Unit* needle, std::size_t size,
                      std::size_t from) {
    if (size == 0) return from;
    if (from > length || length - from < size) return kNotFound;
    UnitFinder<Unit> finder(text, length);
    finder.AddFirst(needle[0]);
    if (size > 1) finder.RequireAt(size - 1, needle[size - 1]);
    for (std::size_t at = from; (at = finder.Next(at)) < length; ++at)
        if (size <= 2 || SameUnits(text + at + 1, needle + 1, size - 2)) return at;
    return kNotFound;
}

}  // namespace genutil
