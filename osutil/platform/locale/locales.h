// Platform layer: the user's locale, letter case and collation.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// The locale of the calling user. A system that numbers its locales provides a language identifier
// and the number of its ANSI code page. A system that names them provides a name such as "ja_JP"
// and zeroes. A user without a locale has neither.
struct UserLocale {
    std::uint16_t language;
    unsigned ansiCodePage;
    char name[32];
};
UserLocale GetUserLocale();
// The same without regard to a locale that the calling thread was given.
UserLocale GetUserDefaultLocale();

// Returns the number of the ANSI code page of a language, or 0 if the system does not know one.
unsigned AnsiCodePageOfLanguage(std::uint16_t language);

// Returns true if the system has a registry of time zones that can be read.
bool HasTimeZoneRegistry();

// Simple Unicode case mapping of one 16-bit character, applied if the reverse mapping returns to
// it.
std::uint16_t ToUpper(std::uint16_t character);
std::uint16_t ToLower(std::uint16_t character);

// Returns false if the user chose the C or POSIX locale or none at all, in which texts are ordered
// by their bytes.
bool HasCollation();

// Compares by the collation of the user's locale. Returns a negative number, 0 or a positive
// number. Lengths are in characters.
int Collate(const std::uint16_t* a, std::size_t aLength, const std::uint16_t* b,
            std::size_t bLength);

}  // namespace genutil::platform
