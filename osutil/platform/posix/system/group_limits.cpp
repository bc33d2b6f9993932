#include "osutil/platform/posix/system/group_limits.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace genutil::platform {

namespace {

// Reads up to two numbers, such as the quota and the period in "150000 100000". Returns how many
// there are: none in "max 100000" or "-1".
int ReadNumbers(const char* folder, const char* name, unsigned long long (&numbers)[2]) {
    char path[PATH_MAX], line[64] = "";
    const int length = std::snprintf(path, sizeof path, "%s/%s", folder, name);
    if (length < 0 || length >= static_cast<int>(sizeof path)) return 0;
    std::FILE* const file = std::fopen(path, "re");
    if (!file) return 0;
    const bool read = std::fgets(line, sizeof line, file) != nullptr;
    std::fclose(file);
    if (!read || *line == '-') return 0;
    return std::max(0, std::sscanf(line, "%llu %llu", &numbers[0], &numbers[1]));
}

void TakeProcessors(unsigned long long quota, unsigned long long period, GroupLimits* limits) {
    if (period == 0) return;
    const unsigned long long count = (quota + period - 1) / period;
    if (count < static_cast<unsigned long long>(limits->processors))
        limits->processors = std::max(1, static_cast<int>(count));
}

// Both versions name their files differently.
void TakeLimitsOf(const char* folder, GroupLimits* limits) {
    unsigned long long numbers[2], period[2];
    if (ReadNumbers(folder, "cpu.max", numbers) == 2)
        TakeProcessors(numbers[0], numbers[1], limits);
    if (ReadNumbers(folder, "cpu.cfs_quota_us", numbers) > 0 &&
        ReadNumbers(folder, "cpu.cfs_period_us", period) > 0)
        TakeProcessors(numbers[0], period[0], limits);
    for (const char* name : {"memory.max", "memory.limit_in_bytes"})
        if (ReadNumbers(folder, name, numbers) > 0)
            limits->memory = std::min<std::uint64_t>(limits->memory, numbers[0]);
}

// A group has the limits of all groups above it as well. In a container the path may be that of the
// host, which does not exist there.
void TakeLimitsUpward(const char* root, const char* controller, const char* group,
                      GroupLimits* limits) {
    char folder[PATH_MAX];
    const int top = std::snprintf(folder, sizeof folder, "%s/%s", root, controller);
    const int length = std::snprintf(folder, sizeof folder, "%s/%s%s", root, controller, group);
    if (length < 0 || length >= static_cast<int>(sizeof folder)) return;
    for (;;) {
        TakeLimitsOf(folder, limits);
        char* const slash = std::strrchr(folder, '/');
        if (!slash || slash < folder + top) return;
        *slash = 0;
    }
}

}  // namespace

// Lines such as "0::/user.slice" in the second version and "4:cpu,cpuacct:/docker/1a2b" in the
// first.
GroupLimits ReadGroupLimits(const char* root, const char* groups) {
    GroupLimits limits;
    std::FILE* const file = std::fopen(groups, "re");
    if (!file) return limits;
    char line[PATH_MAX];
    while (std::fgets(line, sizeof line, file)) {
        line[std::strcspn(line, "\n")] = 0;
        char* const controllers = std::strchr(line, ':');
        char* const group = controllers ? std::strchr(controllers + 1, ':') : nullptr;
        if (!group) continue;
        *group = 0;
        const char* const path = std::strcmp(group + 1, "/") == 0 ? "" : group + 1;
        const char* const names = controllers + 1;
        if (!*names) TakeLimitsUpward(root, "", path, &limits);
        if (std::strstr(names, "cpu")) TakeLimitsUpward(root, "cpu", path, &limits);
        if (std::strstr(names, "memory")) TakeLimitsUpward(root, "memory", path, &limits);
    }
    std::fclose(file);
    return limits;
}

}  // namespace genutil::platform
