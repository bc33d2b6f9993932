#include "osutil/path.h"

#include <cstring>

namespace genutil {

bool IsDots(const char* name) {
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

bool JoinPath(CGNString& path, const CGNString& directory, const char* name) {
    const std::size_t least = directory.GetLength() + std::strlen(name);
    path.MakeFilePath(directory, name);
    return path.GetLength() >= least && path.GetLength() <= least + 1;
}

}  // namespace genutil
