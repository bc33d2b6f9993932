#include "genutil/mbutil/pair_finder.h"

#include <bit>
#include <cstring>

#include "genutil/simd.h"

namespace genutil {

// Returns one bit for each of 16 bytes. Reads 17 bytes, or 16 if only one byte is searched for.
std::uint32_t PairFinder::Matches(const unsigned char* bytes) const {
    const auto equal = [](const unsigned char* p, unsigned char wanted) {
        return simd::Equal8(simd::Load(p), simd::Splat8(wanted));
    };
    simd::Vector match = equal(bytes, m_first);
    if (m_second) match = match & equal(bytes + 1, m_second);
    return simd::TopBits(match);
}

// Searches for the terminator in windows, so that a search that ends early does not pay for a long
// text.
bool PairFinder::Learn() {
    if (m_ended) return false;
    const void* end = std::memchr(m_known, 0, m_window);
    m_ended = end != nullptr;
    m_known = end ? static_cast<const unsigned char*>(end) : m_known + m_window;
    if (m_window < 8192) m_window *= 4;
    return true;
}

const unsigned char* PairFinder::Next() {
    while (!m_matches) {
        if (m_started) m_at += kStep;
        m_started = true;
        while (m_known <= m_at + kStep && Learn()) {
        }
        if (m_known > m_at + kStep) {
            m_matches = Matches(m_at);
            continue;
        }
        if (m_known <= m_at) return nullptr;
        unsigned char tail[2 * kStep] = {};
        std::memcpy(tail, m_at, static_cast<std::size_t>(m_known - m_at));
        m_matches = Matches(tail);
    }
    const unsigned char* found = m_at + std::countr_zero(m_matches);
    m_matches &= m_matches - 1;
    return found;
}

}  // namespace genutil
