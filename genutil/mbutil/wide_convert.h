// Conversion between text of the current code set and 16-bit characters, like the C library's
// mbstowcs family, but independent of its locale. Texts are NUL-terminated. A result of -1 means
// that a character does not convert.
//
// Text that is invalid in the code set is preserved ("carried") in 16-bit form, one unit for each
// byte. A byte that is a character of its own is represented by that character's unit. Any other
// byte is represented by an unpaired low surrogate: 0xDC00 + b for a byte that belongs to no
// character, 0xDD00 + b for the first byte of a character or of an escape sequence, 0xDE00 + b for
// a later one.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

struct CodePage;

// Returns the tables that all functions here use. Returns null in the cases of FindCodePage().
const CodePage* CurrentCodePage();

constexpr unsigned short kRawByte = 0xDC00, kFirstByte = 0xDD00, kLaterByte = 0xDE00;

constexpr bool IsSurrogate(unsigned unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}
// Returns true if a unit represents a carried byte, provided that no high surrogate precedes it.
constexpr bool IsCarriedByte(unsigned unit) {
    return unit > kRawByte && unit < kLaterByte + 0x100 && (unit & 0xFF) != 0;
}

// Returns the number of 16-bit characters of a text, excluding the terminator. Reads at most
// `bytes` bytes.
std::int64_t WideLength(const char* text, std::size_t bytes);

// Stores at most `limit` characters, never half of a pair, and a terminator if there is room for
// it. Returns the number stored, excluding the terminator.
long ToWide(unsigned short* out, std::size_t limit, const char* text, std::size_t bytes);

// Converts text that ToWide refuses, as carried bytes. Stores exactly `bytes` units.
void ToWideBytewise(unsigned short* out, const char* text, std::size_t bytes);

// Returns true if every single-byte character is carried as itself. Katakana in ISO-2022-JP are
// not, because bytes below 0x80 may represent them as well.
bool CarriesCharacters();

// Returns the number of bytes that a text needs, excluding the terminator, or -1 if a character
// does not convert. A carried byte that is a character of its own does not convert.
std::int64_t NarrowLength(const unsigned short* text);

// Stores whole characters in at most `limit` bytes, and a terminator if there is room for it.
// Returns the number of bytes stored, excluding the terminator, or -1 if a character does not
// convert.
long ToNarrow(char* out, std::size_t limit, const unsigned short* text);

// The maximum number of bytes of a character: four, and two escape sequences of four.
constexpr std::size_t kMostNarrowBytes = 12;

// Same as above for `count` characters, none of which is 0. No terminator is stored.
std::int64_t NarrowLength(const unsigned short* text, std::size_t count);
long ToNarrow(char* out, std::size_t limit, const unsigned short* text, std::size_t count);

// Same as ToNarrow(), with '?' for each character that does not convert. Never fails.
long ToNarrowLossy(char* out, std::size_t limit, const unsigned short* text, std::size_t count);

// Replaces each character that does not convert, and each carried byte, with '?'. Returns the new
// number of units.
std::size_t ReplaceUnconvertible(unsigned short* text, std::size_t count);

// Returns true if a text contains surrogates.
bool HasSurrogates(const unsigned short* text, std::size_t count);
// Returns true if the code set has a character.
bool HasCode(unsigned short character);

// Conversion from and to UTF-8, independent of the code set. FromUtf8 converts `bytes` bytes, none
// of which is 0, to at most as many units. It returns the number of units, or -1 if the text is
// invalid. ToUtf8 is ToNarrow for UTF-8. Three bytes per unit are sufficient.
long FromUtf8(unsigned short* out, const char* text, std::size_t bytes);
long ToUtf8(char* out, std::size_t limit, const unsigned short* text, std::size_t count);

// Returns the maximum number of bytes of a character, or 0 in a code set with escape sequences,
// which are additional.
std::size_t LongestNarrow();

// Conversion of one character. ToWideCharacter returns the number of bytes read (0 at a
// terminator), or -1 if they do not convert to a single unit. ToWidePair also accepts surrogate
// pairs and stores the number of units. ToNarrowCharacter returns the number of bytes stored (1 to
// 4; no terminator is added) or -1.
int ToWideCharacter(unsigned short* out, const char* text, std::size_t bytes);
int ToWidePair(unsigned short (&out)[2], unsigned* units, const char* text, std::size_t bytes);
int ToNarrowCharacter(char* out, unsigned short character);

// Simple Unicode case mapping of one 16-bit character, applied if the reverse mapping returns to
// it.
unsigned short ToUpperWide(unsigned short character);
unsigned short ToLowerWide(unsigned short character);

// Compares by the collation of the user's locale. Returns a negative number, 0 or a positive
// number.
int CollateWide(const unsigned short* a, const unsigned short* b);

}  // namespace genutil
