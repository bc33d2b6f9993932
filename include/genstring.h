/* CGNString: the string class of the library. All other headers exchange text through it.

   A CGNString owns a NUL-terminated text of bytes in the current code set (mbutil.h). When an
   operation first needs to count characters, the string also builds a copy in 16-bit characters.
   The next change of the bytes discards that copy. Text that is only appended, copied and compared
   therefore never pays for it, and access to characters by position is fast even if their sizes
   differ.

       CGNString name("Tokyo ");
       name.AllocateBuffer(64, 1);              // many appends follow: grow by doubling
       name += "\x93\x8c\x8b\x9e";              // two characters of two bytes in Shift-JIS
       name.GetLength();                        // 10 bytes
       name.GetNumChars();                      // 8 characters
       name.GetCodePageCharAt(6, character);    // the seventh, in its two bytes
       fopen(name, "r");                        // converts to const char *

   Parameters called `index` are positions that count 16-bit characters from 0. Lengths are in bytes
   unless the name says characters. A character outside the 16-bit range (UTF-8 code set only)
   occupies two positions. A text that is invalid in the code set has one position per byte, and its
   bytes are preserved by every operation. In both cases a position inside a character means the
   whole character: extraction and insertion begin and end before it, removal includes it, and it
   reads as empty. No byte of a longer character is a character of its own. Boolean results are an
   unsigned char, 1 or 0.

   Operations that extract, search and modify text count in characters unless their name says bytes.
   An operation whose first parameter is a CGNString& writes its result there. Every argument may be
   the string itself.

       CGNString part;
       name.SubStr(part, 6, 1);                 // the seventh character
       name.Find("o", 2);                       // 4
       name.Replace("Tokyo", "Kyoto");
       name.EncodeHtmlString();

   A null text is treated as an empty text everywhere. A text may point into the string that it is
   assigned or appended to.

   Nothing throws. If allocation fails or a length exceeds 32 bits, the failure is reported to the
   library's assertion service and the string is unchanged.

   The current code set must not change while strings exist whose characters have been read. The
   next edit of such a string would convert its text to the new code set.

   An object may be used by one thread at a time, even for reading, because reading characters may
   build the 16-bit copy. Different objects are independent.

   C++ texts are accepted where a const char * is: std::string and std::string_view, char16_t texts
   and std::u16string_view, and wchar_t texts where wchar_t has 16 bits. View() and Characters()
   return the text as a std::string_view and as a range of whole characters. Strings can be moved,
   swapped and hashed; CGNStringLess orders them in a std::map. genstringio.h writes them to
   streams.

       std::unordered_map<CGNString, int> counts;
       std::map<CGNString, int, CGNStringLess> sorted;
       for (const CGNCharacter& c : name.Characters()) counts[c.Bytes()]++;

   Because the class converts to const char *, a few expressions need care: `if (a)` is always true
   (use IsEmpty), and printf("%s") needs a cast. `a < b` (use Collate or CGNStringLess), `s += 5`,
   `s + 1` and `delete s` do not compile. NULL, nullptr and 0 mean a null const char *. The
   exceptions are `s += 0`, `s += NULL` and a null delimiter of CopyUntil or AppendUntil, which do
   not compile because they could also mean the character 0. */
#ifndef GENUTIL_GENSTRING_H
#define GENUTIL_GENSTRING_H

#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <utility>

#include "gencharacters.h"
#include "genexport.h"

namespace genutil {
struct StringStorage;
}
class CGNStringList;

/** A text of bytes in the current code set, with a copy in 16-bit characters built on demand. See
    the start of this file. */
class GENUTIL_API CGNString {
    // Enables an overload for 16-bit text only, so that a literal null selects the char
    // overload.
    template <class Unit>
    static constexpr bool kIsWide = std::is_same_v<Unit, unsigned short> ||
                                    std::is_same_v<Unit, char16_t> ||
                                    (std::is_same_v<Unit, wchar_t> &&
                                     sizeof(wchar_t) == sizeof(unsigned short));
    template <class Pointer, class Result>
    using ForWide = std::enable_if_t<std::is_pointer_v<Pointer> &&
                                         kIsWide<std::remove_cv_t<std::remove_pointer_t<Pointer>>>,
                                     Result>;
    // Enables an overload for views of 16-bit text.
    template <class Unit, class Result>
    using ForWideUnit =
        std::enable_if_t<kIsWide<Unit> && !std::is_same_v<Unit, unsigned short>, Result>;
    // Enables an overload for std::string, std::string_view and what converts to it, but neither
    // for a text that is terminated by 0 nor for a string.
    template <class Text, class Result>
    using ForView = std::enable_if_t<std::is_convertible_v<const Text&, std::string_view> &&
                                         !std::is_convertible_v<const Text&, const char*>,
                                     Result>;
    // Enables an overload for numbers that are no characters.
    template <class Number, class Result>
    using ForNumber =
        std::enable_if_t<std::is_arithmetic_v<Number> && !std::is_same_v<Number, char> &&
                             !std::is_same_v<Number, signed char> &&
                             !std::is_same_v<Number, unsigned char>,
                         Result>;

