// The list of eras that every locale begins with.
#pragma once

#include "genlocale.h"

namespace genutil {

// Fills a list of `count` eras, newest first; the rest of it is empty.
void FillEras(CEmperor* eras, int count);

}  // namespace genutil
