// Owners of the system's handles, each closed at the end of its scope.
#pragma once

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

// Kind defines the type of a handle, the value that means none, and how it is closed.
template <class Kind>
class ScopedHandle {
  public:
    using Handle = typename Kind::Handle;

    explicit ScopedHandle(Handle handle = Kind::None()) : m_handle(handle) {}
    ~ScopedHandle() { Close(); }
    ScopedHandle(const ScopedHandle&) = delete;
    ScopedHandle& operator=(const ScopedHandle&) = delete;

    explicit operator bool() const { return m_handle != Kind::None(); }
    Handle Get() const { return m_handle; }
    // The place in which a system call stores a new handle. There must be none yet.
    Handle* Place() { return &m_handle; }
    void Close() {
        if (m_handle != Kind::None()) Kind::Close(m_handle);
        m_handle = Kind::None();
    }

  private:
    Handle m_handle;
};

// Processes, threads, events, pipes.
struct ObjectKind {
    using Handle = HANDLE;
    static HANDLE None() { return nullptr; }
    static void Close(HANDLE handle) { CloseHandle(handle); }
};
using ScopedObject = ScopedHandle<ObjectKind>;

struct SearchKind {
    using Handle = HANDLE;
    static HANDLE None() { return INVALID_HANDLE_VALUE; }
    static void Close(HANDLE handle) { FindClose(handle); }
};
using ScopedSearch = ScopedHandle<SearchKind>;

struct KeyKind {
    using Handle = HKEY;
    static HKEY None() { return nullptr; }
    static void Close(HKEY key) { RegCloseKey(key); }
};

// A key of the registry, opened with `rights`; none if it cannot be opened.
class ScopedKey : public ScopedHandle<KeyKind> {
  public:
    ScopedKey(HKEY parent, const char* name, REGSAM rights) {
        if (RegOpenKeyExA(parent, name, 0, rights, Place()) != ERROR_SUCCESS) *Place() = nullptr;
    }
};

}  // namespace genutil::platform
