// The zone of the calling thread.
#pragma once

namespace genutil {

// The zone text that the calling thread keeps in its variable "timezone"; null without one.
const char* ThreadZone();

}  // namespace genutil
