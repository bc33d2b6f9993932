#include "genutil/bc_marker.h"

#include <iterator>

namespace genutil {

// As the library's messages 25048 to 25053 have them; the first is the one that is written, and
// stands even where there are no messages.
static constexpr const char* kMarkers[] = {"B.C.", "BC", "B. C.", "b.c.", "b. c.", "before Christ"};

const char* BcMarker() {
    return kMarkers[0];
}

const char* BcMarkerToRead(int index) {
    return index < static_cast<int>(std::size(kMarkers)) ? kMarkers[index] : nullptr;
}

}  // namespace genutil
