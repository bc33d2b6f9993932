#include "genutil/date/read_rest.h"

#include "genutil/date/text_cursor.h"
#include "mbutil.h"

using namespace genutil;

// Finds the first word, number, or single character of any other kind, after blanks. Returns false
// at the end.
static bool NextWord(TextCursor& at, const char** word, std::size_t* length) {
    at.SkipBlanks();
    *word = at.At();
    *length = 0;
    if (at.Peek() == TextCursor::kEnd) return false;
    const bool digits = IsDigitCharacter(at.Peek()), letters = IsLetterCharacter(at.Peek());
    do at.Next();
    while (digits ? IsDigitCharacter(at.Peek()) : letters && IsLetterCharacter(at.Peek()));
    *length = static_cast<std::size_t>(at.At() - *word);
    return true;
}

int genutil::TextCodeSet() {
    mbIsMultiByte();  // chooses the code set if that has not been done
    return mbGetLocaleCodeSet();
}

unsigned char genutil::ExtractWord(const CGNString& text, CGNString& word, CGNString& rest) {
    const CGNString whole(text);  // text may be the same object as word or rest
    TextCursor at(whole, TextCodeSet());
    const char* from = nullptr;
    std::size_t length = 0;
    const bool found = NextWord(at, &from, &length);
    word.Clear();
    if (found) word.CopyNBytes(from, static_cast<unsigned>(length));
    rest = at.At();
    return found;
}

void genutil::TakeRest(const char* at, CGNString& rest) {
    if (*at)
        rest = at;
    else
        rest.Clear();
}

unsigned char genutil::KeepWhole(const CGNString& text, CGNString& rest) {
    if (&rest != &text) rest = text;
    return 0;
}
