// The code set of a locale's texts.
#pragma once

#include <cstdint>

#include "genstr.h"

namespace genutil {

int CodeSetOfLocale(const CGNString& name, std::uint32_t localeId);

}  // namespace genutil
