// Error codes of the system as the codes of the library.
#pragma once

#include "osutil/platform/file/files.h"

namespace genutil::platform {

FileCode FileCodeOf(unsigned long error);

}  // namespace genutil::platform
