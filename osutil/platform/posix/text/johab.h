// Code page 1361, which ICU lacks.
#pragma once

#include <cstdint>

namespace genutil::platform {

// Fills the tables of ReadCodePage() from the two-byte table of code page 949.
void ComputeJohab(const std::uint16_t* koreanPairs, std::uint16_t* bytes, std::uint16_t* pairs);

}  // namespace genutil::platform
