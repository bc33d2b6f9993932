#include "osutil/file/path.h"

#include <cstring>

namespace genutil {

bool JoinPath(CGNString& path, const CGNString& directory, const char* name) {
    const std::size_t least = directory.GetLength() + std::strlen(name);
    path.MakeFilePath(directory, name);
    return path.GetLength() >= least && path.GetLength() <= least + 1;
}

}  // namespace genutil
