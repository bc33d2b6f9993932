// The file that a path refers to.
#pragma once

#include <climits>
#include <cstddef>

namespace genutil::platform {

// Symbolic links are followed to a name, which need not exist.
class FileTarget {
  public:
    bool Find(const char* path);  // a path of the system
    const char* Path() const { return m_path; }
    const char* Name() const;  // the last part of the path
    int OpenFolder() const;    // only for calls that take a name in it; -1 on failure

  private:
    bool Set(const char* folder, std::size_t length, const char* path);

    char m_path[PATH_MAX];
};

}  // namespace genutil::platform