  public:
    /* -- Construction ---------------------------------------------------------------------- */

    /** Constructs an empty string. Allocates nothing. */
    CGNString();

    /** Copies a text.
        @param s the text; null gives an empty string without a buffer.
        @param capacity bytes to make room for, without the terminator. A value below the length
            of the text is ignored. */
    CGNString(const char* s, int capacity = 0);

    /** Converts a text of 16-bit characters. A character missing in the code set becomes "?" in the
        bytes. The second argument is ignored; existing programs pass a capacity there.
        @param w the text, terminated by 0; null gives an empty string. */
    template <class Wide, ForWide<Wide, int> = 0>
    CGNString(Wide w, int = 0) : CGNString() {
        SetWide(reinterpret_cast<const unsigned short*>(w));
    }

    /** Copies a std::string_view, including its 0 bytes. */
    template <class Text, ForView<Text, int> = 0>
    CGNString(const Text& s) : CGNString() {
        const std::string_view view(s);
        AssignBytes(view.data(), view.size());
    }
    /** Converts a text of 16-bit characters, up to its first 0. */
    template <class Unit, ForWideUnit<Unit, int> = 0>
    CGNString(std::basic_string_view<Unit> w) : CGNString() {
        CopyNChars(w.data(), static_cast<unsigned int>(w.size()));
    }

    /** Takes the buffers, capacity and growth policy of other, which becomes empty. */
    CGNString(CGNString&& other) noexcept : CGNString() {
        if (!other.IsEmpty()) Swap(other);
    }

    /** Copies the text, the capacity, the growth policy and the 16-bit copy. A copy of an empty
        string has none of these. */
    CGNString(const CGNString& other);

    virtual ~CGNString();

    /* -- Assignment; all functions return the string itself -------------------------------- */

    /** Assigns the text of other up to its first 0 byte. An empty text has the effect of Empty().
        Otherwise capacity and growth policy are unchanged. */
    CGNString& operator=(const CGNString& other);
    /** Assigns a text. Null has the effect of Empty(). */
    CGNString& operator=(const char* s);
    /** Assigns as above and empties other. Does not allocate. */
    CGNString& operator=(CGNString&& other) noexcept {
        if (this != &other) MoveFrom(other);
        return *this;
    }
    /** Assigns a std::string_view, including its 0 bytes. */
    template <class Text>
    ForView<Text, CGNString&> operator=(const Text& s) {
        const std::string_view view(s);
        return AssignBytes(view.data(), view.size());
    }
    /** Assigns a text of 16-bit characters; see the constructors. Null has the effect of
        Empty(). */
    template <class Wide>
    ForWide<Wide, CGNString&> operator=(Wide w) {
        return *this = CGNString(w);
    }
    /** Exchanges texts, capacities and growth policies. */
    void Swap(CGNString& other) noexcept {
        std::swap(m_wide, other.m_wide);
        std::swap(m_wideLength, other.m_wideLength);
        std::swap(m_wideCapacity, other.m_wideCapacity);
        std::swap(m_data, other.m_data);
        std::swap(m_length, other.m_length);
        std::swap(m_capacity, other.m_capacity);
        std::swap(m_flags, other.m_flags);
    }
    /** Same as above. */
    friend void swap(CGNString& a, CGNString& b) noexcept { a.Swap(b); }
    /** Same as assignment. */
    CGNString& Set(const CGNString& other);

    /** Assigns exactly n bytes. A shorter text is padded with 0 bytes, which count towards the
        length.
        @param s the text; null has the effect of Empty().
        @param n the new length and capacity in bytes. */
    CGNString& CopyNBytes(const char* s, unsigned int n);

    /** Assigns the first n characters, or fewer if the text ends earlier.
        @param s the text; null has the effect of Empty().
        @param n number of characters. */
    CGNString& CopyNChars(const char* s, unsigned int n);
    /** Assigns the first n characters of a 16-bit text, or fewer if it ends earlier. */
    template <class Wide>
    ForWide<Wide, CGNString&> CopyNChars(Wide w, unsigned int n) {
        return CopyNWide(reinterpret_cast<const unsigned short*>(w), n);
    }

    /** Assigns the text before the first delimiter, or the whole text if there is none.
        @param s the text; null is an empty text.
        @param delimiter one or more characters, matched at character boundaries only. An empty
            or null delimiter matches at once, so the result is empty. */
    CGNString& CopyUntil(const char* s, const char* delimiter);
    /** Same as above, with a delimiter of one byte. */
    CGNString& CopyUntil(const char* s, char delimiter);

