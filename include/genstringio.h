/* CGNString in streams and in std::format.

       std::cout << name << '\n';
       std::format("{:>10}", name);       // where the standard library has <format>

   Both write all bytes of the string in the current code set, including 0 bytes. Width and
   precision of a format count as those of std::string_view do. */
#ifndef GENUTIL_GENSTRINGIO_H
#define GENUTIL_GENSTRINGIO_H

#include <ostream>
#include <string_view>

#if __has_include(<version>)
#include <version>
#endif
#if defined(__cpp_lib_format)
#include <format>
#endif

#include "genstring.h"

/** Writes the text. */
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& stream,
                                             const CGNString& text) {
    return stream << std::basic_string_view<char, Traits>(text, text.GetLength());
}

#if defined(__cpp_lib_format)
namespace std {
/** Formats a string as a std::string_view. */
template <>
struct formatter<CGNString> : std::formatter<std::string_view> {
    /** Writes the text. */
    template <class Context>
    auto format(const CGNString& text, Context& context) const {
        return std::formatter<std::string_view>::format(text.View(), context);
    }
};
}  // namespace std
#endif

#endif
