// The path of the file that a call of the profile functions refers to.
#pragma once

#include <optional>

#include "osutil/platform/posix/config/config_home.h"
#include "osutil/platform/posix/file/paths.h"

namespace genutil::platform {

// The path of a profile. Null is the default one. A name without a directory is a file in the
// configuration directory.
class ProfilePath {
  public:
    explicit ProfilePath(const char* file);
    const char* Get() const { return m_path; }  // null if there is none
    bool IsKept() const { return m_kept.has_value(); }

  private:
    SystemPath m_given;
    std::optional<ConfigPath> m_kept;  // path of the file in the configuration directory
    const char* m_path;
};

}  // namespace genutil::platform