    /* -- Appending; all functions return the string itself --------------------------------- */

    /** Appends all bytes of other, including 0 bytes. */
    CGNString& operator+=(const CGNString& other);
    /** Appends a text. Null appends nothing. */
    CGNString& operator+=(const char* s);
    /** Appends a text of 16-bit characters. Null appends nothing. */
    template <class Wide>
    ForWide<Wide, CGNString&> operator+=(Wide w) {
        return AppendWide(reinterpret_cast<const unsigned short*>(w));
    }
    /** Appends a std::string_view, including its 0 bytes. */
    template <class Text>
    ForView<Text, CGNString&> operator+=(const Text& s) {
        const std::string_view view(s);
        return AppendBytes(view.data(), view.size());
    }
    /** Appends a text of 16-bit characters, up to its first 0. */
    template <class Unit>
    ForWideUnit<Unit, CGNString&> operator+=(std::basic_string_view<Unit> w) {
        return *this += CGNString(w);
    }
    /** A number is no text: format it (sprintf), or append a char. */
    template <class Number>
    ForNumber<Number, CGNString&> operator+=(Number) = delete;
    /** Appends one byte, which may be 0. */
    CGNString& operator+=(char c) {
        if (m_length + 1 >= m_capacity || m_wide) return AppendByte(c);
        m_data[m_length] = c;
        m_data[++m_length] = 0;
        return *this;
    }

    /** Appends the text that CopyNChars() would assign. */
    CGNString& AppendNChars(const char* s, unsigned int n);
    /** Appends the text that CopyUntil() would assign. */
    CGNString& AppendUntil(const char* s, const char* delimiter);
    /** Same as above, with a delimiter of one byte. */
    CGNString& AppendUntil(const char* s, char delimiter);

    /* -- Capacity; all functions return the string itself ---------------------------------- */

    /** Makes room for n bytes. The text is unchanged. The capacity never shrinks. */
    CGNString& AllocateBuffer(unsigned int n);
    /** Makes room for n bytes. If grow is nonzero, the string grows by doubling until Empty() is
        called. By default, a string grows only to the size required. */
    CGNString& AllocateBuffer(unsigned int n, unsigned char grow);

    /** Resets the string to its initial state: releases the buffers and ends growth by doubling. */
    CGNString& Empty();
    /** Empties the text and keeps the buffers for reuse. */
    CGNString& Clear();

    /* -- Lengths and bytes ----------------------------------------------------------------- */

    /** Returns 1 if the string has no bytes. */
    unsigned char IsEmpty() const { return m_length == 0; }

    /** Returns the length in bytes, without the terminator. */
    unsigned int GetLength() const { return m_length; }
    /** Same as GetLength(). */
    unsigned int GetLengthInBytes() const { return m_length; }
    /** Same as GetLength(). */
    unsigned int GetNumByteNeeded() const { return m_length; }

    /** Returns the number of 16-bit characters before the first 0 byte. Returns the length in bytes
        if the text is invalid in the code set. Counts on every call. */
    unsigned int GetNumChars() const;
    /** Same as GetNumChars(). */
    unsigned int GetLengthInChars() const;

    /** Returns the text. It is never null, is owned by the string and is valid until the string
        changes. */
    operator const char*() const { return m_data; }
    /** Returns all bytes of the text. They are owned by the string and valid until it changes. */
    std::string_view View() const { return {m_data, m_length}; }
    /** With a second pointer to choose from, `delete s` does not compile. Never chosen otherwise.
     */
    operator void*() const volatile = delete;

    /** Copies the text to a buffer and terminates it. A text that is too long is cut at the last
        byte, which may split a multibyte character. Returns the length of the copied text. Returns
        0 and writes nothing if size is 0.
        @param out the buffer; all size bytes may be written.
        @param size size of the buffer in bytes. */
    unsigned int GetString(char* out, unsigned int size) const;

    /** Overwrites a byte. The index is in bytes, unchecked, and must be less than the length. The
        length is unchanged. A 16-bit copy that already exists is not updated. */
    void SetAt2(unsigned int index, char c) {
        // A string without capacity points to a shared byte or has room for its terminator only.
        if (m_capacity != 0) m_data[index] = c;
    }

    /* -- Characters ------------------------------------------------------------------------ */

    /** Writes the bytes of one character and a terminator. Returns out.
        @param index position of the character.
        @param out buffer of at least 5 bytes. Receives an empty text if index is out of range
            or the character has no bytes of its own. */
    char* GetCodePageCharAt(int index, char* out) const;

    /** Returns the first byte of the character at index, or 0 if index is out of range. */
    char GetAt(unsigned int index) const;

