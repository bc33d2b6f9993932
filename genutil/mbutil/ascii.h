// Letters of ASCII, whatever the C library's locale is.
#pragma once

namespace genutil {

constexpr bool IsAscii(unsigned char c) {
    return c < 0x80;
}
constexpr char AsciiUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr char AsciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace genutil
