/* CGNString: the library's string. Every family takes and returns text through it.

   A CGNString owns a NUL-terminated text of bytes in the current code set (mbutil.h). Beside it, it
   keeps a copy in 16-bit characters that is built when an operation first counts in characters, and
   dropped by the next change of the bytes. So text that is only appended, copied and compared never
   pays for it, and visiting characters by their number is cheap even where they differ in size.

       CGNString name("Tokyo ");
       name.AllocateBuffer(64, 1);              // many appends follow: grow by doubling
       name += "\x93\x8c\x8b\x9e";              // two characters of two bytes in Shift-JIS
       name.GetLength();                        // 10 bytes
       name.GetNumChars();                      // 8 characters
       name.GetCodePageCharAt(6, character);    // the seventh, in its two bytes
       fopen(name, "r");                        // converts to const char *

   Positions called `index` count 16-bit characters from 0; lengths are bytes unless their name says
   characters. A character outside the 16-bit range (UTF-8 code set only) takes two positions. Text
   that is invalid in the code set has one character per byte; the bytes survive every operation.
   Results that answer yes or no are an unsigned char of 1 or 0.

   A null text is an empty one everywhere: it constructs and assigns an empty string and appends
   nothing. A text may point into the very string that it is assigned or appended to.

   Nothing throws. When memory runs out, and when a length would not fit in 32 bits, the failure is
   reported to the library's assertion and the string stays as it was.

   One object belongs to one thread at a time, reading included: reading characters may build the
   16-bit copy. Different objects are independent.

   The class converts to const char * by itself, which has edges to know: `a < b` compares addresses
   (Collate orders texts), `if (a)` is always true (IsEmpty), and printf("%s") needs a cast. NULL,
   nullptr and 0 stand for the null const char * wherever one is taken; only `s += 0`, `s += NULL`
   and such a delimiter of CopyUntil and AppendUntil do not compile, because they could as well mean
   the character 0. */
#ifndef GENUTIL_GENSTR_H
#define GENUTIL_GENSTR_H

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "export.h"

namespace genutil {
struct StringStorage;
}

/** A text of bytes in the current code set, with a copy in 16-bit characters that is built when it
   is needed. The head of this file tells how the two go together. */
class GENUTIL_API CGNString {
    // Takes part in overload resolution for 16-bit text only, so that a literal null is a char
    // text.
    template <class Pointer, class Result>
    using ForWide = std::enable_if_t<std::is_same_v<Pointer, unsigned short*> ||
                                         std::is_same_v<Pointer, const unsigned short*>,
                                     Result>;

  public:
    /* -- Construction ---------------------------------------------------------------------- */

    /** An empty string. Allocates nothing. */
    CGNString();

    /** A copy of a text. @param s the text; null for an empty string without a buffer.
        @param capacity bytes to make room for, without the terminator; at least the text's own
        length is taken. */
    CGNString(const char* s, int capacity = 0);

    /** A text given in 16-bit characters. What the code set does not have becomes "?" in the bytes.
        @param w ends at a 0; null for an empty string. The number is ignored: programs pass a
        capacity here, which 16-bit text never had. */
    template <class Wide, ForWide<Wide, int> = 0>
    CGNString(Wide w, int = 0) : CGNString() {
        SetWide(w);
    }

    /** A copy with the capacity, the growth and the 16-bit copy of the other. A copy of an empty
        string has none of them. */
    CGNString(const CGNString& other);

    virtual ~CGNString();

    /* -- Assignment; all return the string itself ------------------------------------------ */

    /** Takes the other's text up to its first 0 byte. An empty one empties as Empty() does;
        otherwise capacity and growth of this string stay. */
    CGNString& operator=(const CGNString& other);
    /** Takes a text; null empties as Empty() does. */
    CGNString& operator=(const char* s);
    /** The same as assigning. */
    CGNString& Set(const CGNString& other);

    /** Takes exactly n bytes: a shorter text is filled up with 0 bytes, which count.
        @param s the text; null empties as Empty() does. @param n length and capacity afterwards. */
    CGNString& CopyNBytes(const char* s, unsigned int n);

