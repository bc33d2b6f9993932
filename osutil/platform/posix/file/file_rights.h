// What a file has besides its contents: owner, group, permissions, access list, attributes.
#pragma once

#include <sys/stat.h>

namespace genutil::platform {

// Gives a new file the owner, the group, the permissions, the access list and the attributes
// ("user." and "security.") of another. Returns false if one of them differs in the end, which is
// common: only the superuser can give files away.
bool CopyRights(int newFile, int oldFile, const struct stat& old);

}  // namespace genutil::platform
