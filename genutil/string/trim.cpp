// CGNString's trims: blanks at either end, by bytes. No blank is part of a longer character.
#include <cstddef>
#include <cstring>

#include "genstring.h"
#include "genutil/string/storage.h"

using Storage = genutil::StringStorage;

namespace {

struct Part {
    std::uint32_t begin, end;
};

bool IsBlank(char c, bool tabs) {
    return c == ' ' || (tabs && c == '\t');
}

Part LeftTrimmed(const char* text, Part part, bool tabs) {
    while (part.begin < part.end && IsBlank(text[part.begin], tabs)) ++part.begin;
    return part;
}

Part RightTrimmed(const char* text, Part part, bool tabs) {
    while (part.begin < part.end && IsBlank(text[part.end - 1], tabs)) --part.end;
    return part;
}

}  // namespace

// Assigns a part, up to its first 0 byte, to `out`.
void CGNString::StorePart(CGNString& out, unsigned int begin, unsigned int end) const {
    const std::size_t n = end - begin;
    const void* nul = n ? std::memchr(m_data + begin, 0, n) : nullptr;
    const char* const text = m_data + begin;
    const std::size_t length =
        nul ? static_cast<std::size_t>(static_cast<const char*>(nul) - text) : n;
    Storage::Store(out, text, 0, length);
}

void CGNString::LeftTrim(CGNString& out) const {
    const Part part = LeftTrimmed(m_data, {0, m_length}, false);
    StorePart(out, part.begin, part.end);
}

void CGNString::LeftTrimWithTab(CGNString& out) const {
    const Part part = LeftTrimmed(m_data, {0, m_length}, true);
    StorePart(out, part.begin, part.end);
}

void CGNString::RightTrim(CGNString& out) const {
    const Part part = RightTrimmed(m_data, {0, m_length}, false);
    StorePart(out, part.begin, part.end);
}

// Changes the first trailing blank to a space in the string itself, because programs that store
// such texts depend on it.
void CGNString::RightTrimWithTab(CGNString& out) const {
    const Part part = RightTrimmed(m_data, {0, m_length}, true);
    if (part.end < m_length && m_data[part.end] == '\t') {
        m_data[part.end] = ' ';
        Storage::DropWide(*this);
    }
    StorePart(out, part.begin, part.end);
}

void CGNString::LeftRightTrim(CGNString& out) const {
    const Part part = RightTrimmed(m_data, LeftTrimmed(m_data, {0, m_length}, false), false);
    StorePart(out, part.begin, part.end);
}
