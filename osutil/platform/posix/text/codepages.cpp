// Code pages from ICU's converters, corrected to the published Windows mappings.
#include "osutil/platform/text/codepages.h"

#include <unicode/ucnv.h>

#include <memory>
#include <new>

#include "osutil/platform/posix/text/johab.h"

namespace genutil::platform {

namespace {

struct Converter {
    unsigned codePage;
    const char* name;
};
constexpr Converter kConverters[] = {
    {874, "windows-874-2000"},    {932, "ibm-943_P15A-2003"},   {936, "windows-936-2000"},
    {949, "windows-949-2000"},    {950, "windows-950-2000"},    {1250, "ibm-5346_P100-1998"},
    {1251, "ibm-5347_P100-1998"}, {1252, "ibm-5348_P100-1997"}, {1253, "ibm-5349_P100-1998"},
    {1254, "ibm-5350_P100-1998"}, {1255, "ibm-9447_P100-2002"}, {1256, "ibm-9448_X100-2005"},
    {1257, "ibm-9449_P100-2002"}, {1258, "ibm-5354_P100-1998"}, {28591, "ISO-8859-1"},
    {28592, "ISO-8859-2"},        {28593, "ISO-8859-3"},        {28594, "ISO-8859-4"},
    {28595, "ISO-8859-5"},        {28596, "ISO-8859-6"},        {28597, "ISO-8859-7"},
    {28598, "ISO-8859-8"},        {28599, "ISO-8859-9"},        {28605, "ISO-8859-15"},
    {437, "ibm-437_P100-1995"},   {850, "ibm-850_P100-1995"},   {852, "ibm-852_P100-1995"},
    {866, "ibm-866_P100-1995"},   {20866, "ibm-878_P100-1996"}, {21866, "ibm-1168_P100-2002"},
};
constexpr unsigned kKorean = 949, kJohab = 1361;

// Differences in ICU's one-byte codes: `count` bytes from `byte` on map to consecutive characters.
// Unassigned bytes of a code page are published as private characters, which ICU lacks. ICU also
// swaps three control characters in the Japanese page, as mainframes do, takes the micro sign for a
// letter, and lacks a Hebrew point and the not sign of 852.
struct Correction {
    std::uint16_t codePage;
    std::uint8_t byte, count;
    std::uint16_t character;
};
constexpr Correction kCorrections[] = {
    {437, 0xE6, 1, 0x00B5},  {852, 0xAA, 1, 0x00AC},  {932, 0x1A, 1, 0x001A},
    {932, 0x1C, 1, 0x001C},  {932, 0x7F, 1, 0x007F},  {932, 0x80, 1, 0x0080},
    {932, 0xA0, 1, 0xF8F0},  {932, 0xFD, 3, 0xF8F1},  {1253, 0xAA, 1, 0xF8F9},
    {1253, 0xD2, 1, 0xF8FA}, {1253, 0xFF, 1, 0xF8FB}, {1255, 0xCA, 1, 0x05BA},
    {1255, 0xD9, 7, 0xF88D}, {1255, 0xFB, 2, 0xF894}, {1255, 0xFF, 1, 0xF896},
    {1257, 0xA1, 1, 0xF8FC}, {1257, 0xA5, 1, 0xF8FD},
};

struct CloseConverter {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using OpenConverter = std::unique_ptr<UConverter, CloseConverter>;

OpenConverter Open(unsigned codePage) {
    for (const Converter& known : kConverters) {
        if (known.codePage != codePage) continue;
        UErrorCode error = U_ZERO_ERROR;
        OpenConverter converter(ucnv_open(known.name, &error));
        if (converter)
            ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                                &error);
        return U_SUCCESS(error) ? std::move(converter) : nullptr;
    }
    return nullptr;
}

std::uint16_t Ask(UConverter* converter, const char* code, int length) {
    UErrorCode error = U_ZERO_ERROR;
    UChar out[4];
    UChar* end = out;
    ucnv_resetToUnicode(converter);
    ucnv_toUnicode(converter, &end, out + 4, &code, code + length, nullptr, true, &error);
    return U_SUCCESS(error) && end == out + 1 ? static_cast<std::uint16_t>(out[0]) : kNoCharacter;
}

void ReadBytes(UConverter* converter, unsigned codePage, std::uint16_t* bytes) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        const char code = static_cast<char>(byte);
        bytes[byte] = Ask(converter, &code, 1);
    }
    for (const Correction& correction : kCorrections)
        if (correction.codePage == codePage)
            for (unsigned i = 0; i < correction.count; ++i)
                bytes[correction.byte + i] = static_cast<std::uint16_t>(correction.character + i);
}

bool ReadJohab(std::uint16_t* bytes, std::uint16_t* pairs) {
    std::uint16_t koreanBytes[256];
    std::unique_ptr<std::uint16_t[]> korean(new (std::nothrow) std::uint16_t[0x10000]);
    if (!pairs || !korean || !ReadCodePage(kKorean, koreanBytes, korean.get())) return false;
    ComputeJohab(korean.get(), bytes, pairs);
    return true;
}

}  // namespace

bool ReadCodePage(unsigned codePage, std::uint16_t* bytes, std::uint16_t* pairs) {
    if (codePage == kJohab) return ReadJohab(bytes, pairs);
    const OpenConverter converter = Open(codePage);
    if (!converter) return false;
    ReadBytes(converter.get(), codePage, bytes);
    if (!pairs) return true;
    for (unsigned code = 0; code < 0x10000; ++code) {
        const char text[2] = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
        // No trail byte is below 0x30, and a byte that is a character is not a lead byte.
        const bool possible = (code & 0xFF) >= 0x30 && bytes[code >> 8] == kNoCharacter;
        pairs[code] = possible ? Ask(converter.get(), text, 2) : kNoCharacter;
    }
    return true;
}

}  // namespace genutil::platform
