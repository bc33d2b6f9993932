// Paths of the system from paths in the current code set, and names in the current code set from
// names of the system. The system's paths are UTF-16.
#pragma once

#include "osutil/platform/file/path_units.h"

namespace genutil::platform {

// A path in the current code set, which need not be the ANSI code page, as the system's wide
// functions take it. A long one is made a full path of the form that has no limit.
class SystemPath {
  public:
    explicit SystemPath(const char* path);  // null is no path
    // That of a name in a directory, as the system has them.
    SystemPath(const wchar_t* directory, const wchar_t* name);
    SystemPath(const SystemPath&) = delete;
    SystemPath& operator=(const SystemPath&) = delete;

    // Null, with the last error set, when there is no path, when it is empty, and when memory
    // ran out (which has been reported).
    const wchar_t* Get() const { return m_path; }

  private:
    void Take(const wchar_t* path, std::size_t length);
    bool Extend(const wchar_t* path);

    PathUnits m_units;
    PathBuffer<wchar_t> m_joined, m_extended;
    const wchar_t* m_path = nullptr;
};

// A name that the system gave, in the current code set, with "?" for what it does not have.
class NameText : public NarrowedName {
  public:
    explicit NameText(const wchar_t* name);
};

}  // namespace genutil::platform
