// The texts that mark a year before Christ: messages of the library, in English without them.
#pragma once

namespace genutil {

// The one that is written, in the current code set.
const char* BcMarker();

// Those that are read, in the order in which they are looked for; null behind the last.
const char* BcMarkerToRead(int index);

// The place where the first byte of any of them stands in a text; null when there is none.
const char* FindBcMarkerStart(const char* text);

}  // namespace genutil
