// The present year, and years of two digits, which are interpreted relative to it.
#pragma once

namespace genutil {

// Returns the year of two digits in the present century, or in the preceding one if it would be
// more than 29 years in the future.
int YearOfTwoDigits(int twoDigits);

// Returns the present year in local time.
int PresentYear();

}  // namespace genutil
