// What the control groups of a process allow it. Containers are such groups.
#pragma once

#include <climits>
#include <cstdint>

namespace genutil::platform {

struct GroupLimits {
    int processors = INT_MAX;
    std::uint64_t memory = UINT64_MAX;  // in bytes
};

// Returns the strictest limits of the groups of this process, in either version of the system's
// files.
// @param root the folder of the groups.
// @param groups the file that names the groups of the process.
GroupLimits ReadGroupLimits(const char* root, const char* groups);

}  // namespace genutil::platform
