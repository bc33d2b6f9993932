// Conversion of numbers to a smaller range.
#pragma once

#include <cstdint>

namespace genutil {

// Returns the value, or the nearest bound of the 32-bit range.
constexpr std::int32_t NearestInt32(std::int64_t value) {
    return value > INT32_MAX   ? INT32_MAX
           : value < INT32_MIN ? INT32_MIN
                               : static_cast<std::int32_t>(value);
}

}  // namespace genutil
