#include "osutil/file/name_pattern.h"

#include <cstring>

#include "genutil/mbutil/wide_convert.h"

namespace genutil {

NamePattern::NamePattern(const char* pattern) {
    m_everything = std::strcmp(pattern, "*") == 0 || std::strcmp(pattern, "*.*") == 0;
    const platform::PathUnits units(pattern);
    if (!m_everything && units.Get()) Compile(units.Get(), units.Count());
    m_failed = !m_everything && !m_reached.Get();
}

void NamePattern::Compile(const unsigned short* pattern, std::size_t count) {
    unsigned short* const out = m_elements.Reserve(count + 1);
    if (!out || !m_reached.Reserve(count + 1)) return;
    std::size_t end = count;  // no name ends in a dot
    while (end > 1 && pattern[end - 1] == '.' && pattern[end - 2] != '.') --end;
    for (std::size_t i = 0; i < end; ++i) {
        const unsigned short c = pattern[i], next = i + 1 < count ? pattern[i + 1] : 0;
        if (c == '*')
            out[i] = next == '.' ? kAnyButLastDot : kAny;
        else if (c == '?')
            out[i] = kOne;
        else if (c == '.' && (next == '*' || next == '?'))
            out[i] = kDotOrEnd;
        else
            out[i] = ToUpperWide(c);
    }
    m_count = end;
}

// Skips the elements that can match no character before this one.
void NamePattern::Skip(unsigned short next, bool atEnd) {
    unsigned char* const reached = m_reached.Get();
    for (std::size_t i = 0; i < m_count; ++i) {
        const unsigned short element = m_elements.Get()[i];
        const bool optional = element == kAny || element == kAnyButLastDot ||
                              (element == kOne && (atEnd || next == '.')) ||
                              (element == kDotOrEnd && atEnd);
        if (reached[i] && optional) reached[i + 1] = 1;
    }
}

void NamePattern::Step(unsigned short character, bool lastDot) {
    Skip(character, false);
    unsigned char* const reached = m_reached.Get();
    for (std::size_t i = m_count + 1; i-- > 0;) {
        const unsigned short here = i < m_count ? m_elements.Get()[i] : 0;
        const unsigned short before = i > 0 ? m_elements.Get()[i - 1] : 0;
        const bool stays = here == kAny || (here == kAnyButLastDot && !lastDot);
        const bool comes = (before == kOne && character != '.') ||
                           (before == kDotOrEnd && character == '.') || before == character;
        reached[i] = (reached[i] && stays) || (i > 0 && reached[i - 1] && comes);
    }
}

bool NamePattern::Matches(const char* name) {
    if (m_everything) return true;
    const platform::PathUnits units(name);
    m_failed |= !units.Get();
    if (!m_reached.Get() || !units.Get()) return false;
    std::memset(m_reached.Get(), 0, m_count + 1);
    m_reached.Get()[0] = 1;
    std::size_t lastDot = units.Count();
    while (lastDot > 0 && units.Get()[lastDot - 1] != '.') --lastDot;
    for (std::size_t i = 0; i < units.Count(); ++i)
        Step(ToUpperWide(units.Get()[i]), i + 1 == lastDot);
    Skip(0, true);
    return m_reached.Get()[m_count];
}

}  // namespace genutil
