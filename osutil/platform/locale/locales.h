// What the library asks of an operating system about the user's locale and about letters.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// The locale of the calling user. A system that numbers its locales gives a language identifier and
// the number of its ANSI code page; one that names them gives a name such as "ja_JP" and zeroes. A
// user without a locale has neither.
struct UserLocale {
    std::uint16_t language;
    unsigned ansiCodePage;
    char name[32];
};
UserLocale GetUserLocale();
// The same without regard to a locale that the calling thread was given.
UserLocale GetUserDefaultLocale();

// The number of the ANSI code page of a language; 0 when the system does not know one.
unsigned AnsiCodePageOfLanguage(std::uint16_t language);

// Whether the system keeps a registry of time zones that can be read.
bool HasTimeZoneRegistry();

// Simple case mapping of one 16-bit character, by Unicode, where it maps there and back.
std::uint16_t ToUpper(std::uint16_t character);
std::uint16_t ToLower(std::uint16_t character);

// Compares by the collation of the user's locale: negative, 0 or positive. Lengths in characters.
int Collate(const std::uint16_t* a, std::size_t aLength, const std::uint16_t* b,
            std::size_t bLength);

}  // namespace genutil::platform
