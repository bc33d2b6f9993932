#include "genutil/date/date_names.h"

#include <cstring>
#include <initializer_list>

#include "genutil/date/bc_marker.h"
#include "genutil/date/pattern.h"
#include "genutil/locale/locale_access.h"
#include "genutil/locale/locale_facts.h"
#include "mbutil.h"

namespace genutil {

namespace {

// The longest of several matching names.
class Longest {
  public:
    explicit Longest(const TextCursor& from) : m_from(from), m_end(from) {}

    void Try(const CGNString& name, int codeSet, int index) {
        // Japanese and Chinese month names are numbers with a unit and are read as such.
        if (!IsDigitCharacter(TextCursor(name, codeSet).Peek())) {
            TextCursor at = m_from;
            if (at.SkipWord(name, codeSet)) Take(at, index);
        }
    }
    void Try(const char* ascii, int index) {
        Try(TextCursor(ascii, std::strlen(ascii), mbWestern), index);
    }
    void Try(const TextCursor& name, int index) {
        TextCursor at = m_from;
        if (at.SkipWord(name)) Take(at, index);
    }
    void Take(const TextCursor& end, int index) {
        if (end.At() <= m_end.At()) return;
        m_end = end;
        m_index = index;
    }
    int Index() const { return m_index; }
    const TextCursor& End() const { return m_end; }

  private:
    TextCursor m_from, m_end;
    int m_index = -1;
};

// Russian dates have the month in the genitive: the name with another ending.
bool SkipGenitive(TextCursor& at, const CGNString& name, int codeSet) {
    constexpr unsigned kSoftSign = 0x44C, kShortI = 0x439, kA = 0x430, kYa = 0x44F;
    TextCursor in(name, codeSet), text = at;
    for (; in.Peek() != TextCursor::kEnd; in.Next()) {
        const unsigned last = in.Peek();
        if (last < kA || last > kYa) return false;
        TextCursor behind = in;
        behind.Next();
        const bool soft = last == kSoftSign || last == kShortI;
        if (behind.Peek() == TextCursor::kEnd) {
            if (soft ? !text.Skip(kYa) : !(text.Skip(last) && text.Skip(kA))) return false;
        } else if (!text.Skip(last)) {
            return false;
        }
    }
    if (text.At() == at.At() || IsLetterCharacter(text.Peek())) return false;
    at = text;
    return true;
}

}  // namespace

int SkipMonthName(TextCursor& at, const CLCLocale& locale) {
    if (!IsLetterCharacter(at.Peek())) return -1;
    const int codeSet = locale.GetCodeSet();
    Longest longest(at);
    for (int i = 0; i < LocaleAccess::kMonths; ++i) {
        const CGNString& name = *LocaleAccess::MonthName(locale, i);
        longest.Try(name, codeSet, i);
        longest.Try(*LocaleAccess::MonthAbbreviation(locale, i), codeSet, i);
        TextCursor behind = at;
        if (SkipGenitive(behind, name, codeSet)) longest.Take(behind, i);
    }
    for (int i = 0; i < 12; ++i) {
        longest.Try(EnglishFacts().text[kMonthName + i], i);
        longest.Try(EnglishFacts().text[kMonthAbbreviation + i], i);
    }
    longest.Try("sept", 8);
    at = longest.End();
    return longest.Index();
}

// Skips a weekday's name. Returns its index, 0 for Monday, or -1 if there is none.
static int SkipDayName(TextCursor& at, const CLCLocale& locale) {
    if (!IsLetterCharacter(at.Peek())) return -1;
    const int codeSet = locale.GetCodeSet();
    Longest longest(at);
    for (int i = 0; i < LocaleAccess::kDays; ++i) {
        longest.Try(*LocaleAccess::DayName(locale, i), codeSet, i);
        longest.Try(*LocaleAccess::DayAbbreviation(locale, i), codeSet, i);
        longest.Try(EnglishFacts().text[kDayName + i], i);
        longest.Try(EnglishFacts().text[kDayAbbreviation + i], i);
    }
    at = longest.End();
    return longest.Index();
}

bool SkipWeekday(TextCursor& at, const CLCLocale& locale) {
    TextCursor text = at;
    text.SkipBlanks();
    text.Skip(',');
    text.SkipBlanks();
    const bool inParentheses = text.Skip('(');
    if (SkipDayName(text, locale) < 0) return false;
    if (inParentheses && !text.Skip(')')) return false;
    at = text;
    return true;
}

bool SkipFiller(TextCursor& at, const CLCLocale& locale) {
    if (at.Peek() == TextCursor::kEnd || IsDigitCharacter(at.Peek())) return false;
    for (const char* word : {"of", "the", "de", "den", "le"})
        if (at.SkipWord(word)) return true;
    const Pattern pattern(LocaleAccess::DateFormat(locale, LocaleAccess::kLong),
                          PatternLetters::kDate, PatternWalk::kCharacters);
    const int codeSet = locale.GetCodeSet();
    for (const PatternElement& element : pattern) {
        if (element.kind != PatternElement::kQuoted) continue;
        const char *text = pattern.Text(element), *end = text + element.length;
        while (text != end && *text == ' ') ++text;
        while (text != end && end[-1] == ' ') --end;
        if (at.SkipWord(TextCursor(text, static_cast<std::size_t>(end - text), codeSet)))
            return true;
    }
    return false;
}

bool SkipBcMarker(TextCursor& at) {
    Longest longest(at);
    for (int i = 0; const char* marker = BcMarkerToRead(i); ++i)
        longest.Try(at.Over(marker, std::strlen(marker)), i);
    at = longest.End();
    return longest.Index() >= 0;
}

}  // namespace genutil
