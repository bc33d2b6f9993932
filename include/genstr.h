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

   Operations that cut, look for and change text count in characters, unless their name says bytes;
   "the result" of one that takes a CGNString& first goes there and may go to the string itself, as
   any argument may be the string itself.

       CGNString part;
       name.SubStr(part, 6, 1);                 // the seventh character
       name.Find("o", 2);                       // 4
       name.Replace("Tokyo", "Kyoto");
       name.EncodeHtmlString();

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

#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "genexport.h"

namespace genutil {
struct StringStorage;
}
class CGNStringList;

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

    /* -- Search ---------------------------------------------------------------------------- */

    /** Finds a text. @param t the text; an empty one is found at once. @param start the position to
        begin at. @return the position of the first occurrence from there on; -1 when there is none,
        and when start is no position of a character. */
    int Find(const CGNString& t, int start = 0) const;
    /** The same for a text that is no string. */
    int Find(const char* t, int start = 0) const;
    /** Find of a text of one byte. */
    int StrChr(unsigned int start, char c) const;
    /** @return the position of the last occurrence of the first character of ch, or -1. */
    int ReverseFind(const char* ch) const;
    /** @return how many characters from start on are not in set, up to the first that is: a
        distance from start, not a position. The number of all characters when start is no position
        of one. */
    int FindFirstOf(const CGNString& set, int start = 0) const;
    /** FindFirstOf for the first character that is not in set. */
    int FindFirstNotOf(const CGNString& set, int start = 0) const;

    /* -- Extraction ------------------------------------------------------------------------ */

    /** Takes characters from the middle. @param out receives them; empty when start is at or behind
        the end. @param start position of the first. @param count how many at most; a negative
        number, as -1, stands for all. */
    void SubStr(CGNString& out, unsigned int start, int count = -1) const;
    /** The string becomes what SubStr takes. */
    void SubStr(unsigned int start, int count = -1);
    /** The same as SubStr; a negative start is behind the end. */
    void MidString(CGNString& out, int start, int count = -1) const;
    /** Takes the first n characters. */
    void LeftString(CGNString& out, unsigned int n) const;
    /** Takes the last n characters. */
    void RightString(CGNString& out, unsigned int n) const;

    /** Takes the first n bytes, less a character that n cuts. When n is more than the length, the
        length of the result is n nevertheless, with 0 bytes behind the text. */
    void LeftStringInBytes(CGNString& out, unsigned int n) const;
    /** Takes the last n bytes, less a character that this cuts; all when n is not below the
        length. */
    void RightStringInBytes(CGNString& out, unsigned int n) const;
    /** The string becomes count bytes of it, or all when count is negative, without regard to
        characters. With start at or behind the end the text becomes empty and the length stays. */
    void SubStrInBytes(unsigned int start, int count = -1);

    /** Keeps the first n characters. */
    void Truncate(unsigned int n);
    /** Keeps what stands before the first character that is the first one of ch. */
    void TruncateAt(const char* ch);
    /** The same for a character of one byte. */
    void TruncateAt(char c);

    /* -- Trimming: spaces, and tabs where the name says so --------------------------------- */

    /** The result is the text without leading spaces. */
    void LeftTrim(CGNString& out) const;
    /** The result is the text without leading spaces and tabs. */
    void LeftTrimWithTab(CGNString& out) const;
    /** The result is the text without trailing spaces. */
    void RightTrim(CGNString& out) const;
    /** The result is the text without trailing spaces and tabs. Where the first of these is a tab,
        it becomes a space in the string itself. */
    void RightTrimWithTab(CGNString& out) const;
    /** The result is the text without leading and trailing spaces. */
    void LeftRightTrim(CGNString& out) const;

    /* -- Letter case and classes of characters, by Unicode --------------------------------- */

    /** Maps to upper case, where the character maps there and back. @param index position of the
        character; -1 for all. */
    void ToUpper(int index = -1);
    /** ToUpper to lower case. */
    void ToLower(int index = -1);

    /** @return 1 when the character at index is a letter; with -1 when all are, which those of an
        empty string are. 0 for any other index without a character. */
    unsigned char IsAlphaAt(int index) const;
    /** IsAlphaAt for letters and digits. */
    unsigned char IsAlphaNumAt(int index) const;
    /** IsAlphaAt for small letters. */
    unsigned char IsLowerAt(int index) const;
    /** IsAlphaAt for capitals. */
    unsigned char IsUpperAt(int index) const;
    /** IsAlphaAt for what is neither control character nor unassigned. */
    unsigned char IsPrintAt(int index) const;
    /** IsAlphaAt for white space. */
    unsigned char IsSpaceAt(int index) const;
    /** IsAlphaAt for hexadecimal digits, those of full width among them. */
    unsigned char IsXDigitAt(int index) const;
    /** IsAlphaAt for decimal digits of any script; 0 for an empty string. */
    unsigned char IsDigitAt(int index) const;
    /** IsAlphaAt for punctuation; 0 for an empty string. */
    unsigned char IsPunctAt(int index) const;

    /** @return 1 when there are characters and all are letters or digits. */
    unsigned char IsAlpha() const;
    /** @return 1 when the first byte of the character at index is one of "0" to "9". */
    unsigned char IsNumAt(unsigned int index) const;
    /** @return 1 when the character at index is the byte c and no more. */
    unsigned char CompareSingleByteAt(int index, char c) const;
    /** @return 1 when the bytes of the character at index are those of mbchar; of no character they
        are those of an empty text. */
    unsigned char CompareMultiByteAt(int index, const char* mbchar) const;
    /** @return the decimal number that the text begins with, behind white space and with its sign;
        0 without one. */
    long Number() const;

    /* -- Editing --------------------------------------------------------------------------- */

    /** Inserts a text before the character at index, or at the end. @return 0, with nothing
        inserted, when index is neither or memory runs out. */
    unsigned char InsertAt(int index, const CGNString& t);
    /** Removes count characters from index on, or all up to the end when there are less. @return 0,
        with nothing removed, when there is no character at index, count is negative or memory runs
        out. */
    unsigned char RemoveAt(int index, int count);
    /** Replaces every character of one byte by another. */
    void Replace(char from, char to);
    /** Replaces every occurrence of a text, from the left and without overlap. @param from what to
        replace; nothing happens when it is null or empty. @param to what takes its place; null is
        empty. */
    void Replace(const char* from, const char* to);

    /** Doubles every character q, of one byte. */
    void ExpandQuotes(char q);
    /** Makes one q of every two in a row: two of three. */
    void UnexpandQuotes(char q);
    /** Writes backspace, line feed, form feed, carriage return, double quote and backslash as a
        backslash and a character. */
    void ExpandSpecials();
    /** Reads backslash escapes: of a backslash, b, n, r, t, and of a byte by its number in up to
        three digits, which takes one character more with it. It is no inverse of ExpandSpecials: a
        form feed and a double quote are not read back. */
    void UnexpandSpecials();

    /** The list becomes the parts between delimiters, empty ones included but behind a last
        delimiter. An empty string has no parts. @param list receives them; may own this string.
        @param delimiter whole characters; null and empty are found nowhere. */
    void Split(CGNStringList& list, const char* delimiter) const;
    /** The same with a delimiter of one byte. */
    void Split(CGNStringList& list, unsigned char delimiter) const;

    /** @return the number of line breaks, as OSClientGetNumLines counts them (ostext.h). */
    int GetNumLines() const;

    /* -- File names ------------------------------------------------------------------------ */

    /** Splits at the last "/" or backslash, which goes to neither part. Without one all is the
        file, and dir is empty. */
    void SplitFilePath(CGNString& dir, CGNString& file) const;
    /** Splits at the last dot likewise; without one all is the base. */
    void SplitFileName(CGNString& base, CGNString& ext) const;
    /** The string becomes dir, a backslash unless dir ends in one, and file. @return 1. */
    unsigned char MakeFilePath(const CGNString& dir, const CGNString& file);
    /** Shortens the file name behind the last "/" or backslash, if any, to at most eight bytes and
        an extension of three: in capitals, of whole characters, without spaces and what else such
        a name cannot hold. A name that begins with its only dot has no extension. */
    void ForceTo8By3();

    /* -- Encodings ------------------------------------------------------------------------- */

    /** Escapes "&", "<" and ">", and writes line ends as "<br>". */
    void EncodeHtmlString();
    /** EncodeHtmlString that leaves line ends as they are. */
    void EncodeHtmlStringTextArea();
    /** Escapes "&", line ends and double quotes, for the value of an attribute. */
    void EncodeHtmlQuotedString();
    /** Escapes "&", "<", ">", and both quotes. */
    void EncodeXMLString();
    /** Escapes backslashes, line ends and both quotes, for a literal of a script. @param flatten
        non-zero makes spaces of the line ends. */
    void EncodeJavaScriptQuotedString(unsigned char flatten);
    /** Replace; in a code set without characters of several bytes it looks at bytes. */
    void EncodeReplace(const char* from, const char* to);

    /** Converts from the ANSI code page of a locale to UTF-8; the string is empty when that fails.
        @param localeName a name that mbGetLCID knows; null for the user's. */
    void ConvertToUTF8(const char* localeName);
    /** Converts from UTF-8 to the user's ANSI code page; the string is empty when that fails. */
    void ConvertFromUTF8();
    /** Decodes "%" and two hexadecimal digits, as mbUrlDecode. */
    void UrlDecode();

    /** Half-width characters become full-width, in code sets 4 and 5. */
    void ConvertSingleToDouble();
    /** Full-width digits and Latin letters become ASCII, in code set 5. */
    void ConvertRomanjiToASCII();
    /** In a Japanese code set ConvertSingleToDouble, then ConvertRomanjiToASCII. */
    void ConvertSpecialAlphaNumForXMLTag();

    /** @return the text `content="text/html; charset=NAME">`. @param locale a locale's name whose
        default code set is named; empty for the current code set. */
    CGNString GetEncodingStringForHTML(const CGNString& locale);
    /** Names a character set in an HTML page: in the first meta element that declares one, or else
        in a new one at the beginning of the head. @param locale as above. */
    void ReplaceEncodingStringInHTML(const CGNString& locale);

    /** OSClientFormatString of the string (ostext.h). */
    void ClientFormat();
    /** OSServerFormatString of the string (ostext.h). */
    void ServerFormat();

    /* -- Formatting ------------------------------------------------------------------------ */

    /** The string becomes a formatted text of any length; its own text may be an argument.
        @param format as printf takes it; null for an empty text. @return the length in bytes; -1,
        with the string as it was, when the format fails or memory runs out. */
    int sprintf(const char* format, ...) GENUTIL_PRINTF(2, 3);
    /** sprintf for a function that has arguments of its own to pass on. */
    int sprintf2(const char* format, va_list arguments) GENUTIL_PRINTF(2, 0);
    /** The string becomes the string resource of a number, with texts in the places "%1" to "%10"
        and "%" in those of "%%". @return 0, with the string empty, when no library that is attached
        has it. */
    unsigned char LoadStringResource(long id, const char* s1 = nullptr, const char* s2 = nullptr,
                                     const char* s3 = nullptr, const char* s4 = nullptr,
                                     const char* s5 = nullptr, const char* s6 = nullptr,
                                     const char* s7 = nullptr, const char* s8 = nullptr,
                                     const char* s9 = nullptr, const char* s10 = nullptr);

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
    int RunLength(const CGNString& set, int start, bool in) const;
    void StorePart(CGNString& out, unsigned int begin, unsigned int end) const;
    void MapCase(int index, bool upper);
    bool AreOfClass(int index, unsigned int classes) const;
    void SplitAtLast(char a, char b, CGNString& before, CGNString& behind, CGNString& whole) const;
    void TakeConverted(char* made);
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
