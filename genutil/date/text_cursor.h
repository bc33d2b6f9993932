// A walk over text as a user typed it: characters of a code set, with the differences taken out
// that do not matter to a reader of dates, times and numbers.
#pragma once

#include <cstddef>

#include "genstr.h"

namespace genutil {

class TextCursor {
  public:
    static constexpr unsigned kEnd = 0;
    static constexpr unsigned kInvalid = 0xFFFF;  // bytes that are no character

    TextCursor(const char* text, std::size_t length, int codeSet);
    TextCursor(const CGNString& text, int codeSet)
        : TextCursor(static_cast<const char*>(text), text.GetLength(), codeSet) {}

    // A walk over another text of the same code set.
    TextCursor Over(const char* text, std::size_t length) const;

    // The character here: letters in lower case, forms of double width as those of ASCII, digits of
    // any script as those of ASCII, any blank as " ", any dash as "-".
    unsigned Peek() const { return m_character; }
    const char* At() const { return m_at; }

    void Next();
    // To a place further on, between characters.
    void MoveTo(const char* place);
    bool SkipBlanks();  // whether there were any
    bool Skip(unsigned character);
    bool SkipAny(const char* characters);  // one of them, of ASCII

    // Digits; returns how many. *number stops growing where an int ends.
    int Number(int* number);

    // A text, in its own code set, that stands here. What ends in a letter must end a word; what
    // ends in a dot may lack it, and what does not may have one.
    bool SkipWord(TextCursor word);
    bool SkipWord(const CGNString& word, int codeSet) {
        return SkipWord(TextCursor(word, codeSet));
    }
    bool SkipWord(const char* ascii);
    // A text of any kind.
    bool SkipText(const CGNString& text, int codeSet);

  private:
    void Load();

    const char* m_at;
    const char* m_end;
    const void* m_page;  // null for UTF-8
    unsigned m_character;
    unsigned m_length;  // bytes of it
};

// Of characters as Peek gives them.
inline bool IsDigitCharacter(unsigned c) {
    return c >= '0' && c <= '9';
}
// Letters of scripts that write words with blanks between them, or at least with names apart.
bool IsLetterCharacter(unsigned c);
// Characters of China, Japan and Korea, which need no blank between words.
bool IsEastAsian(unsigned c);

}  // namespace genutil
