// English names for display, in the current code set.
#pragma once

namespace genutil {

// Writes a UTF-8 text in the current code set, truncated at a whole character if it does not fit. A
// Latin letter that the code set lacks loses its accent. Returns 1, or 0 if the result is empty.
int WriteDisplayText(char* out, int size, const char* utf8);

}  // namespace genutil
