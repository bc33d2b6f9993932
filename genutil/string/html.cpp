// The character set that an HTML page declares for itself.
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "genstring.h"
#include "genutil/ascii.h"
#include "genutil/string/storage.h"
#include "mbutil.h"

using Storage = genutil::StringStorage;

namespace {

constexpr std::size_t kLongestName = 32;

void NameOfCharset(const CGNString& locale, char (&name)[kLongestName]) {
    name[0] = 0;
    mbIsMultiByte();  // initialises
    if (locale.IsEmpty())
        SetCharset(name, mbGetLocaleCodeSet());
    else
        mbDefaultCodePageForLocale(name, sizeof name, locale);
}

// What names the character set, behind the head of a tag.
struct Declaration {
    Declaration(const CGNString& locale, const char* head) {
        char name[kLongestName];
        NameOfCharset(locale, name);
        std::snprintf(text, sizeof text, "%scontent=\"text/html; charset=%s\">", head, name);
    }
    char text[128];
};

// Whether the text at p begins with a word in small letters, in any letter case.
bool BeginsWith(const char* p, const char* word) {
    for (; *word; ++p, ++word)
        if (genutil::AsciiLower(*p) != *word) return false;
    return true;
}

bool IsOneOf(char c, const char* set) {
    return c != 0 && std::strchr(set, c);
}

// The tag of a name, from its "<" on; null when there is none. No "<" and ">" is part of a longer
// character in the code sets that pages are written in.
const char* FindTag(const char* p, const char* name) {
    const std::size_t length = std::strlen(name);
    while ((p = std::strchr(p, '<')) != nullptr) {
        if (BeginsWith(p + 1, name) && IsOneOf(p[1 + length], " \t\r\n/>")) return p;
        ++p;
    }
    return nullptr;
}

const char* EndOfTag(const char* tag) {
    const char* end = std::strchr(tag, '>');
    return end ? end : tag + std::strlen(tag);
}

struct Part {
    const char *begin, *end;
};

// The name behind "charset=" in a tag. What stands before the word tells that its first letter is
// no second byte of a character.
Part FindCharset(const char* tag) {
    const char* const end = EndOfTag(tag);
    for (const char* p = tag + 1; p < end; ++p) {
        if (!BeginsWith(p, "charset") || !IsOneOf(p[-1], " \t\r\n;\"'")) continue;
        const char* name = p + std::strlen("charset");
        name += std::strspn(name, " \t\r\n");
        if (*name++ != '=') continue;
        name += std::strspn(name, " \t\r\n\"'");
        const char* nameEnd = name + std::strcspn(name, " \t\r\n\"';/>");
        return {name, nameEnd};
    }
    return {nullptr, nullptr};
}

// Behind the tag that opens the head, or else the page, or else its declaration of type.
const char* PlaceForDeclaration(const char* text) {
    for (const char* name : {"head", "html", "!doctype"})
        if (const char* tag = FindTag(text, name)) {
            const char* end = EndOfTag(tag);
            return *end ? end + 1 : end;
        }
    return text;
}

}  // namespace

CGNString CGNString::GetEncodingStringForHTML(const CGNString& locale) {
    return CGNString(Declaration(locale, "").text);
}

void CGNString::ReplaceEncodingStringInHTML(const CGNString& locale) {
    for (const char* tag = FindTag(m_data, "meta"); tag; tag = FindTag(tag + 1, "meta")) {
        const Part old = FindCharset(tag);
        if (!old.begin) continue;
        char name[kLongestName];
        NameOfCharset(locale, name);
        Storage::Splice(*this, old.begin, old.end, name);
        return;
    }
    const char* const place = PlaceForDeclaration(m_data);
    const Declaration declaration(locale, "<meta http-equiv=\"Content-Type\" ");
    Storage::Splice(*this, place, place, declaration.text);
}
