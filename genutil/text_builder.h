// Builds a text in a buffer of its own before it is appended to a string in one go.
#pragma once

#include <cstddef>
#include <cstring>

#include "genutil/string_storage.h"

namespace genutil {

class TextBuilder {
  public:
    explicit TextBuilder(CGNString& target) : m_target(target) {}
    ~TextBuilder() { Flush(); }
    TextBuilder(const TextBuilder&) = delete;
    TextBuilder& operator=(const TextBuilder&) = delete;

    void Append(char c) {
        if (m_length == sizeof m_text) Flush();
        m_text[m_length++] = c;
    }
    void Append(const char* text, std::size_t length) {
        if (length > sizeof m_text - m_length) {
            Flush();
            if (length > sizeof m_text) {
                StringStorage::Store(m_target, text, m_target.GetLength(), length);
                return;
            }
        }
        std::memcpy(m_text + m_length, text, length);
        m_length += length;
    }
    void Append(const CGNString& text) { Append(text, text.GetLength()); }
    void Append(const char* text) { Append(text, std::strlen(text)); }

    // As printf writes "%0*d".
    void AppendNumber(int number, int width) {
        if (number >= 0 && number < 100 && width <= 2) {
            if (width == 2 || number >= 10) Append(static_cast<char>('0' + number / 10));
            Append(static_cast<char>('0' + number % 10));
            return;
        }
        char digits[16];
        int n = 0;
        auto rest = static_cast<unsigned>(number);
        if (number < 0) rest = 0 - rest;
        do digits[n++] = static_cast<char>('0' + rest % 10);
        while (rest /= 10);
        const bool negative = number < 0;
        while (n + negative < width) digits[n++] = '0';
        if (negative) digits[n++] = '-';
        while (n > 0) Append(digits[--n]);
    }

    void Flush() {
        if (m_length != 0) StringStorage::Store(m_target, m_text, m_target.GetLength(), m_length);
        m_length = 0;
    }

  private:
    CGNString& m_target;
    std::size_t m_length = 0;
    char m_text[160];
};

}  // namespace genutil
