/* The characters of a CGNString, one after another. See CGNString::Characters().

       for (const CGNCharacter& c : text.Characters())
           std::printf("%u: U+%04X\n", c.Position(), unsigned(c.CodePoint()));

   Iterating reads characters, so it may build the string's 16-bit copy. A change of the string
   invalidates its range and iterators, but not the characters read from them. */
#ifndef GENUTIL_GENCHARACTERS_H
#define GENUTIL_GENCHARACTERS_H

#include <cstddef>
#include <iterator>
#include <string_view>

#include "genexport.h"

class CGNString;

/** One whole character of a string, by value. */
class GENUTIL_API CGNCharacter {
  public:
    /** Returns the bytes of the character in the current code set, valid while this object exists.
        They are empty for a character that needs escape sequences around it (code sets 3, 41 and
        42). */
    std::string_view Bytes() const { return {m_bytes, m_length}; }
    /** Returns the position of the character in the string, in 16-bit characters. */
    unsigned int Position() const { return m_position; }
    /** Returns the position of the next character. */
    unsigned int End() const { return m_end; }
    /** Returns the Unicode code point, or U+FFFD for bytes that are invalid in the code set. */
    char32_t CodePoint() const { return m_codePoint; }

    /** Reads the character of a string that begins at or contains a position. Returns 0 if the
        position is out of range or allocation fails; the character then ends where it begins. */
    unsigned char Read(const CGNString& text, unsigned int position);

  private:
    char m_bytes[8] = {};
    unsigned int m_length = 0;
    unsigned int m_position = 0;
    unsigned int m_end = 0;
    char32_t m_codePoint = 0;
};

/** The characters of a string as a range. The string must outlive it. */
class CGNCharacterRange {
  public:
    /** Iterates over the characters once. */
    class iterator {
      public:
        using iterator_category = std::input_iterator_tag; /**< an input iterator */
        using value_type = CGNCharacter;                   /**< a character */
        using difference_type = std::ptrdiff_t;            /**< unused */
        using pointer = const CGNCharacter*;               /**< see operator-> */
        using reference = const CGNCharacter&;             /**< see operator* */

        /** Constructs the end of any range. */
        iterator() = default;
        /** Constructs the beginning of the range of a string. */
        explicit iterator(const CGNString& text) : m_text(&text) { Read(0); }

        /** Returns the character, valid until the iterator moves on. */
        reference operator*() const { return m_character; }
        /** Returns the character, valid until the iterator moves on. */
        pointer operator->() const { return &m_character; }
        /** Moves on to the next character. */
        iterator& operator++() {
            Read(m_character.End());
            return *this;
        }
        /** Moves on to the next character. Returns the iterator as it was. */
        iterator operator++(int) {
            iterator before(*this);
            ++*this;
            return before;
        }
        /** Returns true if both are at the same character or at the end. */
        friend bool operator==(const iterator& a, const iterator& b) {
            return a.m_text == b.m_text &&
                   (!a.m_text || a.m_character.Position() == b.m_character.Position());
        }
        /** Returns the negation of ==. */
        friend bool operator!=(const iterator& a, const iterator& b) { return !(a == b); }

      private:
        void Read(unsigned int position) {
            if (!m_character.Read(*m_text, position)) m_text = nullptr;
        }

        const CGNString* m_text = nullptr;
        CGNCharacter m_character;
    };

    /** Constructs the range of a string. */
    explicit CGNCharacterRange(const CGNString& text) : m_text(text) {}
    /** Returns an iterator at the first character. */
    iterator begin() const { return iterator(m_text); }
    /** Returns the end of the range. */
    iterator end() const { return iterator(); }

  private:
    const CGNString& m_text;
};

#endif
