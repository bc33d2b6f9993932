// English names for people to read, in the current code set.
#pragma once

namespace genutil {

// Writes UTF-8 text in the current code set, cut at a whole character when it does not fit; a Latin
// letter that the code set lacks loses its accent. Returns 1, or 0 when it is empty.
int WriteDisplayText(char* out, int size, const char* utf8);

}  // namespace genutil
