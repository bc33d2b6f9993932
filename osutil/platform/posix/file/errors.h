// Error numbers of the system as the codes of the library.
#pragma once

#include "osutil/platform/file/files.h"

namespace genutil::platform {

FileCode FileCodeOf(int error);

}  // namespace genutil::platform
