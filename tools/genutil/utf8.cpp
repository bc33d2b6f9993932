#include "tools/genutil/utf8.h"

namespace {

unsigned Byte(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

}  // namespace

int Utf8Length(std::string_view text, std::size_t at) {
    const unsigned lead = Byte(text, at);
    if (lead < 0x80) return 1;
    const int length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (text.size() - at < static_cast<std::size_t>(length)) return 0;
    for (int i = 1; i < length; ++i)
        if ((Byte(text, at + static_cast<std::size_t>(i)) & 0xC0) != 0x80) return 0;
    // Overlong forms, surrogates and values beyond Unicode are identified by the second byte.
    const unsigned second = length > 1 ? Byte(text, at + 1) : 0;
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
        (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F))
        return 0;
    return length;
}

unsigned CodePoint(std::string_view character) {
    const unsigned lead = Byte(character, 0);
    if (character.size() == 1) return lead;
    unsigned code = lead & (0x7Fu >> character.size());
    for (std::size_t i = 1; i < character.size(); ++i)
        code = code << 6 | (Byte(character, i) & 0x3F);
    return code;
}
