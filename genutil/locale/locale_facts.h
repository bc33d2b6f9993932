// One record of a locale's facts: asked from the system once per language, in the bytes of a code
// set, and then read without a lock, an allocation or a system call.
#pragma once

#include <cstdint>

#include "genlocale.h"
#include "osutil/platform/locale/locale_facts.h"

namespace genutil {

struct LocaleFacts {
    std::uint32_t language;
    int codeSet;
    CLCLanguage languageClass;
    const char* text[kLocaleTexts];       // null: the system does not tell
    std::int32_t number[kLocaleNumbers];  // -1: the system does not tell
    const LocaleFacts* replaced;  // what was in its place before the system's settings changed
};

// Identifiers that stand for the user's locale and for the system's.
constexpr std::uint32_t kUserLocaleId = 0x0400, kSystemLocaleId = 0x0800;

// The language that a locale identifier means, with the default country where it names none; 0 for
// a user without a locale.
std::uint32_t LanguageOfLocaleId(std::uint32_t localeId);

// The facts of a language in a code set; null when the system does not know the language, and when
// memory runs out (which is reported). They stay where they are for the life of the process.
const LocaleFacts* FindLocaleFacts(std::uint32_t language, int codeSet);

// Asks the system anew, for settings that the user may have changed. From then on FindLocaleFacts
// gives the new ones.
const LocaleFacts* RefreshLocaleFacts(std::uint32_t language, int codeSet);

// The code set of a language's texts: that of the table of locales, or else of its ANSI code page.
int CodeSetOfLocaleTexts(std::uint32_t language);

// Plain English, for a locale without facts.
const LocaleFacts& EnglishFacts();

// The language of an identifier, and its name in English ("" for none).
CLCLanguage LanguageOf(std::uint32_t language);
const char* LanguageName(CLCLanguage language);

}  // namespace genutil
