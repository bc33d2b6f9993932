// Numbers brought into a smaller range.
#pragma once

#include <cstdint>

namespace genutil {

// The value itself, or the end of the range of 32 bits that is nearest to it.
constexpr std::int32_t NearestInt32(std::int64_t value) {
    return value > INT32_MAX   ? INT32_MAX
           : value < INT32_MIN ? INT32_MIN
                               : static_cast<std::int32_t>(value);
}

}  // namespace genutil