    /** Returns the whole characters of the text as a range of CGNCharacter (gencharacters.h). The
        string must outlive the range, so a temporary string has none. */
    CGNCharacterRange Characters() const& { return CGNCharacterRange(*this); }
    CGNCharacterRange Characters() const&& = delete;

    /** Replaces one character with the first character of a text. The bytes are always rebuilt, and
        their capacity becomes their length. Returns 1 if the character was replaced.
        @param index position of the character.
        @param mbchar the text. The character at index is kept if the first character of the
            text is invalid or missing, or if index is inside a character. */
    unsigned char SetCodePageCharAt(int index, const char* mbchar);
    /** Same as SetCodePageCharAt() for a character of one byte. */
    unsigned char SetAt(unsigned int index, char c);

    /* -- Comparison ------------------------------------------------------------------------ */

    /** Returns 1 if the lengths are equal and the bytes are equal up to the first 0 byte. */
    unsigned char operator==(const CGNString& other) const {
        return m_length == other.m_length && std::strcmp(m_data, other.m_data) == 0;
    }
    /** Returns 1 if the bytes up to the first 0 byte are equal. Null equals an empty string. */
    unsigned char operator==(const char* s) const {
        return s ? std::strcmp(m_data, s) == 0 : IsEmpty();
    }
    /** Returns true if all bytes are equal. */
    template <class Text>
    friend ForView<Text, bool> operator==(const CGNString& a, const Text& b) {
        return a.View() == std::string_view(b);
    }
    /** Same as above. */
    template <class Text>
    friend ForView<Text, bool> operator==(const Text& a, const CGNString& b) {
        return std::string_view(a) == b.View();
    }
    /** Returns the negation of ==. */
    template <class Text>
    friend ForView<Text, bool> operator!=(const CGNString& a, const Text& b) {
        return a.View() != std::string_view(b);
    }
    /** Returns the negation of ==. */
    template <class Text>
    friend ForView<Text, bool> operator!=(const Text& a, const CGNString& b) {
        return std::string_view(a) != b.View();
    }
    /** Returns the negation of ==. */
    unsigned char operator!=(const CGNString& other) const { return !(*this == other); }
    /** Returns the negation of ==. */
    unsigned char operator!=(const char* s) const { return !(*this == s); }

    /** Compares with the text on the left. Without these overloads, addresses would be compared. */
    friend unsigned char operator==(const char* s, const CGNString& text) { return text == s; }
    /** Returns the negation of ==. */
    friend unsigned char operator!=(const char* s, const CGNString& text) { return text != s; }

    /* These would compare or move addresses. */
    /** @cond */
    friend bool operator<(const CGNString&, const CGNString&) = delete;   // use CGNStringLess
    friend bool operator>(const CGNString&, const CGNString&) = delete;   // use CGNStringLess
    friend bool operator<=(const CGNString&, const CGNString&) = delete;  // use CGNStringLess
    friend bool operator>=(const CGNString&, const CGNString&) = delete;  // use CGNStringLess
    friend bool operator<(const CGNString&, const char*) = delete;        // use CGNStringLess
    friend bool operator>(const CGNString&, const char*) = delete;        // use CGNStringLess
    friend bool operator<=(const CGNString&, const char*) = delete;       // use CGNStringLess
    friend bool operator>=(const CGNString&, const char*) = delete;       // use CGNStringLess
    friend bool operator<(const char*, const CGNString&) = delete;        // use CGNStringLess
    friend bool operator>(const char*, const CGNString&) = delete;        // use CGNStringLess
    friend bool operator<=(const char*, const CGNString&) = delete;       // use CGNStringLess
    friend bool operator>=(const char*, const CGNString&) = delete;       // use CGNStringLess
#if defined(__cpp_impl_three_way_comparison)
    friend void operator<=>(const CGNString&, const CGNString&) = delete;  // use CGNStringLess
    friend void operator<=>(const CGNString&, const char*) = delete;       // use CGNStringLess
#endif
    template <class Number>
    friend std::enable_if_t<std::is_arithmetic_v<Number>, const char*> operator+(
        const CGNString&, Number) = delete;  // use View(), or += to append
    template <class Number>
    friend std::enable_if_t<std::is_arithmetic_v<Number>, const char*> operator+(
        Number, const CGNString&) = delete;  // use View(), or += to append
    /** @endcond */

    /** Returns 1 if both strings have the same number of characters and their Unicode upper-case
        forms are equal. If allocation fails, returns 1 if the bytes are equal. */
    unsigned char IsEqualNoCase(const CGNString& other) const;

    /** Compares by the collation of the user's locale. If allocation fails, compares bytes. Returns
        a negative number, 0 or a positive number. */
    int Collate(const CGNString& other) const;

