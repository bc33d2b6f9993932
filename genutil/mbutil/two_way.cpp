#include "genutil/mbutil/two_way.h"

#include <algorithm>
#include <cstring>

namespace genutil {

namespace {

struct Suffix {
    std::size_t start, period;
};

// Returns the maximal suffix of a needle in the order of the bytes or in the reverse one.
Suffix MaximalSuffix(const unsigned char* needle, std::size_t length, bool reverse) {
    std::size_t start = 0, other = 1, k = 0, period = 1;
    while (other + k < length) {
        const unsigned char a = needle[other + k], b = needle[start + k];
        if (a == b) {
            if (++k == period) {
                other += period;
                k = 0;
            }
        } else if ((a < b) != reverse) {
            other += k + 1;
            k = 0;
            period = other - start;
        } else {
            start = other++;
            k = 0;
            period = 1;
        }
    }
    return {start, period};
}

}  // namespace

TwoWayFinder::TwoWayFinder(const unsigned char* text, std::size_t length,
                           const unsigned char* needle, std::size_t needleLength)
    : m_text(text), m_length(length), m_needle(needle), m_needleLength(needleLength) {
    const Suffix one = MaximalSuffix(needle, needleLength, false);
    const Suffix two = MaximalSuffix(needle, needleLength, true);
    const Suffix& critical = one.start > two.start ? one : two;
    m_left = critical.start;
    m_period = critical.period;
    m_periodic =
        m_left + m_period <= needleLength && std::memcmp(needle, needle + m_period, m_left) == 0;
    if (!m_periodic) m_period = std::max(m_left, needleLength - m_left) + 1;
}

// Compares the right part of the needle forwards, then the left part backwards. `shift` receives
// the distance to the next place where the needle may be.
bool TwoWayFinder::MatchesAt(const unsigned char* at, std::size_t* shift) {
    std::size_t i = std::max(m_left, m_known);
    while (i < m_needleLength && m_needle[i] == at[i]) ++i;
    if (i < m_needleLength) {
        *shift = i - m_left + 1;
        m_known = 0;
        return false;
    }
    i = m_left;
    while (i > m_known && m_needle[i - 1] == at[i - 1]) --i;
    const bool matches = i <= m_known;
    *shift = m_period;
    m_known = m_periodic ? m_needleLength - m_period : 0;
    return matches;
}

const unsigned char* TwoWayFinder::Next() {
    while (m_at + m_needleLength <= m_length) {
        const unsigned char* const at = m_text + m_at;
        std::size_t shift;
        const bool matches = MatchesAt(at, &shift);
        m_at += shift;
        if (matches) return at;
    }
    return nullptr;
}

}  // namespace genutil
