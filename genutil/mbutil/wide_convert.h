// Text of the current code set as 16-bit characters and back: what the C library's mbstowcs family
// does, without its locale. Texts are NUL-terminated; -1 means that something does not convert.
//
// Text that is invalid in the code set is carried in 16-bit form unharmed, one unit for each byte.
// A byte that is a character of its own has that character's unit, any other a low surrogate
// without a high one: 0xDC00 + b for a byte that belongs to no character, 0xDD00 + b for the first
// byte of a character or of an escape sequence, 0xDE00 + b for a later one.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

struct CodePage;

// The tables that all of this goes by; null as FindCodePage.
const CodePage* CurrentCodePage();

constexpr unsigned short kRawByte = 0xDC00, kFirstByte = 0xDD00, kLaterByte = 0xDE00;

constexpr bool IsSurrogate(unsigned unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}
// Whether a unit without a high surrogate before it is a byte of text that is carried.
constexpr bool IsCarriedByte(unsigned unit) {
    return unit > kRawByte && unit < kLaterByte + 0x100 && (unit & 0xFF) != 0;
}

// Characters of text, terminator excluded; looks at no more than `bytes` bytes.
std::int64_t WideLength(const char* text, std::size_t bytes);

// Stores at most `limit` characters, never half of a pair, and a terminator if there is room for
// it. Returns the number stored without terminator.
long ToWide(unsigned short* out, std::size_t limit, const char* text, std::size_t bytes);

// Carries text that ToWide refuses; stores exactly `bytes` units.
void ToWideBytewise(unsigned short* out, const char* text, std::size_t bytes);

// Whether every character of one byte is carried as itself. Katakana in ISO-2022-JP are not, since
// bytes below 0x80 can be those too.
bool CarriesCharacters();

// Bytes that text needs, terminator excluded; -1 when a character does not convert. A carried byte
// that is a character of its own does not.
std::int64_t NarrowLength(const unsigned short* text);

// Stores whole characters in at most `limit` bytes, and a terminator if there is room for it.
// Returns the number of bytes stored without terminator; -1 when a character does not convert.
long ToNarrow(char* out, std::size_t limit, const unsigned short* text);

// Bytes of the longest character: four and two escapes of four.
constexpr std::size_t kMostNarrowBytes = 12;

// The same for `count` characters, of which none is 0, without a terminator behind them.
std::int64_t NarrowLength(const unsigned short* text, std::size_t count);
long ToNarrow(char* out, std::size_t limit, const unsigned short* text, std::size_t count);

// As ToNarrow, with '?' for each character that does not convert; never fails.
long ToNarrowLossy(char* out, std::size_t limit, const unsigned short* text, std::size_t count);

// Puts '?' for each character that does not convert and for each carried byte, which text of others
// cannot mean. Returns the number of units that are left.
std::size_t ReplaceUnconvertible(unsigned short* text, std::size_t count);

// Whether there are surrogates in a text.
bool HasSurrogates(const unsigned short* text, std::size_t count);
// Whether the code set has a character.
bool HasCode(unsigned short character);

// UTF-8 whatever the code set. FromUtf8 stores the characters of `bytes` bytes, of which none is 0,
// in at most as many units, and returns their number; -1 when the text is invalid. ToUtf8 is
// ToNarrow into UTF-8; three bytes for each unit are enough.
long FromUtf8(unsigned short* out, const char* text, std::size_t bytes);
long ToUtf8(char* out, std::size_t limit, const unsigned short* text, std::size_t count);

// The most bytes that a character needs; 0 in a code set with escape sequences, which come on top.
std::size_t LongestNarrow();

// One character. ToWideCharacter returns the number of bytes it took (0 at a terminator) or -1; -1
// too for a pair, which ToWidePair stores with the number of units. ToNarrowCharacter returns the
// number of bytes stored (1 to 4; no terminator is added) or -1.
int ToWideCharacter(unsigned short* out, const char* text, std::size_t bytes);
int ToWidePair(unsigned short (&out)[2], unsigned* units, const char* text, std::size_t bytes);
int ToNarrowCharacter(char* out, unsigned short character);

// Simple case mapping of one 16-bit character, by Unicode, where it maps there and back.
unsigned short ToUpperWide(unsigned short character);
unsigned short ToLowerWide(unsigned short character);

// Compares by the collation of the user's locale: negative, 0, positive.
int CollateWide(const unsigned short* a, const unsigned short* b);

}  // namespace genutil