    /** What a comparison ignores; values can be combined. */
    enum CollateOption : unsigned int {
        kIgnoreCase = 1,      /**< upper and lower case are equal */
        kIgnoreWidth = 2,     /**< full-width and half-width characters are equal */
        kIgnoreKana = 4,      /**< hiragana and katakana are equal */
        kDigitsAsNumbers = 8, /**< "item 9" comes before "item 10", where the system supports it */
    };
    /** Compares by the user's language, with options. On Linux Collate() without options follows
       the order of the C library instead, and that of bytes in the C locale; with 0 the order is
       that of ICU.
        @param other the text to compare with.
        @param options a sum of CollateOption. */
    int Collate(const CGNString& other, unsigned int options) const;
    /** Creates a key for sorting: keys compare as bytes (strcmp, CGNStringLess) in the order in
        which Collate() with the same options puts the texts. A key is valid for one user and one
        version of the system, so do not store it. Returns 0 and leaves key unchanged on failure.
        @param key receives the key.
        @param options a sum of CollateOption. */
    unsigned char GetSortKey(CGNString& key, unsigned int options = 0) const;

    /* -- Search ---------------------------------------------------------------------------- */

    /** Finds the first occurrence of a text at or after a position. Returns its position, or -1 if
        there is none or start is out of range.
        @param t the text; an empty text is found at start.
        @param start position at which the search begins. */
    int Find(const CGNString& t, int start = 0) const;
    /** Same as above for a char text. */
    int Find(const char* t, int start = 0) const;
    /** Same as Find() for a character of one byte. */
    int StrChr(unsigned int start, char c) const;
    /** Returns the position of the last occurrence of the first character of ch, or -1 if there is
        none. */
    int ReverseFind(const char* ch) const;
    /** Counts the characters from start up to the first one contained in set. Returns this distance
        from start, not a position. If start is out of range, returns the number of all
        characters. */
    int FindFirstOf(const CGNString& set, int start = 0) const;
    /** Counts the characters from start up to the first one not contained in set; see
        FindFirstOf(). */
    int FindFirstNotOf(const CGNString& set, int start = 0) const;

    /* -- Extraction ------------------------------------------------------------------------ */

    /** Extracts a substring.
        @param out receives the substring; empty if start is at or after the end.
        @param start position of the first character.
        @param count maximum number of characters; a negative number means all. */
    void SubStr(CGNString& out, unsigned int start, int count = -1) const;
    /** Replaces the string with a substring of itself. */
    void SubStr(unsigned int start, int count = -1);
    /** Same as SubStr(). A negative start is treated as a position after the end. */
    void MidString(CGNString& out, int start, int count = -1) const;
    /** Extracts the first n characters. */
    void LeftString(CGNString& out, unsigned int n) const;
    /** Extracts the last n characters. */
    void RightString(CGNString& out, unsigned int n) const;

    /** Extracts the first n bytes without a final partial character. If n exceeds the length, the
        result is padded with 0 bytes to a length of n. */
    void LeftStringInBytes(CGNString& out, unsigned int n) const;
    /** Extracts the last n bytes without an initial partial character, or the whole text if it is
        not longer than n. */
    void RightStringInBytes(CGNString& out, unsigned int n) const;
    /** Replaces the string with count bytes of itself, or with all bytes from start if count is
        negative. Characters may be split. If start is at or after the end, the text becomes empty
        but the length is unchanged. */
    void SubStrInBytes(unsigned int start, int count = -1);

    /** Keeps the first n characters. */
    void Truncate(unsigned int n);
    /** Truncates the string before the first occurrence of the first character of ch. */
    void TruncateAt(const char* ch);
    /** Truncates the string before the first occurrence of a character of one byte. */
    void TruncateAt(char c);

    /* -- Trimming of spaces, and of tabs where the name says so ---------------------------- */

    /** Copies the text without leading spaces to out. */
    void LeftTrim(CGNString& out) const;
    /** Copies the text without leading spaces and tabs to out. */
    void LeftTrimWithTab(CGNString& out) const;
    /** Copies the text without trailing spaces to out. */
    void RightTrim(CGNString& out) const;
    /** Copies the text without trailing spaces and tabs to out. If the first of these is a tab, it
        is replaced with a space in the string itself. */
    void RightTrimWithTab(CGNString& out) const;
    /** Copies the text without leading and trailing spaces to out. */
    void LeftRightTrim(CGNString& out) const;

    /* -- Letter case and character classes of Unicode -------------------------------------- */

    /** Converts characters to upper case. A character is converted only if its upper-case form maps
        back to it and exists in the code set.
        @param index position of the character; -1 for all characters. */
    void ToUpper(int index = -1);
    /** Converts characters to lower case; see ToUpper(). */
    void ToLower(int index = -1);
    /** Replaces each letter with the one that represents all of its forms in comparisons without
        case: mostly the small letter, and one for both small forms of the Greek sigma. A letter
        that the code set lacks is not used. */
    void FoldCase();

