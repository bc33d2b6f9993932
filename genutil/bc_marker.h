// The texts that mark a year before Christ.
#pragma once

namespace genutil {

// The one that is written.
const char* BcMarker();

// Those that are read, in the order in which they are looked for; null behind the last.
const char* BcMarkerToRead(int index);

}  // namespace genutil
