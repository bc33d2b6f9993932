// What the files of the date classes share.
#pragma once

namespace genutil {

// The year of two digits in the present century, or in the last when it would lie more than 29
// years ahead.
int YearOfTwoDigits(int twoDigits);

// The present local year.
int PresentYear();

}  // namespace genutil
