// The folder for what the system would keep for a user: $XDG_CONFIG_HOME/genutil, else
// ~/.config/genutil.
#pragma once

#include <climits>
#include <cstddef>

namespace genutil::platform {

// The path of a file there. The variables are read each time, so that a change takes effect.
class ConfigPath {
  public:
    explicit ConfigPath(const char* name);
    const char* Get() const { return m_length ? m_path : nullptr; }  // null without a home

  private:
    char m_path[PATH_MAX];
    std::size_t m_length = 0;
};

// Makes the folder in which a file shall be, and those above it, for the user alone. False when
// that fails.
bool MakeFolderOf(const char* path);

}  // namespace genutil::platform
