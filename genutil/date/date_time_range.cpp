// The minimum and maximum moment as texts, for messages about values out of range.
#include "genmoment.h"
#include "gentimeofday.h"
#include "genutil/zone/zone.h"

using namespace genutil;

void CGNDateTime::GetMinMaxTimeRange(CGNString& least, CGNString& most) {
    CGNTime::GetMinMaxTimeRange(least, most);
}

void CGNDateTime::GetMinMaxDateTimeRange(CGNString& least, CGNString& most, long style) {
    CGNDateTime first(0L), last(static_cast<long>(kLastSecond));
    first.FormatForDisplay(style);
    last.FormatForDisplay(style);
    first.GetDisplayBuffer(least);
    last.GetDisplayBuffer(most);
}

// The rest of the text after the date is the time.
static void KeepDate(CGNString& text, long seconds, long style) {
    CGNDateTime reader;
    CGNString rest;
    if (!reader.GetDateFromString(text, rest)) {  // the format cannot be read back
        CGNDateTime end(seconds);
        end.FormatDateForDisplay(style);
        end.GetDisplayBuffer(text);
        return;
    }
    const unsigned length = text.GetLength() - rest.GetLength();
    CGNString date;
    date.CopyNBytes(text, length);
    text = date;
}

void CGNDateTime::GetMinMaxDateRange(CGNString& least, CGNString& most, long style) {
    GetMinMaxDateTimeRange(least, most, style);
    KeepDate(least, 0, style);
    KeepDate(most, kLastSecond, style);
}
