// Conversion of paths in the current code set to paths of the system, and of names of the system to
// names in the current code set. The system's paths are UTF-16.
#pragma once

#include "osutil/platform/file/path_units.h"

namespace genutil::platform {

// A path in the current code set, which may differ from the ANSI code page, in the form of the
// system's wide functions. A long path is converted to a full path in the form without a length
// limit.
class SystemPath {
  public:
    explicit SystemPath(const char* path);  // null means no path
    // The path of a name in a directory, both received from the system.
    SystemPath(const wchar_t* directory, const wchar_t* name);
    SystemPath(const SystemPath&) = delete;
    SystemPath& operator=(const SystemPath&) = delete;

    // Returns null, with the last error set, if there is no path, if it is empty, or if allocation
    // failed, which has been reported.
    const wchar_t* Get() const { return m_path; }

  private:
    void Take(const wchar_t* path, std::size_t length);
    bool Extend(const wchar_t* path);

    PathUnits m_units;
    PathBuffer<wchar_t> m_joined, m_extended;
    const wchar_t* m_path = nullptr;
};

// The full path of a path of the system.
class FullPath {
  public:
    explicit FullPath(const wchar_t* path);
    FullPath(const FullPath&) = delete;
    FullPath& operator=(const FullPath&) = delete;
    const wchar_t* Get() const { return m_path; }  // null, with the last error set, on failure

  private:
    PathBuffer<wchar_t> m_buffer;
    const wchar_t* m_path = nullptr;
};

// A name received from the system, in the current code set, with "?" for characters that it lacks.
class NameText : public NarrowedName {
  public:
    explicit NameText(const wchar_t* name);
};

}  // namespace genutil::platform
