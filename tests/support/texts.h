// Texts for tests: all bytes of a string, and concatenation.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "genstr.h"

inline std::string Bytes(const CGNString& s) {
    return {static_cast<const char*>(s), s.GetLength()};
}

// The compiler warns without reason about sums of std::string.
inline std::string Join(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) text.append(part.data(), part.size());
    return text;
}

// The display text of a number, a date or a time.
template <class Value>
std::string Display(const Value& value) {
    CGNString text;
    value.GetDisplayBuffer(text);
    return Bytes(text);
}
