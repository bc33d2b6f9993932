// The time zone of the calling thread.
#pragma once

namespace genutil {

// Returns the zone text in the calling thread's variable "timezone", or null if there is none.
const char* ThreadZone();

}  // namespace genutil
