// Whole characters of a string, one by one.
#include <cstring>

#include "genstring.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "genutil/string/wide_view.h"

using genutil::StringStorage;

unsigned char CGNCharacter::Read(const CGNString& text, unsigned int position) {
    *this = CGNCharacter();
    m_position = m_end = position;
    if (!StringStorage::EnsureWide(text)) return 0;
    const StringStorage::WideText wide = StringStorage::WideOf(text);
    if (position >= wide.length) return 0;
    m_position = genutil::AlignDown(wide.text, wide.length, position);
    m_end = genutil::AlignUp(wide.text, wide.length, m_position + 1);
    m_length =
        static_cast<unsigned>(genutil::CharacterBytes(wide.text, wide.length, m_position, m_bytes));
    const char32_t first = wide.text[m_position];
    m_codePoint = first;
    if (!genutil::IsSurrogate(first)) return 1;
    unsigned short units[2] = {wide.text[m_position], 0};
    unsigned count = 0;
    if (genutil::IsCarriedByte(first)) {
        if (genutil::ToWidePair(units, &count, m_bytes, m_length) != static_cast<int>(m_length))
            count = 0;
    } else if (m_end - m_position == 2) {
        units[1] = wide.text[m_position + 1];
        count = 2;
    }
    m_codePoint = count == 2   ? 0x10000 + ((units[0] & 0x3FFu) << 10 | (units[1] & 0x3FFu))
                  : count == 1 ? units[0]
                               : U'\uFFFD';
    return 1;
}
