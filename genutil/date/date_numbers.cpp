#include "genutil/date/date_numbers.h"

#include "genutil/calendar.h"
#include "genutil/date/free_time.h"
#include "genutil/date/pattern.h"
#include "genutil/locale/locale_access.h"

namespace genutil {

Reading FinishDate(int year, int month, int day, bool yearGiven, DateFound* found) {
    if (!DateExists(year, month, day)) return Reading::kInvalid;
    found->date.year = year;
    found->date.month = month - 1;
    found->date.day = day;
    found->yearGiven = yearGiven;
    return Reading::kRead;
}

int YearOfNumber(const DateNumber& number, bool bc, const DateSetting& setting) {
    if (number.value == 0 && (bc || number.digits > 2)) return kNoYear;
    if (bc) return 1 - number.value;
    DateScratch scratch = {};
    scratch.shortYears = setting.shortYears;
    return YearOfDigits(number.value, number.digits, setting.locale, scratch);
}

bool IsHour(TextCursor at, const DateSetting& setting, unsigned dateSeparator) {
    if (at.Peek() == ':') return true;
    TextCursor behind = at;
    const CGNString& separator = LocaleAccess::TimeSeparator(setting.locale);
    if (at.Peek() != dateSeparator && behind.SkipText(separator, setting.locale.GetCodeSet()) &&
        IsDigitCharacter(behind.Peek()))
        return true;
    at.SkipBlanks();
    if (SkipHourUnit(at)) return true;
    bool pm;
    if (!SkipMarker(at, setting.locale, &pm)) return false;
    at.SkipBlanks();
    return !IsDigitCharacter(at.Peek());  // otherwise the marker belongs to the time that follows
}

bool IsYearBySize(const DateNumber& number) {
    return number.digits > 2 || number.value > 31;
}

DateOrder::DateOrder(const CLCLocale& locale) {
    const Pattern pattern(LocaleAccess::DateFormat(locale, 1), PatternLetters::kDate,
                          PatternWalk::kCharacters);
    known = pattern.begin() != nullptr;
    bool seen[3] = {};
    int count = 0;
    const auto add = [&](DatePart part) {
        if (!seen[static_cast<int>(part)]) parts[count++] = part;
        seen[static_cast<int>(part)] = true;
    };
    for (const PatternElement& element : pattern) {
        if (element.kind != PatternElement::kRun) continue;
        if (element.letter == 'y') add(DatePart::kYear);
        if (element.letter == 'M') add(DatePart::kMonth);
        if (element.letter == 'd' && element.length <= 2) add(DatePart::kDay);
    }
    for (const DatePart part : {DatePart::kYear, DatePart::kMonth, DatePart::kDay}) add(part);
}

int DateOrder::YearAt() const {
    return parts[0] == DatePart::kYear ? 0 : parts[1] == DatePart::kYear ? 1 : 2;
}

bool DateOrder::MonthFirst() const {
    for (const DatePart part : parts)
        if (part != DatePart::kYear) return part == DatePart::kMonth;
    return true;
}

}  // namespace genutil
