// Conversion of date patterns stored by older programs to the present form.
#include "genlocale.h"
#include "genutil/locale/locale_code_set.h"
#include "genutil/locale/pattern_characters.h"

using namespace genutil;

namespace {

// Present patterns have small letters for days and years, so a capital one identifies an old
// pattern.
bool IsOldPattern(const char* pattern, int codeSet) {
    return PatternHas(pattern, codeSet, 'D') || PatternHas(pattern, codeSet, 'Y');
}

// Maps an old letter to the present one. Months may be in either case, since a date has no minutes.
char TokenOfOldLetter(char c) {
    switch (c) {
        case 'D':
            return 'd';
        case 'Y':
            return 'y';
        case 'm':
            return 'M';
        default:
            return c;
    }
}

// Writes the token of an old pattern for a run of `run` letters. A year of one letter means a
// complete one, and so does the month of a long date.
void AppendToken(CGNString& to, char token, int run, bool isLong) {
    constexpr int kWhole = 4;
    if (run == 1 && (token == 'y' || (token == 'M' && isLong))) run = kWhole;
    for (; run > 0; --run) to += token;
}

void ConvertOldPattern(CGNString& pattern, int codeSet, bool isLong) {
    if (!IsOldPattern(pattern, codeSet)) return;
    CGNString converted;
    char token = 0;
    int run = 0;
    ForEachInPattern(pattern, codeSet, [&](const char* at, int length, bool quoted) {
        const char next = quoted || length > 1 ? 0 : TokenOfOldLetter(*at);
        const bool isToken = next == 'd' || next == 'M' || next == 'y';
        if (run != 0 && (!isToken || next != token)) {
            AppendToken(converted, token, run, isLong);
            run = 0;
        }
        token = next;
        if (isToken) {
            ++run;
            return;
        }
        for (int i = 0; i < length; ++i) converted += at[i];
    });
    AppendToken(converted, token, run, isLong);
    pattern = converted;
}

}  // namespace

void CLCLocale::ConvertOldImportLongDateFormat(CGNString& format) const {
    ConvertOldPattern(format, GetCodeSet(), true);
}

void CLCLocale::ConvertOldImportShortDateFormat(CGNString& format) const {
    ConvertOldPattern(format, GetCodeSet(), false);
}
