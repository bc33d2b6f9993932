// Code pages of Windows.
#include "osutil/platform/text/codepages.h"

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

namespace {

constexpr unsigned kFirstIsoCodePage = 28591;

std::uint16_t Ask(unsigned codePage, DWORD flags, const char* code, int length) {
    WCHAR out[4];
    return MultiByteToWideChar(codePage, flags, code, length, out, 4) == 1 ? out[0] : kNoCharacter;
}

// Corrections of the system's ISO 8859-7 and 8859-8, which are older than the published tables.
struct Correction {
    std::uint16_t codePage;
    std::uint8_t byte;
    std::uint16_t character;
};
constexpr Correction kCorrections[] = {
    {28597, 0xA1, 0x2018}, {28597, 0xA2, 0x2019}, {28597, 0xA4, 0x20AC}, {28597, 0xA5, 0x20AF},
    {28597, 0xAA, 0x037A}, {28598, 0xAF, 0x00AF}, {28598, 0xFD, 0x200E}, {28598, 0xFE, 0x200F},
};

// Unassigned one-byte codes of a Windows code page are still published, as control characters or
// private ones, which the strict flag rejects. In the ISO tables such codes are undefined.
void ReadBytes(unsigned codePage, std::uint16_t* bytes) {
    const DWORD flags = codePage >= kFirstIsoCodePage ? MB_ERR_INVALID_CHARS : 0;
    for (unsigned byte = 0; byte < 256; ++byte) {
        const char code = static_cast<char>(byte);
        bytes[byte] = IsDBCSLeadByteEx(codePage, static_cast<BYTE>(byte))
                          ? kNoCharacter
                          : Ask(codePage, flags, &code, 1);
    }
    for (const Correction& correction : kCorrections)
        if (correction.codePage == codePage) bytes[correction.byte] = correction.character;
}

}  // namespace

bool ReadCodePage(unsigned codePage, std::uint16_t* bytes, std::uint16_t* pairs) {
    if (!IsValidCodePage(codePage)) return false;
    ReadBytes(codePage, bytes);
    if (!pairs) return true;
    for (unsigned code = 0; code < 0x10000; ++code) {
        const char text[2] = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
        pairs[code] = IsDBCSLeadByteEx(codePage, static_cast<BYTE>(code >> 8))
                          ? Ask(codePage, MB_ERR_INVALID_CHARS, text, 2)
                          : kNoCharacter;
    }
    return true;
}

}  // namespace genutil::platform
