// Builds a text in a buffer of its own, and appends it to a string in a single operation.
#pragma once

#include <cstddef>
#include <cstring>

#include "genutil/string/storage.h"

namespace genutil {

class TextBuilder {
  public:
    explicit TextBuilder(CGNString& target) : m_target(target) {}
    ~TextBuilder() { Flush(); }
    TextBuilder(const TextBuilder&) = delete;
    TextBuilder& operator=(const TextBuilder&) = delete;

    void Append(char c) { End(*this).Append(c); }
    void Append(const CGNString& text) { End(*this).Append(text, text.GetLength()); }
    // Writes a number as printf writes "%0*d", with a width of at most 4.
    void AppendNumber(int number, int width) { End(*this).AppendNumber(number, width); }

    // The end of the text, for a function that appends repeatedly. The compiler keeps the position
    // in a local object in a register. The builder receives the position when that object is
    // destroyed.
    class End {
      public:
        explicit End(TextBuilder& builder) : m_builder(builder), m_at(builder.m_at) {}
        ~End() { m_builder.m_at = m_at; }
        End(const End&) = delete;
        End& operator=(const End&) = delete;

        [[gnu::always_inline]] void Append(char c) {
            Reserve(1);
            *m_at++ = c;
        }
        [[gnu::always_inline]] void Append(const char* text, std::size_t length) {
            if (length <= Room()) {
                std::memcpy(m_at, text, length);
                m_at += length;
            } else {
                m_at = m_builder.AppendLong(m_at, text, length);
            }
        }
        [[gnu::always_inline]] void AppendNumber(int number, int width) {
            Reserve(kLongestNumber);
            const auto value = static_cast<unsigned>(number);
            if (value < 10 && width <= 1) {
                *m_at++ = static_cast<char>('0' + value);
            } else if (value < 100 && width <= 2) {
                AppendPair(value);
            } else if (value < 10000 && value >= 1000 && width <= 4) {
                AppendPair(value / 100);
                AppendPair(value % 100);
            } else {
                m_at = PutNumber(m_at, number, width);
            }
        }

      private:
        std::size_t Room() const {
            return static_cast<std::size_t>(m_builder.m_text + sizeof m_builder.m_text - m_at);
        }
        [[gnu::always_inline]] void Reserve(std::size_t length) {
            if (length > Room()) [[unlikely]]
                m_at = m_builder.FlushTo(m_at);
        }
        [[gnu::always_inline]] void AppendPair(unsigned value) {
            static constexpr char kPairs[] =
                "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
                "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
                "8081828384858687888990919293949596979899";
            std::memcpy(m_at, kPairs + 2 * value, 2);
            m_at += 2;
        }

        TextBuilder& m_builder;
        char* m_at;
    };

    // Reserves extra room, so that the next text of this kind needs no new buffer.
    void Flush() {
        const auto length = static_cast<std::size_t>(m_at - m_text);
        if (length == 0) return;
        if (m_target.IsEmpty() && StringStorage::Capacity(m_target) <= length)
            m_target.AllocateBuffer(static_cast<unsigned>(length) + 24);
        StringStorage::Store(m_target, m_text, m_target.GetLength(), length);
        m_at = m_text;
    }

  private:
    static constexpr std::size_t kLongestNumber = 16;

    // Flushes the buffer, which is filled up to `at`. Returns the position at which writing
    // continues.
    [[gnu::noinline]] char* FlushTo(char* at) {
        m_at = at;
        Flush();
        return m_at;
    }
    [[gnu::noinline]] char* AppendLong(char* at, const char* text, std::size_t length) {
        FlushTo(at);
        if (length > sizeof m_text) {
            StringStorage::Store(m_target, text, m_target.GetLength(), length);
            return m_at;
        }
        std::memcpy(m_at, text, length);
        return m_at + length;
    }
    [[gnu::noinline]] static char* PutNumber(char* at, int number, int width) {
        char digits[kLongestNumber];
        int n = 0;
        auto rest = static_cast<unsigned>(number);
        if (number < 0) rest = 0 - rest;
        do digits[n++] = static_cast<char>('0' + rest % 10);
        while (rest /= 10);
        const bool negative = number < 0;
        while (n + negative < width) digits[n++] = '0';
        if (negative) digits[n++] = '-';
        while (n > 0) *at++ = digits[--n];
        return at;
    }

    CGNString& m_target;
    char m_text[160];
    char* m_at = m_text;
};

}  // namespace genutil