    /** Takes the first n characters. Of a shorter text all is taken, and the positions behind it up
        to n hold the character 0. @param s the text; null empties. @param n characters to take. */
    CGNString& CopyNChars(const char* s, unsigned int n);
    /** Takes the first n characters of 16-bit text, or less where that ends at a 0. */
    template <class Wide>
    ForWide<Wide, CGNString&> CopyNChars(Wide w, unsigned int n) {
        return CopyNWide(w, n);
    }

    /** Takes the text in front of the first delimiter, or all of it when there is none; null gives
        the empty text. @param s the text. @param delimiter one or more whole characters; it is
        never found inside a character. An empty or null one is found at once: the result is
        empty. */
    CGNString& CopyUntil(const char* s, const char* delimiter);
    /** The same with a delimiter of one byte. */
    CGNString& CopyUntil(const char* s, char delimiter);

    /* -- Appending; all return the string itself ------------------------------------------- */

    /** Appends all bytes of the other, 0 bytes included. */
    CGNString& operator+=(const CGNString& other);
    /** Appends a text; null appends nothing. */
    CGNString& operator+=(const char* s);
    /** Appends a text of 16-bit characters; null appends nothing. */
    template <class Wide>
    ForWide<Wide, CGNString&> operator+=(Wide w) {
        return AppendWide(w);
    }
    /** Appends one byte; a 0 is a byte like any other. */
    CGNString& operator+=(char c) {
        if (m_length + 1 >= m_capacity || m_wide) return AppendByte(c);
        m_data[m_length] = c;
        m_data[++m_length] = 0;
        return *this;
    }

    /** Appends what CopyNChars would take. */
    CGNString& AppendNChars(const char* s, unsigned int n);
    /** Appends what CopyUntil would take. */
    CGNString& AppendUntil(const char* s, const char* delimiter);
    /** The same with a delimiter of one byte. */
    CGNString& AppendUntil(const char* s, char delimiter);

    /* -- Room; all return the string itself ------------------------------------------------ */

    /** Makes room for n bytes without changing the text. Never shrinks. */
    CGNString& AllocateBuffer(unsigned int n);
    /** AllocateBuffer that, when grow is not 0, makes the string grow by doubling from now on
       (until Empty()). A string that was never told so grows to just what is needed each time. */
    CGNString& AllocateBuffer(unsigned int n, unsigned char grow);

    /** Back to the state of a new string: releases the buffers and ends growth by doubling. */
    CGNString& Empty();
    /** Makes the text empty and keeps the buffers, for text to come. */
    CGNString& Clear();

    /* -- Lengths and bytes ----------------------------------------------------------------- */

    /** @return 1 when there is no byte in the string. */
    unsigned char IsEmpty() const { return m_length == 0; }

    /** @return the length in bytes, terminator excluded. */
    unsigned int GetLength() const { return m_length; }
    /** The same as GetLength. */
    unsigned int GetLengthInBytes() const { return m_length; }
    /** The same as GetLength. */
    unsigned int GetNumByteNeeded() const { return m_length; }

    /** @return the number of 16-bit characters in front of the first 0 byte; for text that is
        invalid in the code set the length in bytes. Counts each time. */
    unsigned int GetNumChars() const;
    /** The same as GetNumChars. */
    unsigned int GetLengthInChars() const;

    /** @return the text: never null, owned by the string, valid until it changes. */
    operator const char*() const { return m_data; }

    /** Copies the text into a buffer and terminates it. The last byte of a full buffer is cut off
        without regard to characters, so a character of several bytes may be left in half there.
        @param out receives at most size bytes. @param size bytes out can hold; all may be written.
        @return the length of the text in out; 0, with nothing written, when size is 0. */
    unsigned int GetString(char* out, unsigned int size) const;

    /** Stores a byte in the text: no check of the index, which must be less than the length, no
        change of the length, and the characters do not follow if they were read before. */
    void SetAt2(unsigned int index, char c) {
        // A string without capacity stands on a byte that it shares or has for its terminator only.
        if (m_capacity != 0) m_data[index] = c;
    }

    /* -- Characters ------------------------------------------------------------------------ */

    /** Writes the bytes of one character and a terminator. @param index position of the character.
        @param out at least 5 bytes; receives an empty text when index is out of range or the
        character has no bytes of its own. @return out. */
    char* GetCodePageCharAt(int index, char* out) const;

