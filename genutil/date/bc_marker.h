// The texts that mark a year before Christ. They are messages of the library, and English if these
// are missing.
#pragma once

namespace genutil {

// Returns the marker to write, in the current code set.
const char* BcMarker();

// Returns a marker to read, in the order of search, or null after the last.
const char* BcMarkerToRead(int index);

// Returns the position of the first byte in a text with which any marker begins, or null if there
// is none.
const char* FindBcMarkerStart(const char* text);

}  // namespace genutil
