// Platform layer: the error code of the last failed call.
#pragma once

namespace genutil::platform {

// Restores the calling thread's error codes, that of the C runtime and that of the system, at the
// end of its scope.
class KeepLastError {
  public:
    KeepLastError();
    ~KeepLastError();
    KeepLastError(const KeepLastError&) = delete;
    KeepLastError& operator=(const KeepLastError&) = delete;

  private:
    [[maybe_unused]] unsigned long m_system;
    int m_runtime;
};

}  // namespace genutil::platform
