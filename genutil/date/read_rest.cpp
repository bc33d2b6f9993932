#include "genutil/date/read_rest.h"

#include "genutil/date/text_cursor.h"
#include "mbutil.h"

using namespace genutil;

// The first word, a number, or one character of any other kind, after blanks. False at the end.
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
    mbIsMultiByte();  // chooses the code set, unless that was done
    return mbGetLocaleCodeSet();
}

unsigned char genutil::ExtractWord(const CGNString& text, CGNString& word, CGNString& rest) {
    const CGNString whole(text);  // which may be one of the others
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
