// What the files of the date classes share.
#pragma once

#include "genlocale.h"
#include "genutil/date/date_format.h"

namespace genutil {

// Appends a date in the format of a style (0 and 1 short, 2 long, 3 the locale's own), after the
// locale took the system's settings anew; any other style appends nothing. *yearFirst, unless null,
// becomes whether the format begins with the year, and decides where a B.C. marker stands. False at
// a malformed format.
bool AppendDate(TextBuilder& out, DateFields& date, unsigned char* yearFirst, long style,
                CLCLocale* locale);

// The same for a time.
void AppendTime(TextBuilder& out, const ClockFields& time, CLCLocale* locale);

// Replaces a text by a number, as printf writes "%0*d"; 1.
inline unsigned char ReplaceByNumber(CGNString& out, int number, int width) {
    out.Clear();
    TextBuilder(out).AppendNumber(number, width);
    return 1;
}

// A sum of values that nobody checked, which wraps around.
constexpr int Added(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

// Seconds from midnight; values that are out of range are taken as they are.
std::int32_t SecondsOf(int hour, int minute, int second);

// The year of two digits in the present century, or in the last when it would lie more than 29
// years ahead.
int YearOfTwoDigits(int twoDigits);

// The present local year.
int PresentYear();

// The code set of texts that are to be read.
int TextCodeSet();

// What a reader left of a text, which may be part of rest itself.
void TakeRest(const char* at, CGNString& rest);
// All of it, from a reader that failed: 0.
unsigned char KeepWhole(const CGNString& text, CGNString& rest);

// The first word of a text, for callers outside.
unsigned char ExtractWord(const CGNString& text, CGNString& word, CGNString& rest);

}  // namespace genutil
