#include "genutil/date/present_year.h"

#include <ctime>

#include "gencalendar.h"
#include "genutil/calendar.h"

int genutil::PresentYear() {
    std::tm local;
    CGNDate::LocalTimeTS(CGNDate::Now(), local);
    return local.tm_year + 1900;
}

int genutil::YearOfTwoDigits(int twoDigits) {
    const int present = PresentYear();
    const int candidate = WrappingSum(present - present % 100, twoDigits);
    return candidate > present + 29 ? candidate - 100 : candidate;
}
