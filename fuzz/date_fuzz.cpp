// Formats written and read, and every reader of dates, times and moments. The first byte chooses
// the locale. The next line is the date format, the rest the text.
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>

#include "fuzz/check.h"
#include "gendate.h"
#include "genlocale.h"
#include "mbutil.h"

namespace {

bool IsSuffix(const CGNString& rest, const CGNString& text) {
    const unsigned length = rest.GetLength(), whole = text.GetLength();
    return length <= whole &&
           std::strcmp(rest, static_cast<const char*>(text) + whole - length) == 0;
}

void ChooseLocale(unsigned choice, const CGNString& pattern) {
    static constexpr struct {
        const char* name;
        int codeSet;
    } kLocales[] = {{"en_US", mbWestern}, {"de_DE", mbWestern}, {"ja_JP", mbShiftJis},
                    {"ja_JP", mbEucJp},   {"en_US", mbUtf8},    {"ko_KR", 9},
                    {"th_TH", mbWestern}, {"ru_RU", mbShiftJis}};
    const auto& row = kLocales[choice % std::size(kLocales)];
    mbIsMultiByte();
    InitMbutilExt(row.codeSet);
    CLCLocale* locale = CLCGlobalLocale::Instance();
    locale->SetCustomized(0);
    if (choice & 8) {
        locale->SetLocale(row.name);
        locale->SetDateFormatString(1, pattern);
    } else {
        locale->Customize(pattern, pattern, pattern, 1, "3;0", 1, 1, ".", "-", ",", row.name);
    }
    locale->SetCalendarType(choice & 16 ? 3 : 1);
}

void CheckWriting() {
    CGNDate date(2010, 1, 3, 5, 6);
    for (long style = 0; style < 4; ++style) {
        date.FormatForDisplay(style);
        date.FormatForCalendarDisplay(style);
        CGNDateTime(1269093600L).FormatForDisplay(style);
    }
    CGNTime(13, 5, 9).FormatForDisplay();
}

void CheckFormats(const CGNString& pattern, const CGNString& text) {
    CGNDate date;
    CGNDateTime moment;
    CGNTime time;
    CGNString rest;
    if (date.GetDateFromStringUsingFormat(text, rest, pattern))
        Check(IsSuffix(rest, text), "what a format leaves is the end of the text");
    else
        Check(rest == text, "a format that fails leaves the text");
    moment.GetDateFromStringUsingFormat(text, rest, pattern);
    rest = "kept";
    if (time.GetTimeFromString(text, rest)) Check(rest.IsEmpty(), "a time takes all of the text");
}

using DateParser = unsigned char (CGNDate::*)(const CGNString&, CGNString&);

void CheckDates(const CGNString& text) {
    static constexpr DateParser kParsers[] = {&CGNDate::parseDate, &CGNDate::parseNumDate,
                                              &CGNDate::parseCharDate, &CGNDate::parseKanjiDate};
    CGNString rest;
    for (const DateParser parse : kParsers) {
        CGNDate date;
        rest = "kept";
        const bool read = (date.*parse)(text, rest) != 0;
        Check(read == (date.GetDateStatus() == 0), "status of a date");
        Check(read ? IsSuffix(rest, text) && rest.GetLength() < text.GetLength()
                   : !std::strcmp(rest, "kept"),
              "what a reader leaves");
    }
    CGNDate date(5, 0, 6, 7, 1);
    if (date.FromString(text)) {
        CGNDate same(date.GetDateValue());
        Check(date.GetYear() == 9999 ||
                  (same.GetYear() == date.GetYear() && same.GetYearBC() == date.GetYearBC() &&
                   same.GetMonth() == date.GetMonth() && same.GetDay() == date.GetDay() &&
                   same.GetWeekday() == date.GetWeekday()),
              "a date that exists");
    } else {
        Check(date.GetYear() == 5 && date.GetMonth() == 6 && date.GetDay() == 7,
              "a date that stays");
    }
}

void CheckTimes(const CGNString& text) {
    CGNTime time(1, 2, 3);
    const bool read = time.FromString(text) != 0;
    const long status = time.GetTimeRangeStatus();
    Check(read ? status == 1 : status == 3 || status == 5, "status of a time");
    Check(read ? time.VerifyTime(time.GetHour(), time.GetMinute(), time.GetSecond())
               : time.GetSecondsFromMidnight() == 3723,
          "a time that is one, or stays");
    CGNString rest("kept");
    if (time.parseTime(text, rest)) Check(IsSuffix(rest, text), "what a time leaves");
    long pm = 0;
    if (CGNTime::FindAMPMMarker(text, pm, rest)) Check(IsSuffix(rest, text), "a marker's rest");
}

void CheckMoments(const CGNString& text) {
    CGNDateTime moment(60L);
    const bool read = moment.FromString(text) != 0;
    const long status = moment.GetDateTimeRangeStatus();
    Check(read ? status == 1 : status >= 2 && status <= 5, "status of a moment");
    const CGNDateTime same(moment.GetSecsFrom70());
    Check(same.GetHour() == moment.GetHour() && same.GetMinute() == moment.GetMinute() &&
              same.GetSecond() == moment.GetSecond() && moment.GetSecsFrom70() >= 0,
          "fields and seconds agree");
    moment.FromString(text, text);
    unsigned char found[6];
    moment.parseDateTime(text, found, 6);
}

// The words of a text contain everything but blanks.
void CheckWords(const CGNString& text) {
    CGNString rest(text), word;
    unsigned length = text.GetLength();
    while (CGNDate::extractDateWord(rest, word, rest)) {
        Check(!word.IsEmpty() && rest.GetLength() + word.GetLength() <= length, "words in order");
        length = rest.GetLength();
    }
    Check(rest.IsEmpty(), "no word is left");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2 || size > 4096) return 0;
    const std::string all(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t line = all.find('\n');
    const CGNString pattern(all.substr(0, line).c_str());
    const CGNString text(line == std::string::npos ? "" : all.c_str() + line + 1);
    ChooseLocale(data[0], pattern);
    CheckWriting();
    CheckFormats(pattern, text);
    CheckDates(text);
    CheckTimes(text);
    CheckMoments(text);
    if (size < 256) CheckWords(text);
    return 0;
}
