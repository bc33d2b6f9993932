// Letters and digits of ASCII, independent of the C library's locale.
#pragma once

namespace genutil {

constexpr bool IsAscii(unsigned char c) {
    return c < 0x80;
}
constexpr char AsciiUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
// Converts a byte, or a character of any width.
template <class Unit>
constexpr Unit AsciiLower(Unit c) {
    return c >= 'A' && c <= 'Z' ? static_cast<Unit>(c - 'A' + 'a') : c;
}
template <class Unit>
constexpr bool IsAsciiLetter(Unit c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool IsAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace genutil