    /** @return the first byte of the character at index; 0 when out of range. */
    char GetAt(unsigned int index) const;

    /** Replaces one character by the first character of a text. The bytes are rebuilt in any case,
        and their capacity becomes their length. @param index position of the character.
        @param mbchar the text; when its first character is invalid, missing or outside the 16-bit
        range, the old character stays. @return whether a character was stored. */
    unsigned char SetCodePageCharAt(int index, const char* mbchar);
    /** SetCodePageCharAt with a character of one byte. */
    unsigned char SetAt(unsigned int index, char c);

    /* -- Comparison ------------------------------------------------------------------------ */

    /** @return 1 when lengths are equal and bytes are up to the first 0 byte. */
    unsigned char operator==(const CGNString& other) const {
        return m_length == other.m_length && std::strcmp(m_data, other.m_data) == 0;
    }
    /** @return 1 when the bytes up to the first 0 byte are equal; null equals an empty string. */
    unsigned char operator==(const char* s) const {
        return s ? std::strcmp(m_data, s) == 0 : IsEmpty();
    }
    /** The negation of ==. */
    unsigned char operator!=(const CGNString& other) const { return !(*this == other); }
    /** The negation of ==. */
    unsigned char operator!=(const char* s) const { return !(*this == s); }

    /** @return 1 when both have as many characters and the upper cases of these, by Unicode, are
        equal. Without memory for the characters: whether the bytes are equal. */
    unsigned char IsEqualNoCase(const CGNString& other) const;

    /** Compares by the collation of the user's locale.
        @return negative, 0 or positive. Without memory for the characters: the order of the bytes.
     */
    int Collate(const CGNString& other) const;

  protected:
    /** Makes room for n bytes; to a size above the capacity or equal to it there is a new buffer.
        @return the capacity, which is below n when memory ran out. */
    unsigned int ReallocateToNumBytes(unsigned int n);
    /** The same for n 16-bit characters. */
    unsigned int ReallocateToNumChars(unsigned int n);

    /** Builds the 16-bit copy anew from the bytes; there is none when memory runs out. */
    void DuplicateWzBufferFromData() const;
    /** The same for a string that is not constant. */
    void DuplicateWzBufferFromData();
    /** Builds the bytes anew from the 16-bit copy; when memory runs out the bytes stay, and the
        16-bit copy is dropped. Where a character does not convert it becomes "?", and the bytes are
        limited to 3 for each character in the const form and to 2 in the other. */
    void DuplicateDataFromWzBuffer() const;
    /** The same with the narrower limit. */
    void DuplicateDataFromWzBuffer();

    /** Stores a text in the 16-bit copy, without a look at the bytes. */
    void ExpandBufferToWzBuffer(unsigned short* w);
    /** Stores a text in the bytes, without a look at the 16-bit copy. */
    void ExpandBufferToDataBuffer(char* s);

    /** Releases both buffers; the caller must give the string another before it is used. */
    void FreeBuffers();
    /** Releases the 16-bit copy. */
    void FreeWzBuffer();
    /** The state of a new string, over whatever there was. */
    void InitValue();

    // Mutable, because reading a constant string may fill one buffer from the other. A capacity
    // does not count the terminator, for which there is always room.
    mutable unsigned short* m_wide;       /**< null when not built */
    mutable std::uint32_t m_wideLength;   /**< in characters */
    mutable std::uint32_t m_wideCapacity; /**< 0 while a buffer is kept by Clear() */
    mutable char* m_data;                 /**< one shared byte while the string has no buffer */
    mutable std::uint32_t m_length;       /**< in bytes */
    mutable std::uint32_t m_capacity;     /**< in bytes */
    std::uint32_t m_flags;                /**< bit 0: grow by doubling */

  private:
    friend struct genutil::StringStorage;

    CGNString& AppendByte(char c);
    void SetWide(const unsigned short* w);
    CGNString& CopyNWide(const unsigned short* w, unsigned int n);
    CGNString& AppendWide(const unsigned short* w);
};

/** The comparisons with the text on the left, which would else compare addresses. */
inline unsigned char operator==(const char* s, const CGNString& text) {
    return text == s;
}
inline unsigned char operator!=(const char* s, const CGNString& text) {
    return text != s;
}

#include "genlist.h"

#endif
