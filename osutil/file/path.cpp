#include "osutil/file/path.h"

#include <cstring>

namespace genutil {

bool JoinPath(CGNString& path, const CGNString& directory, const char* name) {
    const std::size_t length = std::strlen(name), least = directory.GetLength() + length;
    path.MakeFilePath(directory, name);
    return path.GetLength() >= least && path.GetLength() <= least + 1 &&
           path.View().substr(path.GetLength() - length) == name;
}

}  // namespace genutil
