// The path of the file behind a call of the profile functions.
#pragma once

#include <optional>

#include "osutil/platform/posix/config/config_home.h"
#include "osutil/platform/posix/file/paths.h"

namespace genutil::platform {

// The path of a profile: null is the default one, and a name without a folder is one in the
// configuration folder.
class ProfilePath {
  public:
    explicit ProfilePath(const char* file);
    const char* Get() const { return m_path; }  // null when there is none
    bool IsKept() const { return m_kept.has_value(); }

  private:
    SystemPath m_given;
    std::optional<ConfigPath> m_kept;  // of the file in the configuration folder
    const char* m_path;
};

}  // namespace genutil::platform
