#include "osutil/platform/posix/config/registry_text.h"

#include <algorithm>
#include <cstring>

#include "genutil/ascii.h"
#include "genutil/mbutil/character_table.h"
#include "osutil/platform/posix/file/paths.h"

namespace genutil::platform {

namespace {

// Returns true for text that is the same in every code set: no escape sequence, no byte above
// ASCII.
bool IsPlain(const char* text, std::size_t length) {
    return std::none_of(text, text + length, [](char c) {
        return static_cast<unsigned char>(c) >= 0x80 || c == '\x1B';
    });
}

}  // namespace

StoreText::StoreText(const char* text, Form form) {
    const std::size_t bytes = std::strlen(text);
    if (IsPlain(text, bytes)) {
        char* out = m_buffer.Reserve(bytes + 1);
        if (!out) return;
        if (form == kFolded)
            std::transform(text, text + bytes + 1, out, AsciiLower<char>);
        else
            std::memcpy(out, text, bytes + 1);
        m_text = out;
        m_length = bytes;
        return;
    }
    const PathUnits units(text);
    if (!units.Get()) return;
    if (form == kFolded)
        for (unsigned short* unit = units.Get(); *unit; ++unit)
            *unit = PageOfCharacter(*unit).lower[*unit & 0xFF];
    const long length = EncodeUtf8(units, m_buffer);
    if (length < 0) return;
    m_text = m_buffer.Get();
    m_length = static_cast<std::size_t>(length);
}

bool StoreText::MakeKeyPath() {
    constexpr unsigned kLongestName = 255;
    if (m_length > 0 && *m_text == '\\') return false;
    char* out = m_text;
    unsigned characters = 0;
    for (std::size_t i = 0; i < m_length; ++i) {
        const char c = m_text[i];
        if (c == '\\') {
            if (out[-1] != '\\') *out++ = c;
            characters = 0;
            continue;
        }
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80 && ++characters > kLongestName)
            return false;
        *out++ = c;
    }
    while (out > m_text && out[-1] == '\\') --out;
    m_length = static_cast<std::size_t>(out - m_text);
    return true;
}

}  // namespace genutil::platform
