// Joining paths.
#pragma once

#include "genstring.h"

namespace genutil {

// Calls CGNString::MakeFilePath. Returns false if allocation failed for a part of the path, which
// then names a different file.
bool JoinPath(CGNString& path, const CGNString& directory, const char* name);

}  // namespace genutil
