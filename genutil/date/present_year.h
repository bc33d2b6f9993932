// The present year, and years of two digits, which are read near it.
#pragma once

namespace genutil {

// The year of two digits in the present century, or in the last one if it would be more than 29
// years ahead.
int YearOfTwoDigits(int twoDigits);

// The present local year.
int PresentYear();

}  // namespace genutil