    /** The normal forms of Unicode. */
    enum NormalForm : unsigned int {
        kNormalFormC,  /**< composed characters */
        kNormalFormD,  /**< base characters followed by their marks */
        kNormalFormKC, /**< composed; compatible characters such as full-width ones are replaced */
        kNormalFormKD, /**< the same for base characters and marks */
    };
    /** Converts the text to a normal form. Returns 0 and leaves the text unchanged if the text is
        invalid in the code set, if the code set lacks a character of the result or if allocation
        fails. */
    unsigned char Normalize(NormalForm form);

    /** Returns 1 if the character at index is a letter. With index -1, returns 1 if all characters
        are letters; an empty string satisfies this. Returns 0 if index is out of range. */
    unsigned char IsAlphaAt(int index) const;
    /** Tests for letters and digits; see IsAlphaAt(). */
    unsigned char IsAlphaNumAt(int index) const;
    /** Tests for lower-case letters; see IsAlphaAt(). */
    unsigned char IsLowerAt(int index) const;
    /** Tests for upper-case letters; see IsAlphaAt(). */
    unsigned char IsUpperAt(int index) const;
    /** Tests for assigned characters other than control characters; see IsAlphaAt(). */
    unsigned char IsPrintAt(int index) const;
    /** Tests for white space; see IsAlphaAt(). */
    unsigned char IsSpaceAt(int index) const;
    /** Tests for hexadecimal digits, including full-width ones; see IsAlphaAt(). */
    unsigned char IsXDigitAt(int index) const;
    /** Tests for decimal digits of any script; see IsAlphaAt(). Returns 0 for an empty string. */
    unsigned char IsDigitAt(int index) const;
    /** Tests for punctuation; see IsAlphaAt(). Returns 0 for an empty string. */
    unsigned char IsPunctAt(int index) const;

    /** Returns 1 if the string is not empty and all characters are letters or digits. */
    unsigned char IsAlpha() const;
    /** Returns 1 if the first byte of the character at index is one of "0" to "9". */
    unsigned char IsNumAt(unsigned int index) const;
    /** Returns 1 if the character at index is the single byte c. */
    unsigned char CompareSingleByteAt(int index, char c) const;
    /** Returns 1 if the bytes of the character at index equal those of mbchar. If index is out of
        range, the character counts as an empty text. */
    unsigned char CompareMultiByteAt(int index, const char* mbchar) const;
    /** Returns the decimal number at the start of the text, or 0 if there is none. Leading white
        space and a sign are accepted. */
    long Number() const;

    /* -- Editing --------------------------------------------------------------------------- */

    /** Inserts a text before the character at index, or at the end. Returns 0 and inserts nothing
        if index is out of range or allocation fails. */
    unsigned char InsertAt(int index, const CGNString& t);
    /** Removes up to count characters starting at index. Returns 0 and removes nothing if index is
        out of range, count is negative or allocation fails. */
    unsigned char RemoveAt(int index, int count);
    /** Replaces every occurrence of a character of one byte. */
    void Replace(char from, char to);
    /** Replaces every occurrence of a text, from left to right without overlap.
        @param from the text to replace; does nothing if null or empty.
        @param to the replacement; null is an empty text. */
    void Replace(const char* from, const char* to);

    /** Doubles every occurrence of the character q, which has one byte. */
    void ExpandQuotes(char q);
    /** Replaces each pair of adjacent characters q with one q. Three in a row become two. */
    void UnexpandQuotes(char q);
    /** Escapes backspace, line feed, form feed, carriage return, double quote and backslash with a
        backslash and a character. */
    void ExpandSpecials();
    /** Decodes backslash escapes. A backslash may be followed by a backslash, b, n, r, t, or the
        decimal value of a byte in up to three digits. The character after such a number is dropped.
        This function is not the inverse of ExpandSpecials(): an escaped form feed or double quote
        is not decoded. */
    void UnexpandSpecials();

    /** Splits the string at each delimiter. Empty parts are included, except after a final
        delimiter. An empty string has no parts.
        @param list receives the parts in place of its previous content; may own this string.
        @param delimiter one or more characters; a null or empty delimiter is never found. */
    void Split(CGNStringList& list, const char* delimiter) const;
    /** Same as above, with a delimiter of one byte. */
    void Split(CGNStringList& list, unsigned char delimiter) const;

    /** Returns the number of line breaks, counted as by OSClientGetNumLines (ostext.h). */
    int GetNumLines() const;

    /* -- File names ------------------------------------------------------------------------ */

