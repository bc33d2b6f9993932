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
        const auto value = static_cast<unsigned>(number);
        if (value < 10 && width <= 1) {
            Append(static_cast<char>('0' + value));
        } else if (value < 100 && width <= 2) {
            AppendPair(value);
        } else if (value < 10000 && value >= 1000 && width <= 4) {
            AppendPair(value / 100);
            AppendPair(value % 100);
        } else {
            AppendAnyNumber(number, width);
        }
    }

    // With room to spare, so that the next text of the kind needs no new buffer.
    void Flush() {
        if (m_length == 0) return;
        if (m_target.IsEmpty() && StringStorage::Capacity(m_target) <= m_length)
            m_target.AllocateBuffer(static_cast<unsigned>(m_length) + 24);
        StringStorage::Store(m_target, m_text, m_target.GetLength(), m_length);
        m_length = 0;
    }

  private:
    void AppendPair(unsigned value) {
        static constexpr char kPairs[] =
            "0001020304050607080910111213141516171819202122232425262728293031323334353637383940"
            "4142434445464748495051525354555657585960616263646566676869707172737475767778798081"
            "828384858687888990919293949596979899";
        Append(kPairs + 2 * value, 2);
    }
    void AppendAnyNumber(int number, int width) {
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

    CGNString& m_target;
    std::size_t m_length = 0;
    char m_text[160];
};

}  // namespace genutil
