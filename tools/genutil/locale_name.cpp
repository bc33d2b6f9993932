#include "tools/genutil/locale_name.h"

#include <cstdlib>

#include "mbutil.h"

std::string TableName(const std::string& name) {
    const mbLocale locale =
        name.empty() ? nullptr : mbOpenLocale(name.c_str(), mbOpenBest, nullptr);
    if (!locale) return "";
    char part[64];
    mbGetLocalePart(locale, mbPartName, part, sizeof part);
    mbCloseLocale(locale);
    return part;
}

std::string ToUtf8(const CGNString& text, int codeSet) {
    char* out = nullptr;
    mbConversion conversion = {};
    if (!mbConvertAlloc(text, text.GetLength(), codeSet, &out, mbUtf8, &conversion)) return "";
    std::string utf8(out, conversion.produced);
    std::free(out);
    return utf8;
}

bool FromUtf8(const std::string& utf8, int codeSet, CGNString* text, std::size_t* lostAt) {
    char* out = nullptr;
    *lostAt = 0;
    mbConversion conversion = {};
    conversion.lostAt = lostAt;
    conversion.lostAtSize = 1;
    if (!mbConvertAlloc(utf8.data(), utf8.size(), mbUtf8, &out, codeSet, &conversion)) return false;
    *text = out;
    std::free(out);
    return conversion.lost == 0;
}

std::size_t CountCharacters(const std::string& utf8) {
    std::size_t characters = 0;
    for (const char c : utf8) characters += (c & 0xC0) != 0x80;
    return characters;
}

void UseUtf8() {
    InitMbutil();  // first, because an earlier choice would be lost
    InitMbutilExt(mbUtf8);
}

void UseCodeSetOf(const CLCLocale& locale) {
    mbIsMultiByte();  // initialises; an earlier explicit choice would be lost
    InitMbutilExt(locale.GetCodeSet());
}