    /** Splits a path at its last "/" or backslash, which is dropped. If there is none, the whole
        text is the file and dir is empty. */
    void SplitFilePath(CGNString& dir, CGNString& file) const;
    /** Splits a file name at its last dot, which is dropped. If there is none, the whole text is
        the base and ext is empty. */
    void SplitFileName(CGNString& base, CGNString& ext) const;
    /** Replaces the string with dir, a backslash unless dir ends with one, and file. Returns 0 only
        if allocation fails. */
    unsigned char MakeFilePath(const CGNString& dir, const CGNString& file);
    /** Shortens the file name after the last "/" or backslash, or the whole text if there is none,
        to 8.3 form: at most eight bytes and an extension of three, in capitals and without split
        characters. Spaces and characters that are not allowed in such a name are removed. A name
        whose only dot is its first character has no extension. */
    void ForceTo8By3();

    /* -- Encodings ------------------------------------------------------------------------- */

    /** Escapes "&", "<" and ">" for HTML and replaces line breaks with "<br>". */
    void EncodeHtmlString();
    /** Escapes "&", "<" and ">" for HTML. Line breaks are unchanged. */
    void EncodeHtmlStringTextArea();
    /** Escapes "&", line breaks and double quotes for the value of an HTML attribute. */
    void EncodeHtmlQuotedString();
    /** Escapes "&", "<", ">" and both kinds of quotes for XML. */
    void EncodeXMLString();
    /** Escapes backslashes, line breaks and both kinds of quotes for a string literal in a script.
        @param flatten nonzero replaces line breaks with spaces instead. */
    void EncodeJavaScriptQuotedString(unsigned char flatten);
    /** Same as Replace(). In a single-byte code set it compares bytes. */
    void EncodeReplace(const char* from, const char* to);

    /** Converts the string from the ANSI code page of a locale to UTF-8. The string becomes empty
        if the conversion fails.
        @param localeName a locale as in mbConvertToUTF8. */
    void ConvertToUTF8(const char* localeName);
    /** Converts the string from UTF-8 to the user's ANSI code page. The string becomes empty if the
        conversion fails. */
    void ConvertFromUTF8();
    /** Converts the text from the current code set to UTF-8. Returns 0 and leaves out unchanged if
        allocation fails.
        @param out receives the UTF-8.
        @param lost receives the number of characters that were invalid and replaced with U+FFFD;
            may be null. */
    unsigned char ToUtf8(CGNString& out, unsigned int* lost = nullptr) const;
    /** Replaces the string with a UTF-8 text, converted to the current code set. Returns 0 and
        leaves the string unchanged if allocation fails.
        @param text the UTF-8; null is an empty text.
        @param lost receives the number of characters that were invalid or that the code set lacks;
            each was replaced as described at mbConvert. May be null. */
    unsigned char FromUtf8(const char* text, unsigned int* lost = nullptr);
    /** Decodes the references of XML: the five names of EncodeXMLString() and numbers. A reference
        to a character that the code set lacks is unchanged, as is anything else. */
    void DecodeXMLString();
    /** Decodes the references of HTML: the names amp, lt, gt, quot, apos, nbsp, copy and reg, and
        numbers; see DecodeXMLString(). A "<br>" becomes a line feed. */
    void DecodeHtmlString();
    /** Replaces each byte other than ASCII letters, digits, "-", ".", "_" and "~" with "%" and two
        upper-case hexadecimal digits. UrlDecode() is the inverse. */
    void UrlEncode();
    /** Escapes double quotes, backslashes and control characters for a string literal in JSON. The
        other characters remain in the current code set; JSON files are UTF-8, see ToUtf8(). */
    void EncodeJSONString();
    /** Decodes "%" followed by two upper-case hexadecimal digits; see mbUrlDecode. */
    void UrlDecode();

    /** Converts half-width characters to full width; see mbHanToZenStr. */
    void ConvertSingleToDouble();
    /** Converts full-width digits and Latin letters to ASCII in code set 5. */
    void ConvertRomanjiToASCII();
    /** Calls ConvertSingleToDouble() and ConvertRomanjiToASCII() in a Japanese code set. */
    void ConvertSpecialAlphaNumForXMLTag();

    /** Returns the text `content="text/html; charset=NAME">`.
        @param locale name of the locale whose default code set is named; empty for the current
            code set. */
    CGNString GetEncodingStringForHTML(const CGNString& locale);
    /** Declares the character set in an HTML page. Updates the first meta element that declares
        one, or else inserts a new element at the start of the head. Comments and scripts are
        skipped.
        @param locale as above. */
    void ReplaceEncodingStringInHTML(const CGNString& locale);

    /** Applies OSClientFormatString (ostext.h) to the string. */
    void ClientFormat();
    /** Applies OSServerFormatString (ostext.h) to the string. */
    void ServerFormat();

    /* -- Formatting ------------------------------------------------------------------------ */

