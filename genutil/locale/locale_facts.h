// A record of a locale's facts. It is queried from the system once per language, stored in the
// bytes of a code set, and then read without a lock, an allocation or a system call.
#pragma once

#include <cstdint>

#include "genlocale.h"
#include "osutil/platform/locale/locale_facts.h"

namespace genutil {

struct LocaleFacts {
    std::uint32_t language;
    int codeSet;
    CLCLanguage languageClass;
    const char* text[kLocaleTexts];       // null if the system does not provide the text
    std::int32_t number[kLocaleNumbers];  // -1 if the system does not provide the number
    const LocaleFacts* replaced;  // the record that this one replaced when the system's settings
                                  // changed
};

// Identifiers that denote the user's locale and the system's locale.
constexpr std::uint32_t kUserLocaleId = 0x0400, kSystemLocaleId = 0x0800;

// Returns the language of a locale identifier, with the default country if it names none. Returns 0
// for a user without a locale.
std::uint32_t LanguageOfLocaleId(std::uint32_t localeId);

// Returns the facts of a language in a code set. Returns null if the system does not know the
// language or if allocation fails, which is reported. Records are valid for the lifetime of the
// process.
const LocaleFacts* FindLocaleFacts(std::uint32_t language, int codeSet);

// Queries the system again for settings that the user may have changed. Later calls of
// FindLocaleFacts() return the new facts.
const LocaleFacts* RefreshLocaleFacts(std::uint32_t language, int codeSet);

// Returns the code set of a language's texts: the one in the table of locales, or else that of its
// ANSI code page.
int CodeSetOfLocaleTexts(std::uint32_t language);

// Returns plain English facts, for a locale without facts.
const LocaleFacts& EnglishFacts();

// Return the language of an identifier and its name in English ("" if there is none).
CLCLanguage LanguageOf(std::uint32_t language);
const char* LanguageName(CLCLanguage language);

}  // namespace genutil
