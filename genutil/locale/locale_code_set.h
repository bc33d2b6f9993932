// The code set that the texts of a locale are in.
#pragma once

#include <cstdint>

#include "genstr.h"

namespace genutil {

int CodeSetOfLocale(const CGNString& name, std::uint32_t localeId);

}  // namespace genutil
