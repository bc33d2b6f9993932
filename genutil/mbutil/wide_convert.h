// Text of the current code set as 16-bit characters and back: what the C library's mbstowcs family
// does, without its locale. Texts are NUL-terminated; -1 means that something does not convert.
//
// A unit of 0xDC00 + b that does not follow a high surrogate stands for the raw byte b in every
// code set, so that text which is invalid in the code set can be carried in 16-bit form unharmed.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

struct CodePage;

// The tables that all of this goes by; null as FindCodePage.
const CodePage* CurrentCodePage();

constexpr unsigned short kRawByte = 0xDC00;

// Characters of text, terminator excluded; looks at no more than `bytes` bytes.
std::int64_t WideLength(const char* text, std::size_t bytes);

// Stores at most `limit` characters, never half of a pair, and a terminator if there is room for
// it. Returns the number stored without terminator.
long ToWide(unsigned short* out, std::size_t limit, const char* text, std::size_t bytes);

// Converts each byte that is a character of its own, and every other byte b to kRawByte + b; stores
// exactly `bytes` units. For text that ToWide refuses.
void ToWideBytewise(unsigned short* out, const char* text, std::size_t bytes);

// Bytes that text needs, terminator excluded; -1 when a character does not convert.
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

// UTF-8 whatever the code set. FromUtf8 stores the characters of `bytes` bytes, of which none is 0,
// in at most as many units, and returns their number; -1 when the text is invalid. ToUtf8 is
// ToNarrow into UTF-8; three bytes for each unit are enough.
long FromUtf8(unsigned short* out, const char* text, std::size_t bytes);
long ToUtf8(char* out, std::size_t limit, const unsigned short* text, std::size_t count);

// The most bytes that a character needs; 0 in a code set with escape sequences, which come on top.
std::size_t LongestNarrow();

// One character. ToWideCharacter returns the number of bytes it took (0 at a terminator) or -1;
// ToNarrowCharacter the number of bytes stored (1 to 4; no terminator is added) or -1.
int ToWideCharacter(unsigned short* out, const char* text, std::size_t bytes);
int ToNarrowCharacter(char* out, unsigned short character);

// Simple case mapping of one 16-bit character, by Unicode, where it maps there and back.
unsigned short ToUpperWide(unsigned short character);
unsigned short ToLowerWide(unsigned short character);

// Compares by the collation of the user's locale: negative, 0, positive.
int CollateWide(const unsigned short* a, const unsigned short* b);

}  // namespace genutil
