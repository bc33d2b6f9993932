#include "osutil/platform/thread/last_error.h"

#include <cerrno>

namespace genutil::platform {

// The runtime and the system share one error code.
KeepLastError::KeepLastError() : m_system(0), m_runtime(errno) {}

KeepLastError::~KeepLastError() {
    errno = m_runtime;
}

}  // namespace genutil::platform
