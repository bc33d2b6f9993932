// A walk over the characters of a text in any encoding.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "tools/genutil/input.h"

class CharacterWalk {
  public:
    // The input must outlive the walk. Byte-order marks and escape sequences are not characters.
    explicit CharacterWalk(const Input& input);

    // Advances to the next character, initially to the first one. Returns false after the last.
    bool Next();

    // The current character. An invalid byte is a character by itself.
    std::size_t At() const { return m_at; }
    std::string_view Bytes() const { return m_text.substr(m_at, m_length); }
    bool Valid() const { return m_valid; }
    std::size_t Line() const { return m_line; }      // from 1
    std::size_t Column() const { return m_column; }  // from 1, in characters
    bool EndsLine() const;

    // Converts the character to UTF-8. The result is empty if the character is invalid or has no
    // counterpart.
    std::string ToUtf8() const;

  private:
    void SkipEscapes();
    void Measure();

    std::string_view m_text;
    int m_codeSet;
    std::string m_escape;  // the escape sequences and the shift in force
    std::size_t m_at;
    std::size_t m_length = 0;
    std::size_t m_line = 1;
    std::size_t m_column = 0;
    bool m_valid = true;
};

// "82 A0"
std::string Hexadecimal(std::string_view bytes);
// "line 3, column 5 (byte 57): 82 A0"
std::string DescribePosition(const CharacterWalk& walk);
