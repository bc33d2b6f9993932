#include "osutil/platform/posix/config/config_home.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace genutil::platform {

ConfigPath::ConfigPath(const char* name) {
    char record[4096];
    const char *home = std::getenv("XDG_CONFIG_HOME"), *below = "";
    if (!home || *home != '/') {  // a relative path is invalid by the rules of that variable
        home = std::getenv("HOME");
        below = "/.config";
    }
    passwd user, *found = nullptr;
    if ((!home || !*home) && getpwuid_r(geteuid(), &user, record, sizeof record, &found) == 0 &&
        found)
        home = found->pw_dir;
    if (!home || !*home) return;
    const int length = std::snprintf(m_path, sizeof m_path, "%s%s/genutil/%s", home, below, name);
    if (length > 0 && static_cast<std::size_t>(length) < sizeof m_path)
        m_length = static_cast<std::size_t>(length);
}

bool MakeFolderOf(const char* path) {
    char folder[PATH_MAX];
    const char* slash = std::strrchr(path, '/');
    const auto length = static_cast<std::size_t>(slash ? slash - path : 0);
    if (length == 0 || length >= sizeof folder) return length == 0;
    std::memcpy(folder, path, length);
    folder[length] = 0;
    const auto make = [&folder] { return mkdir(folder, 0700) == 0 || errno == EEXIST; };
    if (make()) return true;
    if (errno != ENOENT) return false;
    // Creates the parent directories from the top. Results are ignored: an existing directory need
    // not be distinguished from a failure, because the last call shows whether all succeeded.
    for (char* end = std::strchr(folder + 1, '/'); end; end = std::strchr(end + 1, '/')) {
        *end = 0;
        make();
        *end = '/';
    }
    return make();
}

}  // namespace genutil::platform
