// The declaration of the character set in an HTML page.
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "genstring.h"
#include "genutil/ascii.h"
#include "genutil/string/storage.h"
#include "mbutil.h"

using genutil::Placing;
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

// The part of a tag that names the character set, after `head`.
struct Declaration {
    Declaration(const CGNString& locale, const char* head) {
        char name[kLongestName];
        NameOfCharset(locale, name);
        std::snprintf(text, sizeof text, "%scontent=\"text/html; charset=%s\">", head, name);
    }
    char text[128];
};

// Returns true if the text at p begins with a word, which is given in lower case, in any letter
// case.
bool BeginsWith(const char* p, const char* word) {
    for (; *word; ++p, ++word)
        if (genutil::AsciiLower(*p) != *word) return false;
    return true;
}

bool IsOneOf(char c, const char* set) {
    return c != 0 && std::strchr(set, c);
}

constexpr char kBlanks[] = " \t\r\n\f";

const char* SkipBlanks(const char* p) {
    return p + std::strspn(p, kBlanks);
}

const char* FindOrEnd(const char* p, const char* wanted) {
    const char* found = std::strstr(p, wanted);
    return found ? found : p + std::strlen(p);
}

struct Part {
    const char *begin, *end;
};

// The attributes of a tag, one after another. A value in quotes may hold a ">".
//   attribute = name [blanks "=" blanks value]
struct Attribute {
    Part name, value;  // value.begin is null if there is none

    // Reads the next attribute. `p` must be after the tag's name or the previous attribute, and is
    // moved past this one. Returns false at the end of the tag, and leaves `p` there.
    bool Read(const char*& p) {
        while (*p == '/' || IsOneOf(*p, kBlanks)) ++p;
        if (*p == 0 || *p == '>') return false;
        name = {p, p + 1 + std::strcspn(p + 1, " \t\r\n\f/>=")};
        value = {nullptr, nullptr};
        p = name.end;
        const char* sign = SkipBlanks(p);
        if (*sign != '=') return true;
        p = SkipBlanks(sign + 1);
        const char quote[] = {*p == '"' || *p == '\'' ? *p : '\0', 0};
        if (quote[0]) {
            value = {p + 1, FindOrEnd(p + 1, quote)};
            p = *value.end ? value.end + 1 : value.end;
        } else {
            value = {p, p + std::strcspn(p, " \t\r\n\f>")};
            p = value.end;
        }
        return true;
    }
    bool IsNamed(const char* word) const {
        return static_cast<std::size_t>(name.end - name.begin) == std::strlen(word) &&
               BeginsWith(name.begin, word);
    }
};

bool IsTag(const char* p, const char* name) {
    return BeginsWith(p + 1, name) && IsOneOf(p[1 + std::strlen(name)], " \t\r\n\f/>");
}

// Returns the position at which a tag's attributes begin.
const char* AttributesOf(const char* tag) {
    return tag + 1 + std::strcspn(tag + 1, " \t\r\n\f/>");
}

const char* EndOfTag(const char* tag) {
    const char* p = AttributesOf(tag);
    for (Attribute attribute; attribute.Read(p);) {
    }
    return p;
}

// Skips the content of an element that contains only text, in which nothing is a tag. `behind` is
// the end of the opening tag.
const char* SkipContent(const char* tag, const char* behind) {
    for (const char* name : {"script", "style", "textarea", "title"}) {
        if (!IsTag(tag, name)) continue;
        for (const char* p = behind; (p = std::strchr(p, '<')) != nullptr; ++p)
            if (p[1] == '/' && BeginsWith(p + 2, name)) return p;
        return behind + std::strlen(behind);
    }
    return behind;
}

// Returns the "<" of the next tag with the name, outside comments and scripts, or null if there is
// none. No "<" or ">" is part of a longer character in the code sets that pages use.
const char* FindTag(const char* p, const char* name) {
    while ((p = std::strchr(p, '<')) != nullptr) {
        if (std::strncmp(p, "<!--", 4) == 0) {
            p = FindOrEnd(p + 4, "-->");
            continue;
        }
        if (IsTag(p, name)) return p;
        const bool isTag = genutil::AsciiLower(p[1]) >= 'a' && genutil::AsciiLower(p[1]) <= 'z';
        p = isTag ? SkipContent(p, EndOfTag(p)) : p + 1;
    }
    return nullptr;
}

// Returns the name after "charset=" in the value of an attribute.
Part FindCharsetIn(Part value) {
    for (const char* p = value.begin; p < value.end; ++p) {
        if (!BeginsWith(p, "charset") || (p > value.begin && !IsOneOf(p[-1], " \t\r\n\f;")))
            continue;
        const char* name = SkipBlanks(p + std::strlen("charset"));
        if (*name != '=') continue;
        name += 1 + std::strspn(name + 1, " \t\r\n\f\"'");
        if (name > value.end) name = value.end;
        const char* end = name + std::strcspn(name, " \t\r\n\f\"';");
        return {name, end < value.end ? end : value.end};
    }
    return {nullptr, nullptr};
}

// Returns the name of the character set in a tag.
Part FindCharset(const char* tag) {
    const char* p = AttributesOf(tag);
    for (Attribute attribute; attribute.Read(p);) {
        if (!attribute.value.begin) continue;
        if (attribute.IsNamed("charset")) {
            const char* end = attribute.value.end;
            if (end > attribute.value.begin && end[-1] == '/') --end;  // of an empty element
            return {attribute.value.begin, end};
        }
        if (!attribute.IsNamed("content")) continue;
        const Part found = FindCharsetIn(attribute.value);
        if (found.begin) return found;
    }
    return {nullptr, nullptr};
}

// Returns the position after the opening tag of the head, or else of the page, or else after the
// document type declaration, or else the beginning of the text.
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
    for (const char* tag = FindTag(m_data, "meta"); tag; tag = FindTag(EndOfTag(tag), "meta")) {
        const Part old = FindCharset(tag);
        if (!old.begin) continue;
        char name[kLongestName];
        NameOfCharset(locale, name);
        Storage::Splice(*this, old.begin, old.end, name, Placing::kStored);
        return;
    }
    const char* const place = PlaceForDeclaration(m_data);
    const Declaration declaration(locale, "<meta http-equiv=\"Content-Type\" ");
    Storage::Splice(*this, place, place, declaration.text, Placing::kStored);
}
