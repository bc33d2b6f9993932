// Text of paths.
#pragma once

#include "genstring.h"

namespace genutil {

// CGNString::MakeFilePath; false when memory ran out for a part of it, so that what there is names
// something else.
bool JoinPath(CGNString& path, const CGNString& directory, const char* name);

}  // namespace genutil
