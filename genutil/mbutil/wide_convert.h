// Conversion between text of the current code set and 16-bit characters, as by the C library's
// mbstowcs family but without its locale. Texts are NUL-terminated. A result of -1 means that a
// character does not convert.
//
// A unit of 0xDC00 + b that does not follow a high surrogate represents the raw byte b in every
// code set. Text that is invalid in the code set can therefore be kept in 16-bit form without loss.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

struct CodePage;

// Returns the tables that all functions here use. Returns null in the cases of FindCodePage().
const CodePage* CurrentCodePage();

constexpr unsigned short kRawByte = 0xDC00;

// Returns the number of 16-bit characters of a text, excluding the terminator. Reads at most
// `bytes` bytes.
std::int64_t WideLength(const char* text, std::size_t bytes);

// Stores at most `limit` characters, never half of a pair, and a terminator if there is room for
// it. Returns the number stored, excluding the terminator.
long ToWide(unsigned short* out, std::size_t limit, const char* text, std::size_t bytes);

// Converts each byte that is a character by itself, and every other byte b to kRawByte + b. Stores
// exactly `bytes` units. For text that ToWide() rejects.
void ToWideBytewise(unsigned short* out, const char* text, std::size_t bytes);

// Returns the number of bytes that a text needs, excluding the terminator, or -1 if a character
// does not convert.
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

// Convert UTF-8, independent of the code set. FromUtf8() stores the characters of `bytes` bytes,
// none of which is 0, in at most as many units. Returns their number, or -1 if the text is invalid.
// ToUtf8() is ToNarrow() to UTF-8. Three bytes for each unit are sufficient.
long FromUtf8(unsigned short* out, const char* text, std::size_t bytes);
long ToUtf8(char* out, std::size_t limit, const unsigned short* text, std::size_t count);

// Returns the maximum number of bytes of a character, or 0 in a code set with escape sequences,
// which are additional.
std::size_t LongestNarrow();

// Convert one character. ToWideCharacter() returns the number of bytes read (0 at a terminator) or
// -1. ToNarrowCharacter() returns the number of bytes stored (1 to 4, without a terminator) or -1.
int ToWideCharacter(unsigned short* out, const char* text, std::size_t bytes);
int ToNarrowCharacter(char* out, unsigned short character);

// Simple Unicode case mapping of one 16-bit character, applied if the reverse mapping returns to
// it.
unsigned short ToUpperWide(unsigned short character);
unsigned short ToLowerWide(unsigned short character);

// Compares by the collation of the user's locale. Returns a negative number, 0 or a positive
// number.
int CollateWide(const unsigned short* a, const unsigned short* b);

}  // namespace genutil