    /** Replaces the string with formatted text of any length. The text of the string itself may be
        an argument. Returns the length in bytes. Returns -1 and leaves the string unchanged if the
        format is invalid or allocation fails.
        @param format a printf format; null gives an empty text. */
    int sprintf(const char* format, ...) GENUTIL_PRINTF(2, 3);
    /** Same as sprintf(), with a va_list. */
    int sprintf2(const char* format, va_list arguments) GENUTIL_PRINTF(2, 0);
    /** Replaces the string with a string resource. "%1" to "%10" are replaced with the texts s1 to
        s10, and "%%" with "%". Returns 0 and empties the string if no attached library has the
        resource. */
    unsigned char LoadStringResource(long id, const char* s1 = nullptr, const char* s2 = nullptr,
                                     const char* s3 = nullptr, const char* s4 = nullptr,
                                     const char* s5 = nullptr, const char* s6 = nullptr,
                                     const char* s7 = nullptr, const char* s8 = nullptr,
                                     const char* s9 = nullptr, const char* s10 = nullptr);

  protected:
    /** Makes room for n bytes. A size equal to or above the capacity allocates a new buffer.
        Returns the capacity, which is below n if allocation fails. */
    unsigned int ReallocateToNumBytes(unsigned int n);
    /** Makes room for n 16-bit characters; see ReallocateToNumBytes(). */
    unsigned int ReallocateToNumChars(unsigned int n);

    /** Rebuilds the 16-bit copy from the bytes. If allocation fails, there is no copy. */
    void DuplicateWzBufferFromData() const;
    /** Same as above for a non-const string. */
    void DuplicateWzBufferFromData();
    /** Rebuilds the bytes from the 16-bit copy. A character that cannot be converted becomes "?".
        The result is limited to 3 bytes per character in this overload and to 2 in the other. If
        allocation fails, the bytes are unchanged and the 16-bit copy is discarded. */
    void DuplicateDataFromWzBuffer() const;
    /** Same as above, limited to 2 bytes per character. */
    void DuplicateDataFromWzBuffer();

    /** Stores a text in the 16-bit copy without updating the bytes. */
    void ExpandBufferToWzBuffer(unsigned short* w);
    /** Stores a text in the bytes without updating the 16-bit copy. */
    void ExpandBufferToDataBuffer(char* s);

    /** Releases both buffers. The caller must assign a new buffer before the string is used. */
    void FreeBuffers();
    /** Releases the 16-bit copy. */
    void FreeWzBuffer();
    /** Initialises all fields to those of a new string without releasing anything. */
    void InitValue();

    // Mutable because reading a constant string may build one buffer from the other. Capacities
    // exclude the terminator, for which there is always room.
    mutable unsigned short* m_wide;       /**< null if not built */
    mutable std::uint32_t m_wideLength;   /**< in characters */
    mutable std::uint32_t m_wideCapacity; /**< 0 while Clear() keeps a buffer */
    mutable char* m_data;                 /**< a shared byte while the string has no buffer */
    mutable std::uint32_t m_length;       /**< in bytes */
    mutable std::uint32_t m_capacity;     /**< in bytes */
    std::uint32_t m_flags;                /**< bit 0: grow by doubling */

  private:
    friend struct genutil::StringStorage;

    CGNString& AppendByte(char c);
    CGNString& AssignBytes(const char* s, std::size_t n);
    CGNString& AppendBytes(const char* s, std::size_t n);
    void MoveFrom(CGNString& other) noexcept;
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

/** Orders strings by their bytes up to the first 0 byte, then by their lengths: no order for people
    (use Collate), but a quick one that agrees with ==. Finds in a std::map or std::set without a
    copy by a const char *, a std::string or a std::string_view too.

        std::map<CGNString, int, CGNStringLess> counts; */
struct CGNStringLess {
    using is_transparent = void; /**< finds without a copy */

    /** Returns true if a comes before b. */
    template <class A, class B>
    bool operator()(const A& a, const B& b) const noexcept {
        const std::string_view x = View(a), y = View(b);
        const int order = BeforeNul(x).compare(BeforeNul(y));
        return order != 0 ? order < 0 : x.size() < y.size();
    }

  private:
    template <class Text>
    static std::string_view View(const Text& s) noexcept {
        if constexpr (std::is_base_of_v<CGNString, Text>)
            return s.View();
        else
            return s;
    }
    static std::string_view BeforeNul(std::string_view s) { return s.substr(0, s.find('\0')); }
};

namespace std {
/** Hashes the bytes up to the first 0 byte, so that equal strings have the same hash. */
template <>
struct hash<CGNString> {
    /** Returns the hash. */
    std::size_t operator()(const CGNString& text) const noexcept {
        return std::hash<std::string_view>()(static_cast<const char*>(text));
    }
};
}  // namespace std

#endif
