// The current code set and the properties of each code set. There is one copy per process, without
// protection against concurrent changes.
#pragma once

#include <atomic>
#include <cstdint>

#include "mbutil.h"

namespace genutil {

// The state that functions on the current code set read; filled by InitMbutilExt().
struct CodeSetState {
    int codeSet = 0;
    int multiByte = 1;  // 1 before any initialisation
    unsigned char japanese = 0;
    int initialised = 0;
    int timeZoneRegistry = 0;  // 1 if the system has a registry of time zones
};
extern CodeSetState g_codeSetState;

// Initialises the state on first use. Called first by each function on the current code set.
inline void EnsureInitialised() {
    if (!g_codeSetState.initialised) InitMbutil();
}

// Returns the part of a language identifier that excludes the country.
constexpr unsigned PrimaryLanguage(unsigned language) {
    return language & 0x3FF;
}

// A row of the table of locales. The first row of a language determines its code set.
struct LocaleRow {
    std::uint16_t language;
    const char* name;
    std::uint8_t codeSet;
    const char* description;  // English, in UTF-8
};
extern const LocaleRow kLocaleTable[];  // terminated by a row with language 0
const LocaleRow* FindLocaleByLanguage(unsigned language);
// Finds the row of a name, which is compared up to its first '.' or '@'. Returns null if there is
// none.
const LocaleRow* FindLocaleByName(const char* name);

// Returns the code set of the first row of a language, or 0 if there is no row. An identifier
// without a sublanguage gets the default one.
int CodeSetOfLanguage(unsigned language);

// Row of the current locale handle; null stands for the user's locale. Set by locale handles.
extern std::atomic<const LocaleRow*> g_currentLocaleRow;

// Returns the language identifier that the user chose, whatever the calling thread uses.
unsigned UserDefaultLanguage();
// Return the language identifier of the user's locale, and the code set of its ANSI code page.
unsigned UserLanguage();
int UserAnsiCodeSet();
// Returns the code set of a Windows code page number, or -1 if there is none.
int CodeSetOfCodePage(unsigned codePage);
// Returns the code set that a MIME name or an informal name denotes, or -1 if there is none.
int FindCodeSetByName(const char* name);

}  // namespace genutil
