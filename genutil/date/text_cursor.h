// A walk over text that a user typed. It yields the characters of a code set, normalised by
// removing differences that do not matter for reading dates, times and numbers.
#pragma once

#include <cstddef>

#include "genstr.h"

namespace genutil {

class TextCursor {
  public:
    static constexpr unsigned kEnd = 0;
    static constexpr unsigned kInvalid = 0xFFFF;  // bytes that are not a character

    TextCursor(const char* text, std::size_t length, int codeSet);
    TextCursor(const CGNString& text, int codeSet)
        : TextCursor(static_cast<const char*>(text), text.GetLength(), codeSet) {}

    // Returns a cursor over another text of the same code set.
    TextCursor Over(const char* text, std::size_t length) const;

    // Returns the current character: letters in lower case, full-width forms as ASCII, digits of
    // any script as ASCII digits, any blank as " ", any dash as "-".
    unsigned Peek() const { return m_character; }
    const char* At() const { return m_at; }

    void Next();
    // Moves to a later position, which must be a character boundary.
    void MoveTo(const char* place);
    bool SkipBlanks();  // returns true if there were any
    bool Skip(unsigned character);
    bool SkipAny(const char* characters);  // one of several ASCII characters

    // Reads digits. Returns how many there are.
    // @param number receives their value, which stops growing at the limit of an int.
    int Number(int* number);

    // Skips a word, which may be in another code set. If it ends in a letter, no letter may follow
    // it in the text. If it ends in a dot, the dot may be missing. If it does not, a dot may
    // follow.
    bool SkipWord(TextCursor word);
    bool SkipWord(const CGNString& word, int codeSet) {
        return SkipWord(TextCursor(word, codeSet));
    }
    bool SkipWord(const char* ascii);
    // Skips a text of any kind.
    bool SkipText(const CGNString& text, int codeSet);

  private:
    void Load();

    const char* m_at;
    const char* m_end;
    const void* m_page;  // null for UTF-8
    unsigned m_character;
    unsigned m_length;  // in bytes
};

// Tests a character as returned by Peek().
inline bool IsDigitCharacter(unsigned c) {
    return c >= '0' && c <= '9';
}
// Returns true for letters of scripts that separate words, or at least names, with blanks.
bool IsLetterCharacter(unsigned c);
// Returns true for characters of China, Japan and Korea, which need no blank between words.
bool IsEastAsian(unsigned c);

}  // namespace genutil
