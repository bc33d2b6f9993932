// The list of eras that every locale begins with.
#pragma once

#include "genlocale.h"

namespace genutil {

// Fills a list of `count` eras, newest first; the rest of it is empty.
void FillEras(CEmperor* eras, int count);

// The first era of a list, up to its first empty one, that counts the year; null when none does.
const CEmperor* FindEra(const CEmperor* eras, int count, long year);

}  // namespace genutil
