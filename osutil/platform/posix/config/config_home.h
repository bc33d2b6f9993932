// The configuration directory, for settings that Windows would keep for a user:
// $XDG_CONFIG_HOME/genutil, or else ~/.config/genutil.
#pragma once

#include <climits>
#include <cstddef>

namespace genutil::platform {

// The path of a file in the configuration directory. The environment variables are read each time,
// so that a change takes effect.
class ConfigPath {
  public:
    explicit ConfigPath(const char* name);
    const char* Get() const {
        return m_length ? m_path : nullptr;
    }  // null if there is no home
       // directory

  private:
    char m_path[PATH_MAX];
    std::size_t m_length = 0;
};

// Creates the directory of a file and its parent directories, accessible to the user only. Returns
// false on failure.
bool MakeFolderOf(const char* path);

}  // namespace genutil::platform
