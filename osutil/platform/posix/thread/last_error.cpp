#include "osutil/platform/thread/last_error.h"

#include <cerrno>

namespace genutil::platform {

// There is one code for both.
KeepLastError::KeepLastError() : m_system(0), m_runtime(errno) {}

KeepLastError::~KeepLastError() {
    errno = m_runtime;
}

}  // namespace genutil::platform
