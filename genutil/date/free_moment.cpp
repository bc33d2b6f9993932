#include "genutil/date/free_moment.h"

#include "genutil/calendar.h"
#include "genutil/date/date_names.h"

namespace genutil {

namespace {

bool AtEnd(TextCursor at) {
    at.SkipBlanks();
    return at.Peek() == TextCursor::kEnd;
}

MomentReading Failure(TimeReading reading) {
    return reading == TimeReading::kOutOfRange ? MomentReading::kTimeOutOfRange
                                               : MomentReading::kBadTime;
}

// Skips an offset: "Z", "UTC", "+09:00", "+0900", "GMT-5".
void SkipOffset(TextCursor& at, MomentFound* found) {
    TextCursor text = at;
    const bool apart = text.SkipBlanks();
    bool named = text.SkipWord("z") || text.SkipWord("utc") || text.SkipWord("gmt");
    TextCursor number = text;
    const bool west = number.Peek() == '-';
    if (number.SkipAny("+-")) {
        int hours = 0, minutes = 0;
        const int digits = number.Number(&hours);
        bool full = digits == 4;
        if (full) {
            minutes = hours % 100;
            hours /= 100;
        } else if (digits <= 2 && number.Skip(':')) {
            full = number.Number(&minutes) == 2;
        }
        const bool known = full || (digits >= 1 && digits <= 2 && (named || !apart));
        if (known && hours <= 14 && minutes <= 59) {
            const std::int32_t offset = hours * kSecondsPerHour + minutes * 60;
            found->offset = west ? -offset : offset;
            text = number;
            named = true;
        }
    }
    if (!named) return;
    found->hasOffset = true;
    at = text;
}

// Skips the text between a date and a time. Returns true if it is the "T" of ISO 8601.
bool SkipJoint(TextCursor& at, const DateSetting& setting) {
    TextCursor text = at;
    if (text.Skip('t') && IsDigitCharacter(text.Peek())) {
        at = text;
        return true;
    }
    at.SkipBlanks();
    if (at.Skip(',')) at.SkipBlanks();
    if (!at.SkipWord("at")) SkipFiller(at, setting.locale);
    at.SkipBlanks();
    return false;
}

TimeReading SkipTime(TextCursor& at, const DateSetting& setting, bool compact, MomentFound* found) {
    const TimeReading reading = ReadTime(at, setting.locale, compact, &found->time);
    if (reading != TimeReading::kRead) return reading;
    found->hasTime = true;
    SkipOffset(at, found);
    return reading;
}

// Reads a time in the locale's format or in a free form.
TimeReading ReadWholeTime(TextCursor at, const DateSetting& setting, bool compact,
                          MomentFound* found) {
    bool midnight = false;
    ClockFields time;
    if (!compact &&
        ReadLocaleTime(at.At(), setting.locale, &time, &midnight) == TimeReading::kRead) {
        found->time = {time, true, true};
        found->hasTime = true;
        TextCursor text = at;  // to find which parts the text has
        TimeFound parts;
        if (ReadTime(text, setting.locale, false, &parts) == TimeReading::kRead && AtEnd(text))
            found->time = parts;
        return TimeReading::kRead;
    }
    const TimeReading reading = SkipTime(at, setting, compact, found);
    if (reading != TimeReading::kRead) return reading;
    return AtEnd(at) ? TimeReading::kRead : TimeReading::kNotATime;
}

MomentReading ReadRestAsDate(TextCursor at, const DateSetting& setting, MomentFound* found) {
    if (ReadAnyDate(at, setting, &found->date) != Reading::kRead || !AtEnd(at))
        return MomentReading::kBadDate;
    found->hasDate = true;
    return MomentReading::kRead;
}

MomentReading TimeThenDate(TextCursor at, const DateSetting& setting, MomentFound* found) {
    const TimeReading reading = SkipTime(at, setting, false, found);
    if (reading != TimeReading::kRead) return Failure(reading);
    if (AtEnd(at)) return MomentReading::kRead;
    SkipJoint(at, setting);
    return ReadRestAsDate(at, setting, found);
}

}  // namespace

MomentReading ReadMomentDate(const CGNString& text, const DateSetting& setting,
                             MomentFound* found) {
    return ReadRestAsDate(TextCursor(text, setting.codeSet), setting, found);
}

MomentReading ReadMomentTime(const CGNString& text, const DateSetting& setting,
                             MomentFound* found) {
    const TextCursor at(text, setting.codeSet);
    if (AtEnd(at)) return MomentReading::kRead;
    const TimeReading reading = ReadWholeTime(at, setting, false, found);
    return reading == TimeReading::kRead ? MomentReading::kRead : Failure(reading);
}

// Reads a moment in the exact form that the locale writes, which cannot have another meaning.
static bool ReadAsWritten(TextCursor at, const DateSetting& setting, MomentFound* found) {
    bool midnight = false;
    if (!ReadDateInFormat(at, setting, &found->date) || at.Peek() != ' ') return false;
    if (ReadLocaleTime(at.At(), setting.locale, &found->time.time, &midnight) != TimeReading::kRead)
        return false;
    found->hasDate = found->hasTime = true;
    return true;
}

MomentReading ReadMomentAsWritten(const CGNString& text, const DateSetting& setting,
                                  MomentFound* found) {
    *found = {};
    if (ReadAsWritten(TextCursor(text, setting.codeSet), setting, found))
        return MomentReading::kRead;
    return ReadMoment(text, setting, found);
}

MomentReading ReadMoment(const CGNString& text, const DateSetting& setting, MomentFound* found) {
    *found = {};
    const TextCursor from(text, setting.codeSet);
    TextCursor at = from;
    if (ReadAnyDate(at, setting, &found->date) != Reading::kRead) {
        const MomentReading reading = TimeThenDate(from, setting, found);
        return reading == MomentReading::kRead ? reading : MomentReading::kBadDate;
    }
    found->hasDate = true;
    if (AtEnd(at)) return MomentReading::kRead;
    const bool compact = SkipJoint(at, setting);
    const TimeReading reading = ReadWholeTime(at, setting, compact, found);
    return reading == TimeReading::kRead ? MomentReading::kRead : Failure(reading);
}

}  // namespace genutil
