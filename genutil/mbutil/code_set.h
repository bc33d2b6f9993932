// The current code set and what is known about each: one copy per process, unprotected.
#pragma once

#include <cstdint>

#include "mbutil.h"

namespace genutil {

// What the functions that act on the current code set read; filled by InitMbutilExt.
struct CodeSetState {
    int codeSet = 0;
    int multiByte = 1;  // on before any initialisation
    unsigned char japanese = 0;
    int initialised = 0;
    int timeZoneRegistry = 0;  // whether the system keeps its time zones in a registry
};
extern CodeSetState g_codeSetState;

// Each function that acts on the current code set begins with this.
inline void EnsureInitialised() {
    if (!g_codeSetState.initialised) InitMbutil();
}

// The part of a language identifier that does not tell the country.
constexpr unsigned PrimaryLanguage(unsigned language) {
    return language & 0x3FF;
}

// A row of the table of locales: the first row of a language gives its code set.
struct LocaleRow {
    std::uint16_t language;
    const char* name;
    std::uint8_t codeSet;
    const char* description;  // English, in UTF-8
};
extern const LocaleRow kLocaleTable[];  // ends at language 0
const LocaleRow* FindLocaleByLanguage(unsigned language);
// Name up to the first '.' or '@'; null when there is none.
const LocaleRow* FindLocaleByName(const char* name);

// The code set of the first row of a language, with the default sublanguage when it names none; 0
// when there is no row.
int CodeSetOfLanguage(unsigned language);

// The language identifier that the user chose, whatever the calling thread has for itself.
unsigned UserDefaultLanguage();
// The language identifier of the user's locale, and the code set of its ANSI code page.
unsigned UserLanguage();
int UserAnsiCodeSet();
// The code set of a Windows code page number, -1 when there is none.
int CodeSetOfCodePage(unsigned codePage);
// The code set that a MIME name or a free-form one denotes, -1 when it denotes none.
int FindCodeSetByName(const char* name);

}  // namespace genutil
