#include "genutil/mbutil/exact_text.h"

#include <cstring>

#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/code_read.h"

namespace genutil {

namespace {

// The length of the code at p that is its character's own; 0 when it is another's or none.
unsigned ExactLength(const CodePage& page, const unsigned char* p, const unsigned char* end) {
    const CodeRead read = ReadCode(page, p, end);
    if (read.length == 0) return 0;
    if (read.length <= 2 && page.returns[*p]) return read.length;
    const unsigned cell = page.Back(read.character);
    unsigned char code[4];
    if (cell == 0 || WriteCode(page, cell, code) != read.length) return 0;
    for (unsigned i = 0; i < read.length; ++i)
        if (code[i] != p[i]) return 0;
    return read.length;
}

bool IsExactPairs(const CodePage& page, const unsigned char* p, const unsigned char* end) {
    const std::uint16_t* const pairs = page.pairs.get();
    while (p < end) {
        const unsigned lead = *p;
        if (lead < 0x80) {
            p += AsciiRun(p, static_cast<std::size_t>(end - p));
        } else if (page.returns[lead] && end - p >= 2 && page.bytes[lead] == kNoCharacter &&
                   pairs[CodePage::PairIndex(lead, p[1])] != kNoCharacter) {
            p += 2;
        } else {
            const unsigned length = ExactLength(page, p, end);
            if (length == 0) return false;
            p += length;
        }
    }
    return true;
}

bool IsExactUtf8(const unsigned char* p, const unsigned char* end) {
    while (p < end) {
        if (*p < 0x80) {
            p += AsciiRun(p, static_cast<std::size_t>(end - p));
            continue;
        }
        const unsigned length = ReadUtf8(p, end).length;
        if (length == 0) return false;
        p += length;
    }
    return true;
}

}  // namespace

bool IsExactText(const CodePage& page, const char* text, std::size_t bytes) {
    const auto p = reinterpret_cast<const unsigned char*>(text);
    switch (page.form) {
        case CodeForm::kSingleByte:
            return !std::memchr(page.returns, false, sizeof page.returns);
        case CodeForm::kPairs:
            return IsExactPairs(page, p, p + bytes);
        case CodeForm::kUtf8:
            return IsExactUtf8(p, p + bytes);
        default:
            return false;
    }
}

// In valid text a byte that is a character of its own ends one wherever it stands, so a start is
// found by looking back over the others, and the way from there by their lengths.
bool CharacterStarts::operator()(std::size_t place) {
    std::size_t start = place;
    while (start > m_boundary && m_page.bytes[m_text[start - 1]] == kNoCharacter) --start;
    while (start < place) {
        const unsigned length = ReadCode(m_page, m_text + start, m_end).length;
        start += length ? length : 1;
    }
    m_boundary = start;
    return start == place;
}

}  // namespace genutil
