#include "osutil/platform/thread/last_error.h"

#include <cerrno>

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

KeepLastError::KeepLastError() : m_system(GetLastError()), m_runtime(errno) {}

KeepLastError::~KeepLastError() {
    errno = m_runtime;
    SetLastError(m_system);
}

}  // namespace genutil::platform
