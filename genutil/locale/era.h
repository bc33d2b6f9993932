// The initial list of eras of every locale.
#pragma once

#include "genlocale.h"

namespace genutil {

// Fills a list of `count` eras, newest first. The remaining entries are empty.
void FillEras(CEmperor* eras, int count);

}  // namespace genutil
